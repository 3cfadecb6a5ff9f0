#include "browser/ThumbnailCache.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QTemporaryFile>
#include <QtEndian>
#include <cstdio>

namespace {

// The program's own folder under thumbnails/fail.
constexpr char FailureFolderName[] = "vistrel";

// Keys of the stamp written into each cache file.
constexpr char UriKey[] = "Thumb::URI";
constexpr char MTimeKey[] = "Thumb::MTime";
constexpr char SizeKey[] = "Thumb::Size";
constexpr char WidthKey[] = "Thumb::Image::Width";
constexpr char HeightKey[] = "Thumb::Image::Height";

// A fast, light zlib level: the files are small and written while the user
// waits, and read back far more often than they are written.
constexpr int PngWriteQuality = 80;  // zlib level 1

// The largest edge any program stores in the cache.
constexpr int MaxCachedEdge = 1024;

const QFileDevice::Permissions PrivateFolder =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;

QString AbsoluteClean(const QString& path) {
  return QDir::cleanPath(QDir::isAbsolutePath(path) ? path : QDir::current().absoluteFilePath(path));
}

// Characters a path keeps as they are inside a file URI.
bool KeptInUri(unsigned char c) {
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return true;
  static const char kept[] = "-._~!$&'()*+,=:@/";
  for (const char* k = kept; *k; ++k)
    if (c == static_cast<unsigned char>(*k)) return true;
  return false;
}

// The whole seconds of a time in milliseconds, as the cache writes them.
qint64 WholeSeconds(qint64 milliseconds) {
  return milliseconds >= 0 ? milliseconds / 1000 : -((-milliseconds + 999) / 1000);
}

bool MatchesStamp(const QImage& entry, const QString& uri, const PictureStamp& stamp) {
  if (entry.text(UriKey) != uri) return false;
  bool number = false;
  const qint64 mtime = entry.text(MTimeKey).trimmed().toLongLong(&number);
  if (!number || mtime != WholeSeconds(stamp.MTimeMs)) return false;
  // The length is left out by some programs; when it is there, it counts.
  const QString sizeText = entry.text(SizeKey).trimmed();
  if (sizeText.isEmpty()) return true;
  const qint64 size = sizeText.toLongLong(&number);
  return number && size == stamp.Size;
}

// Makes each missing folder from the cache's root down to folder, private.
bool MakePrivateFolder(const QString& folder) {
  if (QFileInfo(folder).isDir()) return true;
  const QString root = ThumbnailFolder();
  const QString parentOfRoot = QFileInfo(root).absolutePath();
  if (!QFileInfo(parentOfRoot).isDir()) {
    if (!QDir().mkpath(parentOfRoot)) return false;
    QFile::setPermissions(parentOfRoot, PrivateFolder);
  }
  QString current = parentOfRoot;
  const QStringList parts = folder.mid(parentOfRoot.size()).split('/', Qt::SkipEmptyParts);
  for (const QString& part : parts) {
    current += '/' + part;
    // Another thread may make the same folder at the same moment.
    if (!QFileInfo(current).isDir() && !QDir().mkdir(current, PrivateFolder) && !QFileInfo(current).isDir())
      return false;
  }
  return true;
}

// Writes image with its stamp to target: into a temporary file beside it,
// renamed into place, so a reader never sees half a file.
void WriteStamped(const QString& target, QImage image, const QString& uri, const PictureStamp& stamp,
                  const QSize& originalSize) {
  const QString folder = QFileInfo(target).absolutePath();
  if (!MakePrivateFolder(folder)) return;
  image.setText(UriKey, uri);
  image.setText(MTimeKey, QString::number(WholeSeconds(stamp.MTimeMs)));
  image.setText(SizeKey, QString::number(stamp.Size));
  if (originalSize.isValid() && !originalSize.isEmpty()) {
    image.setText(WidthKey, QString::number(originalSize.width()));
    image.setText(HeightKey, QString::number(originalSize.height()));
  }
  image.setText("Software", "Vistrel");

  // Temporary files are made readable by the owner only.
  QTemporaryFile temporary(folder + "/vistrel-XXXXXX.png");
  if (!temporary.open()) return;
  QImageWriter writer(&temporary, "png");
  writer.setQuality(PngWriteQuality);
  if (!writer.write(image) || !temporary.flush()) return;
  temporary.close();
  if (std::rename(QFile::encodeName(temporary.fileName()).constData(),
                  QFile::encodeName(target).constData()) == 0)
    temporary.setAutoRemove(false);
}

// Reads a cache file if its stamp matches; image and its texts then filled.
// The file is mapped rather than read, so a large foreign file costs nothing.
bool ReadStamped(const QString& file, const QString& uri, const PictureStamp& stamp, QImage& image) {
  if (!stamp.Valid) return false;
  QFile entry(file);
  if (!entry.open(QIODevice::ReadOnly)) return false;
  const qint64 size = entry.size();
  if (size <= 0) return false;
  if (const uchar* mapped = entry.map(0, size))
    return ReadThumbnailEntry(QByteArray::fromRawData(reinterpret_cast<const char*>(mapped), qsizetype(size)),
                              uri, stamp, image);
  return ReadThumbnailEntry(entry.readAll(), uri, stamp, image);
}

bool IsInsideCache(const QString& absolutePath) {
  const QString root = ThumbnailFolder() + '/';
  return absolutePath.startsWith(root);
}

// The picture as it is now, when it is still as it was before its decode;
// else invalid. The cache's own files are never entered: their thumbnails
// would only feed on themselves.
PictureStamp UnchangedStamp(const QString& absolutePath, const PictureStamp& before) {
  if (!before.Valid || IsInsideCache(absolutePath)) return PictureStamp();
  const PictureStamp now = ReadPictureStamp(absolutePath);
  return now == before ? now : PictureStamp();
}

}  // namespace

