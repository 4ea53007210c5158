#include <QClipboard>
#include <QMimeData>
#include <QScreen>
#include <QWidget>
#include <future>

#include "Platform/Linux/Desktop/DesktopClipboard.h"
#include "Platform/Linux/Desktop/DesktopScreens.h"
#include "QtApplicationOfTest.h"
#include "Support/TemporaryFolder.h"

namespace {

TEST(DesktopScreens, TellsPixelsOfTheFirstScreenAndOfTheMainWindows) {
  const TemporaryFolder folder;
  writeFile(folder.path() / "screens", R"({"screens": [
      {"name": "one", "x": 0, "y": 0, "width": 1366, "height": 768, "dpr": 1},
      {"name": "two", "x": 1366, "y": 0, "width": 1920, "height": 1080, "dpr": 1}]})");
  setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + folder.file("screens")).c_str(), 1);
  for (const char* scale : {"1", "1.25", "1.5", "1.75", "2"}) {
    setenv("QT_SCALE_FACTOR", scale, 1);
    const QtApplicationOfTest application;
    ASSERT_EQ(QGuiApplication::screens().size(), 2);
    orvane::DesktopScreens screens;
    const auto area = [&] {
      const auto size = std::async(std::launch::async, [&] { return screens.visibleArea(); }).get();
      return std::pair(size.width, size.height);
    };
    EXPECT_EQ(area(), std::pair(1366, 768)) << scale;
    EXPECT_EQ(screens.largestWindowContent().width, 1366) << scale;
    EXPECT_LT(screens.largestWindowContent().height, 768) << scale;
    QWidget window;
    window.winId();
    window.setScreen(QGuiApplication::screens().at(1));
    screens.setMainWindow(&window);
    EXPECT_EQ(area(), std::pair(1920, 1080)) << scale;
    EXPECT_LT(screens.largestWindowContent().width, 1366) << "without a frame, " << scale;
    window.setScreen(QGuiApplication::screens().at(0));
    EXPECT_EQ(area(), std::pair(1366, 768)) << scale;
  }
  unsetenv("QT_SCALE_FACTOR");
  unsetenv("QT_QPA_PLATFORM");
}

TEST(DesktopClipboard, GivesTheBytesOfATypeThatItHolds) {
  const QtApplicationOfTest application;
  const orvane::DesktopClipboard clipboard;
  QGuiApplication::clipboard()->clear();
  EXPECT_EQ(clipboard.bytes("text/uri-list"), std::nullopt);
  const std::string bytes("a\0\xFF\r\n", 5);
  auto* const content = new QMimeData;
  content->setData("application/x-test", QByteArray::fromStdString(bytes));
  content->setData("text/uri-list", "");
  QGuiApplication::clipboard()->setMimeData(content);
  EXPECT_EQ(clipboard.bytes("application/x-test"), bytes);
  EXPECT_EQ(clipboard.bytes("text/uri-list"), "");
  EXPECT_EQ(clipboard.bytes("text/plain"), std::nullopt);
}

}  // namespace
