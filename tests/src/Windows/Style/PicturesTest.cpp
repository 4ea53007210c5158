#include <QDirIterator>
#include <QImage>

#include "Windows/Style/Symbols.h"
#include "Windows/Style/Theme.h"
#include "src/Platform/Linux/Desktop/QtApplicationOfTest.h"

namespace {

using orvane::ColorScheme;

class PicturesTest : public testing::Test {
 protected:
  template <typename Check>
  static void forEachIn(const char* folder, const Check& check) {
    int count = 0;
    for (QDirIterator files(folder, {"*.svg"}, QDir::Files); files.hasNext(); ++count) {
      files.next();
      SCOPED_TRACE(files.filePath().toStdString());
      check(files.fileInfo());
    }
    EXPECT_GT(count, 0) << folder;
  }

  const QtApplicationOfTest application_;
};

// The share of the area that is drawn at all, and the share of that which is drawn in the colour.
struct Drawn {
  double any = 0;
  double coloured = 0;
};

Drawn drawn(const QImage& image, const QColor& color) {
  int any = 0, coloured = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      if (pixel.alpha() < 64) continue;  // the colours of a mere breath are rounded
      const int difference = std::abs(pixel.red() - color.red()) + std::abs(pixel.green() - color.green()) +
                             std::abs(pixel.blue() - color.blue());
      ++any;
      coloured += difference < 32;
    }
  }
  return {any / double(image.width() * image.height()), coloured / std::max(1.0, double(any))};
}

TEST_F(PicturesTest, SymbolsAreDrawnInTheTextColourOfTheSchemeInForce) {
  for (const ColorScheme scheme : {ColorScheme::kLight, ColorScheme::kDark}) {
    orvane::applyTheme(*qApp, scheme);
    forEachIn(":/symbols", [](const QFileInfo& file) {
      if (file.baseName().startsWith("check-")) return;  // of the style sheets, one for each scheme
      const Drawn symbol = drawn(orvane::symbolIcon(file.baseName()).pixmap(20, 20).toImage(), orvane::colors().text);
      EXPECT_GT(symbol.any, 0.02);
      EXPECT_EQ(symbol.coloured, 1);
    });
  }
}

// What the renderer doesn't understand it leaves out, or fills with black, and says nothing.
TEST_F(PicturesTest, PicturesAreDrawnInTheirOwnColours) {
  for (const char* folder : {":/catalogue", ":/status", ":/pictures", ":/hicolor/scalable/apps"}) {
    forEachIn(folder, [](const QFileInfo& file) {
      const QImage image = orvane::picture(file.filePath(), QSize(64, 64), 1).toImage();
      EXPECT_GT(drawn(image, Qt::black).any, 0.25);
      for (const QColor& color : {QColor(Qt::black), QColor(Qt::white)}) EXPECT_LT(drawn(image, color).coloured, 0.75);
    });
  }
}

}  // namespace