PictureStamp ReadPictureStamp(const QString& path) {
  PictureStamp stamp;
  const QFileInfo info(AbsoluteClean(path));
  if (!info.exists() || !info.isFile()) return stamp;
  const QDateTime modified = info.fileTime(QFileDevice::FileModificationTime);
  if (!modified.isValid()) return stamp;
  stamp.Valid = true;
  stamp.MTimeMs = modified.toMSecsSinceEpoch();
  stamp.Size = info.size();
  return stamp;
}

int ThumbnailCacheSize(int cellPixels) {
  return cellPixels <= NormalThumbnailSize ? NormalThumbnailSize : LargeThumbnailSize;
}

QString ThumbnailFolder() {
  const QString xdg = QFile::decodeName(qgetenv("XDG_CACHE_HOME"));
  const QString base = QDir::isAbsolutePath(xdg) ? xdg : QDir::homePath() + "/.cache";
  return QDir::cleanPath(base + "/thumbnails");
}

QString ThumbnailUri(const QString& absolutePath) {
  static const char hex[] = "0123456789ABCDEF";
  const QByteArray bytes = QFile::encodeName(AbsoluteClean(absolutePath));
  QByteArray uri("file://");
  uri.reserve(uri.size() + bytes.size() * 3);
  for (const char ch : bytes) {
    const auto c = static_cast<unsigned char>(ch);
    if (KeptInUri(c)) {
      uri.append(ch);
    } else {
      uri.append('%');
      uri.append(hex[c >> 4]);
      uri.append(hex[c & 0x0F]);
    }
  }
  return QString::fromLatin1(uri);
}

QString ThumbnailFileName(const QString& uri) {
  return QString::fromLatin1(QCryptographicHash::hash(uri.toUtf8(), QCryptographicHash::Md5).toHex()) +
         ".png";
}

QString ThumbnailPath(const QString& path, int cellPixels) {
  const char* sizeFolder = ThumbnailCacheSize(cellPixels) == NormalThumbnailSize ? "normal" : "large";
  return ThumbnailFolder() + '/' + sizeFolder + '/' + ThumbnailFileName(ThumbnailUri(path));
}

