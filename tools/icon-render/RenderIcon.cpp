// render-icon: draws an SVG picture into square PNG files of given sizes,
// for the icon theme's fixed-size folders.
//
//     render-icon PICTURE.svg OUTPUT_FOLDER SIZE...
//
// Writes OUTPUT_FOLDER/SIZExSIZE.png for each size; exits non-zero when the
// picture cannot be read or a file cannot be written.
#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

namespace {

QImage Render(QSvgRenderer& renderer, int size) {
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  renderer.render(&painter, QRectF(0, 0, size, size));
  painter.end();
  return image.convertToFormat(QImage::Format_ARGB32);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = application.arguments();
  if (arguments.size() < 4) {
    std::fprintf(stderr, "usage: render-icon PICTURE.svg OUTPUT_FOLDER SIZE...\n");
    return 2;
  }
  QSvgRenderer renderer(arguments[1]);
  if (!renderer.isValid()) {
    std::fprintf(stderr, "render-icon: cannot read %s\n", qPrintable(arguments[1]));
    return 1;
  }
  const QDir folder(arguments[2]);
  if (!folder.mkpath(QStringLiteral("."))) {
    std::fprintf(stderr, "render-icon: cannot make %s\n", qPrintable(arguments[2]));
    return 1;
  }
  for (int i = 3; i < arguments.size(); ++i) {
    bool ok = false;
    const int size = arguments[i].toInt(&ok);
    if (!ok || size < 1 || size > 4096) {
      std::fprintf(stderr, "render-icon: not a size: %s\n", qPrintable(arguments[i]));
      return 2;
    }
    const QString path = folder.filePath(QStringLiteral("%1x%1.png").arg(size));
    if (!Render(renderer, size).save(path, "PNG")) {
      std::fprintf(stderr, "render-icon: cannot write %s\n", qPrintable(path));
      return 1;
    }
  }
  return 0;
}
