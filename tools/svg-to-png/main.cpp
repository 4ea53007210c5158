// Draws an SVG picture in the sizes in which desktops look for an application's icon.

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>
#include <cstdlib>

int main(int argc, char* argv[]) {
  if (argc < 4 || argc % 2 != 0) {
    static_cast<void>(std::fputs("usage: svg-to-png PICTURE.svg SIZE OUTPUT.png [SIZE OUTPUT.png ...]\n", stderr));
    return 2;
  }
  QSvgRenderer renderer(QString::fromLocal8Bit(argv[1]));
  renderer.setAspectRatioMode(Qt::KeepAspectRatio);
  if (!renderer.isValid()) return 1;
  for (int i = 2; i < argc; i += 2) {
    const int size = std::atoi(argv[i]);
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    if (!image.save(QString::fromLocal8Bit(argv[i + 1]))) {
      static_cast<void>(std::fprintf(stderr, "svg-to-png: can't write %s\n", argv[i + 1]));
      return 1;
    }
  }
  return 0;
}