QString FailureRecordPath(const QString& path) {
  return ThumbnailFolder() + "/fail/" + FailureFolderName + '/' + ThumbnailFileName(ThumbnailUri(path));
}

bool PngChunksWithinBytes(const QByteArray& bytes) {
  static constexpr char Signature[] = "\x89PNG\r\n\x1A\n";
  constexpr qsizetype SignatureSize = sizeof Signature - 1;
  constexpr qsizetype ChunkFrame = 12;  // length, type, and a CRC behind the data
  if (!bytes.startsWith(QByteArrayView(Signature, SignatureSize))) return false;
  qsizetype at = SignatureSize;
  while (bytes.size() - at >= ChunkFrame) {
    const quint32 length = qFromBigEndian<quint32>(bytes.constData() + at);
    if (length > quint64(bytes.size() - at - ChunkFrame)) return false;
    if (QByteArrayView(bytes.constData() + at + 4, 4) == "IEND") return true;
    at += ChunkFrame + qsizetype(length);
  }
  // Running out before the end chunk is left to the reader to judge, but
  // not a chunk cut inside its frame: the library would take its length on
  // trust as above.
  return at == bytes.size();
}

bool ReadThumbnailEntry(const QByteArray& bytes, const QString& uri, const PictureStamp& stamp, QImage& image) {
  if (!stamp.Valid) return false;
  if (!PngChunksWithinBytes(bytes)) return false;
  QBuffer buffer;
  buffer.setData(bytes);
  if (!buffer.open(QIODevice::ReadOnly)) return false;
  QImageReader reader(&buffer, "png");
  reader.setDecideFormatFromContent(false);
  if (!reader.canRead()) return false;
  // No thumbnail is this large: a file that claims it is not read.
  const QSize size = reader.size();
  if (size.width() > MaxCachedEdge || size.height() > MaxCachedEdge) return false;
  QImage read;
  if (!reader.read(&read) || read.isNull()) return false;
  if (!MatchesStamp(read, uri, stamp)) return false;
  image = read;
  return true;
}

bool ReadCachedThumbnail(const QString& path, int cellPixels, QImage& image, QSize& originalSize) {
  const QString absolute = AbsoluteClean(path);
  QImage read;
  if (!ReadStamped(ThumbnailPath(absolute, cellPixels), ThumbnailUri(absolute), ReadPictureStamp(absolute),
                   read))
    return false;
  const int width = read.text(WidthKey).toInt();
  const int height = read.text(HeightKey).toInt();
  originalSize = width > 0 && height > 0 ? QSize(width, height) : read.size();
  image = read;
  return true;
}

void StoreThumbnail(const QString& path, int cellPixels, const QImage& image, const QSize& originalSize,
                    const PictureStamp& before) {
  if (image.isNull()) return;
  const QString absolute = AbsoluteClean(path);
  const PictureStamp stamp = UnchangedStamp(absolute, before);
  if (!stamp.Valid) return;
  const int edge = ThumbnailCacheSize(cellPixels);
  QImage thumbnail = image;
  if (thumbnail.width() > edge || thumbnail.height() > edge)
    thumbnail = thumbnail.scaled(edge, edge, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  WriteStamped(ThumbnailPath(absolute, cellPixels), thumbnail, ThumbnailUri(absolute), stamp, originalSize);
}

bool IsRecordedFailure(const QString& path) {
  const QString absolute = AbsoluteClean(path);
  QImage read;
  return ReadStamped(FailureRecordPath(absolute), ThumbnailUri(absolute), ReadPictureStamp(absolute), read);
}

void RecordFailure(const QString& path, const PictureStamp& before) {
  const QString absolute = AbsoluteClean(path);
  const PictureStamp stamp = UnchangedStamp(absolute, before);
  if (!stamp.Valid) return;
  QImage mark(1, 1, QImage::Format_ARGB32);
  mark.fill(Qt::transparent);
  WriteStamped(FailureRecordPath(absolute), mark, ThumbnailUri(absolute), stamp, QSize());
}
