#include "decoder/EmfRenderer.h"

#include <dlfcn.h>

#include <initializer_list>

#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>
#include <cmath>
#include <cstdlib>

#include "decoder/Fit.h"

namespace decoder {

namespace {

// The converter's options, laid out as the library declares them.
struct ConverterOptions {
  char* nameSpace;
  bool verbose;
  bool emfplus;
  bool svgDelimiter;
  double imgHeight;
  double imgWidth;
};
using ConvertFunction = int (*)(char*, size_t, char**, size_t*, ConverterOptions*);

// The converter is loaded only for enhanced metafiles, with its own symbols
// looked up first: its companion library exports a function of the same
// name as one of libwmf's, which this program links directly.
ConvertFunction LoadConverter() {
  void* library = nullptr;
  for (const char* name : {"libemf2svg.so.1", VISTREL_EMF2SVG_LIBRARY}) {
    library = dlopen(name, RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
    if (library) break;
  }
  if (!library) return nullptr;
  return reinterpret_cast<ConvertFunction>(dlsym(library, "emf2svg"));
}

qint32 Int32At(const QByteArray& bytes, int at) {
  return qFromLittleEndian<qint32>(bytes.constData() + at);
}

}  // namespace

bool LooksLikeEmf(const QByteArray& bytes) {
  return bytes.size() >= 88 && Int32At(bytes, 0) == 1 && bytes.mid(40, 4) == " EMF";
}

QSize EmfNaturalSize(const QByteArray& bytes) {
  if (!LooksLikeEmf(bytes)) return QSize();
  const double width = double(Int32At(bytes, 32)) - Int32At(bytes, 24);
  const double height = double(Int32At(bytes, 36)) - Int32At(bytes, 28);
  if (width <= 0 || height <= 0) return QSize();
  const auto toPixels = [](double hundredthsOfMm) {
    return int(qMin(std::lround(hundredthsOfMm * 96.0 / 2540.0), long(1) << 20));
  };
  return QSize(toPixels(width), toPixels(height));
}

QImage RenderEmf(const QByteArray& bytes, const QSize& fitInto) {
  const QSize natural = EmfNaturalSize(bytes);
  if (!natural.isValid()) return QImage();
  const QSize size = OutputSize(natural, fitInto);
  const ConvertFunction convert = LoadConverter();
  if (!convert) return QImage();

  QByteArray input = bytes;  // the converter wants writable memory
  char emptyNameSpace[] = "";
  ConverterOptions options{emptyNameSpace, false, true, true, double(natural.height()),
                           double(natural.width())};
  char* svg = nullptr;
  size_t svgLength = 0;
  const int ok = convert(input.data(), size_t(input.size()), &svg, &svgLength, &options);
  const QByteArray document = svg ? QByteArray(svg, qsizetype(svgLength)) : QByteArray();
  std::free(svg);
  if (!ok || document.isEmpty()) return QImage();

  QSvgRenderer renderer(document);
  if (!renderer.isValid()) return QImage();
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return QImage();
  image.fill(Qt::white);  // as libwmf leaves a Windows metafile
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
  painter.end();
  return image;
}

}  // namespace decoder
