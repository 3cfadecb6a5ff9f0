#include "catalogue/PcxDecoder.h"

#include <QList>

namespace {

constexpr int kHeaderSize = 128;
constexpr int kExtendedPaletteSize = 769;  // 0x0C and 256 RGB triples
// A picture larger than this many pixels is refused rather than allocated.
constexpr qint64 kMaxPixels = qint64(1) << 28;

struct PcxHeader {
  int bitsPerPixel = 0;
  int planes = 0;
  int bytesPerLine = 0;
  int width = 0;
  int height = 0;
};

int Word(const QByteArray& b, int at) { return uchar(b[at]) | (uchar(b[at + 1]) << 8); }

bool ReadHeader(const QByteArray& b, PcxHeader& h) {
  if (!LooksLikePcx(b)) return false;
  const int xMin = Word(b, 4), yMin = Word(b, 6), xMax = Word(b, 8), yMax = Word(b, 10);
  if (xMax < xMin || yMax < yMin) return false;
  h.width = xMax - xMin + 1;
  h.height = yMax - yMin + 1;
  h.bitsPerPixel = uchar(b[3]);
  h.planes = uchar(b[65]);
  h.bytesPerLine = Word(b, 66);
  const bool supported =
      (h.planes == 1 && (h.bitsPerPixel == 1 || h.bitsPerPixel == 2 || h.bitsPerPixel == 4 ||
                         h.bitsPerPixel == 8)) ||
      (h.bitsPerPixel == 1 && h.planes >= 2 && h.planes <= 4) ||
      (h.bitsPerPixel == 8 && (h.planes == 3 || h.planes == 4));
  if (!supported) return false;
  if (qint64(h.width) * h.height > kMaxPixels) return false;
  return h.bytesPerLine * 8 >= h.width * h.bitsPerPixel;
}

// Expands the run-length coded data into planes * bytesPerLine bytes per
// line. False when the data ends before the last line.
bool Expand(const QByteArray& b, bool runLength, qsizetype end, qsizetype total,
            QByteArray& out) {
  // A coded byte gives at most 63 bytes: data that can't fill the lines is
  // refused before their room is taken, so a header that claims a huge
  // picture over a few bytes of data costs nothing.
  const qsizetype available = qMax<qsizetype>(0, end - kHeaderSize);
  if (total > (runLength ? available * 63 : available)) return false;
  out.resize(total);
  char* dst = out.data();
  qsizetype filled = 0;
  qsizetype at = kHeaderSize;
  while (filled < total) {
    if (at >= end) return false;
    const uchar c = uchar(b[at++]);
    if (runLength && c >= 0xC0) {
      if (at >= end) return false;
      const char value = b[at++];
      const qsizetype count = qMin<qsizetype>(c & 0x3F, total - filled);
      std::fill(dst + filled, dst + filled + count, value);
      filled += count;
    } else {
      dst[filled++] = char(c);
    }
  }
  return true;
}

QList<QRgb> HeaderPalette(const QByteArray& b) {
  QList<QRgb> colours(16);
  for (int i = 0; i < 16; ++i)
    colours[i] = qRgb(uchar(b[16 + 3 * i]), uchar(b[17 + 3 * i]), uchar(b[18 + 3 * i]));
  return colours;
}

}  // namespace

bool LooksLikePcx(const QByteArray& bytes) {
  if (bytes.size() < kHeaderSize) return false;
  const uchar version = uchar(bytes[1]);
  return uchar(bytes[0]) == 0x0A && uchar(bytes[2]) <= 1 &&
         (version == 0 || version == 2 || version == 3 || version == 4 || version == 5);
}

QImage DecodePcx(const QByteArray& bytes) {
  PcxHeader h;
  if (!ReadHeader(bytes, h)) return QImage();

  const bool extendedPalette = h.bitsPerPixel == 8 && h.planes == 1 &&
                               bytes.size() >= kHeaderSize + kExtendedPaletteSize &&
                               uchar(bytes[bytes.size() - kExtendedPaletteSize]) == 0x0C;
  const qsizetype dataEnd = extendedPalette ? bytes.size() - kExtendedPaletteSize : bytes.size();
  const qsizetype lineBytes = qsizetype(h.planes) * h.bytesPerLine;
  QByteArray data;
  if (!Expand(bytes, uchar(bytes[2]) == 1, dataEnd, lineBytes * h.height, data)) return QImage();
  const auto* raw = reinterpret_cast<const uchar*>(data.constData());

  if (h.bitsPerPixel == 8 && h.planes >= 3) {
    const bool alpha = h.planes == 4;
    QImage image(h.width, h.height, alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (image.isNull()) return QImage();
    for (int y = 0; y < h.height; ++y) {
      const uchar* line = raw + y * lineBytes;
      auto* out = reinterpret_cast<QRgb*>(image.scanLine(y));
      for (int x = 0; x < h.width; ++x) {
        const int r = line[x], g = line[h.bytesPerLine + x], bl = line[2 * h.bytesPerLine + x];
        out[x] = alpha ? qRgba(r, g, bl, line[3 * h.bytesPerLine + x]) : qRgb(r, g, bl);
      }
    }
    return image;
  }

  QList<QRgb> colours;
  if (h.bitsPerPixel == 8) {
    colours.resize(256);
    for (int i = 0; i < 256; ++i) {
      if (extendedPalette) {
        const qsizetype p = bytes.size() - 768 + 3 * i;
        colours[i] = qRgb(uchar(bytes[p]), uchar(bytes[p + 1]), uchar(bytes[p + 2]));
      } else {
        colours[i] = qRgb(i, i, i);
      }
    }
  } else {
    const int count = 1 << (h.bitsPerPixel * h.planes);
    colours = HeaderPalette(bytes).mid(0, count);
    // Monochrome pictures often leave the header palette empty.
    if (count == 2 && colours[0] == colours[1]) colours = {qRgb(0, 0, 0), qRgb(255, 255, 255)};
  }

  QImage image(h.width, h.height, QImage::Format_Indexed8);
  if (image.isNull()) return QImage();
  image.setColorTable(colours);
  const int mask = (1 << h.bitsPerPixel) - 1;
  for (int y = 0; y < h.height; ++y) {
    const uchar* line = raw + y * lineBytes;
    uchar* out = image.scanLine(y);
    for (int x = 0; x < h.width; ++x) {
      int index = 0;
      for (int p = 0; p < h.planes; ++p) {
        const int bit = x * h.bitsPerPixel;
        const uchar byte = line[p * h.bytesPerLine + bit / 8];
        const int value = (byte >> (8 - h.bitsPerPixel - bit % 8)) & mask;
        index |= value << (p * h.bitsPerPixel);
      }
      out[x] = uchar(qMin(index, int(colours.size()) - 1));
    }
  }
  return image;
}
