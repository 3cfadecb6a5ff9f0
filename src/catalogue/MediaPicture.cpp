#include "catalogue/MediaPicture.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <mutex>

#include "catalogue/MediaTypes.h"
#include "catalogue/PathParts.h"
#include "catalogue/PcxDecoder.h"
#include "platform/MetafileDecoder.h"
#include "platform/TiffQuiet.h"

// The resources live in a static library: they are registered on first use.
// (The registration is declared at file scope, so it stays outside the
// unnamed namespace.)
static void RegisterResources() { Q_INIT_RESOURCE(resources); }

namespace {

// Big enough for full-size photographs of 100 megapixels and more.
constexpr int kAllocationLimitMb = 1024;

void PrepareDecoders() {
  static std::once_flag once;
  std::call_once(once, [] {
    RegisterResources();
    QImageReader::setAllocationLimit(kAllocationLimitMb);
    platform::SilenceTiffMessages();
  });
}

bool Fits(const QSize& size, const QSize& box) {
  return size.width() <= box.width() && size.height() <= box.height();
}

bool WantsReduction(const QSize& fitInto) { return fitInto.isValid() && !fitInto.isEmpty(); }

QImage Reduced(const QImage& image, const QSize& fitInto) {
  if (image.isNull() || !WantsReduction(fitInto) || Fits(image.size(), fitInto)) return image;
  return image.scaled(image.size().scaled(fitInto, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)),
                      Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

// A palette or one-bit picture in true colour, so that it scales smoothly.
QImage FullColour(const QImage& image) {
  if (image.isNull() || image.depth() >= 24) return image;
  return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
}

// An icon or cursor file holds several entries: the largest is shown.
QImage ReadLargestEntry(QImageReader& reader) {
  QImage best;
  const int count = qMax(1, reader.imageCount());
  for (int i = 0; i < count; ++i) {
    if (i > 0 && !reader.jumpToImage(i)) break;
    const QImage entry = reader.read();
    if (entry.isNull()) continue;
    if (best.isNull() || qint64(entry.width()) * entry.height() > qint64(best.width()) * best.height())
      best = entry;
  }
  return best;
}

QImage ReadWith(QImageReader& reader, const QSize& fitInto) {
  reader.setAutoTransform(true);
  const QByteArray format = reader.format();
  if (format == "ico" || format == "cur") return Reduced(ReadLargestEntry(reader), fitInto);
  const QSize stored = reader.size();
  if (WantsReduction(fitInto) && stored.isValid() && !stored.isEmpty()) {
    // The reduced size is given for the stored picture, before a turn by
    // its orientation, so the box turns with it.
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize box = turned ? fitInto.transposed() : fitInto;
    if (Fits(stored, box)) return reader.read();
    const QSize wanted = stored.scaled(box, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    if (format == "jpeg" && stored.width() >= 8 * wanted.width() &&
        stored.height() >= 8 * wanted.height()) {
      // A small picture of a big photograph: the decoder's eighth-size
      // output, taken as it comes (its fast path, which leaves the last
      // reduction to us so that it stays smooth).
      reader.setQuality(49);
      reader.setScaledSize(QSize((stored.width() + 7) / 8, (stored.height() + 7) / 8));
      return Reduced(reader.read(), fitInto);
    }
    // A palette or one-bit picture would be scaled in its palette (into
    // noise, for a two-colour one): it is read whole and reduced in full
    // colour.
    if (const QImage::Format stored = reader.imageFormat();
        stored == QImage::Format_Mono || stored == QImage::Format_MonoLSB || stored == QImage::Format_Indexed8) {
      QImage whole = reader.read();
      // A big one first comes down to twice the box in its own colours
      // (nearest pixels keep them), so that full colour never costs much.
      const QSize twice = (fitInto * 2).boundedTo(whole.size());
      if (!whole.isNull() && (whole.width() > twice.width() || whole.height() > twice.height()))
        whole = whole.scaled(twice, Qt::KeepAspectRatio, Qt::FastTransformation);
      return Reduced(FullColour(whole), fitInto);
    }
    reader.setScaledSize(wanted);
    return reader.read();
  }
  // Without a stored size (an animated network graphic, say) the picture
  // is decoded whole and reduced afterwards.
  return Reduced(FullColour(reader.read()), fitInto);
}

// Raster pictures: the content decides the format; the extension is the
// fallback for content that does not tell.
QImage DecodeRaster(const QString& path, const QSize& fitInto) {
  {
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    if (reader.canRead()) return ReadWith(reader, fitInto);
  }
  QFile file(path);
  if (file.open(QIODevice::ReadOnly)) {
    const QByteArray head = file.read(128);
    if (LooksLikePcx(head)) {
      file.seek(0);
      return Reduced(DecodePcx(file.readAll()), fitInto);
    }
    file.close();
  }
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (suffix.isEmpty()) return QImage();
  QImageReader reader(path, suffix.toLatin1());
  reader.setDecideFormatFromContent(false);
  return ReadWith(reader, fitInto);
}

// A plain file this process can open for reading; else no decoder is
// asked, and the failure is not the file's content.
bool IsReadableFile(const QString& path) {
  if (!QFileInfo(path).isFile()) return false;
  QFile file(path);
  return file.open(QIODevice::ReadOnly);
}

QImage DrawnInvalidImage() {
  // Only if the resource is missing: a grey frame with a red cross.
  QImage image(48, 48, QImage::Format_ARGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setPen(QPen(QColor(128, 128, 128), 2));
  painter.drawRect(1, 1, 46, 46);
  painter.setPen(QPen(QColor(220, 0, 0), 4));
  painter.drawLine(10, 10, 38, 38);
  painter.drawLine(38, 10, 10, 38);
  return image;
}

DecodeOutcome Fail(QImage& picture, DecodeOutcome outcome) {
  picture = InvalidImagePicture();
  return outcome;
}

}  // namespace

const QImage& InvalidImagePicture() {
  static const QImage marker = [] {
    PrepareDecoders();
    const QImage fromResource(QStringLiteral(":/InvalidImage.png"));
    return fromResource.isNull() ? DrawnInvalidImage() : fromResource;
  }();
  return marker;
}

bool LoadMediaPicture(const QString& path, QImage& picture, const QSize& fitInto) {
  return DecodeMediaPicture(path, picture, fitInto) == DecodeOutcome::Decoded;
}

QSize MediaPictureSize(const QString& path) {
  PrepareDecoders();
  QImageReader reader(path);
  reader.setDecideFormatFromContent(true);
  if (!reader.canRead()) return QSize();
  const QByteArray format = reader.format();
  if (format == "ico" || format == "cur" || format == "mng") return QSize();
  reader.setAutoTransform(true);
  const QSize stored = reader.size();
  if (!stored.isValid() || stored.isEmpty()) return QSize();
  const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
  return turned ? stored.transposed() : stored;
}

bool IsDefiniteFailure(DecodeOutcome outcome) { return outcome == DecodeOutcome::NotAPicture; }

DecodeOutcome DecodeMediaPicture(const QString& path, QImage& picture, const QSize& fitInto,
                                 const std::function<bool()>& stillWanted) {
  PrepareDecoders();
  if (!IsReadableFile(path)) return Fail(picture, DecodeOutcome::Unreadable);
  const QString kind = GetFileExtension(path).left(3);
  QImage decoded;
  // Photographs, web pictures, scans and paintbrush pictures go straight
  // to their decoders.
  if (kind == "png" || kind == "mng" || kind == "jpg" || kind == "jpe" || kind == "bmp" ||
      kind == "xbm" || kind == "gif" || kind == "tif" || kind == "jfx" || kind == "pcx" ||
      kind == "xif") {
    decoded = DecodeRaster(path, fitInto);
  } else {
    // Everything else goes by the general loader, which refuses a JPEG
    // without its end marker and tries a raster file a second time after
    // an error. A metafile gets one go: the helper's failures repeat, and
    // a second time-out would only double the wait.
    if (!IsValidJpegEnd(path)) return Fail(picture, DecodeOutcome::NotAPicture);
    if (kind == "wmf" || kind == "emf") {
      const DecodeOutcome outcome = platform::DecodeMetafile(path, fitInto, decoded, stillWanted);
      if (outcome != DecodeOutcome::Decoded) return Fail(picture, outcome);
    } else {
      decoded = DecodeRaster(path, fitInto);
      if (decoded.isNull()) decoded = DecodeRaster(path, fitInto);
    }
  }
  if (decoded.isNull()) return Fail(picture, DecodeOutcome::NotAPicture);
  picture = decoded;
  return DecodeOutcome::Decoded;
}
