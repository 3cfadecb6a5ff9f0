#pragma once
// The thumbnail cache shared with the desktop: small PNG copies of pictures
// under $XDG_CACHE_HOME/thumbnails, named by the MD5 of the picture's file
// URI, stamped with that URI, the picture's modification time and its
// length. A stamp that no longer matches the picture makes the entry stale.
// Pictures that could not be decoded are remembered under
// thumbnails/fail/vistrel, so they are not tried again until they change.
// Both are written only when the picture did not change while it was being
// decoded: a picture still being copied in gets no entry from its first
// part.
//
// Plain functions, safe to call from several threads at once. None of them
// throws; an unreadable, foreign or corrupt cache file counts as a miss.

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>
#include <QtGlobal>

// Edge of the two thumbnail sizes the cache keeps, in pixels.
constexpr int NormalThumbnailSize = 128;
constexpr int LargeThumbnailSize = 256;

// The thumbnail size that serves a cell of cellPixels: normal up to 128,
// large above.
int ThumbnailCacheSize(int cellPixels);

// The cache's root folder: $XDG_CACHE_HOME/thumbnails, or
// $HOME/.cache/thumbnails when that is not set (or not absolute).
QString ThumbnailFolder();

// The file URI of a path: "file://" and the absolute path, its bytes
// percent-encoded except letters, digits and -._~!$&'()*+,=:@/ (so a blank
// is %20, ";" is %3B, "ü" is %C3%BC).
QString ThumbnailUri(const QString& absolutePath);
// The cache file name of a URI: its MD5 in lower-case hex and ".png".
QString ThumbnailFileName(const QString& uri);
// Where the thumbnail of path for a cell of cellPixels is kept.
QString ThumbnailPath(const QString& path, int cellPixels);
// Where a failure to decode path is recorded.
QString FailureRecordPath(const QString& path);

// What a picture file is at one moment: when it was last changed and its
// length. Invalid when it is missing or no plain file.
struct PictureStamp {
  bool Valid = false;
  qint64 MTimeMs = 0;  // milliseconds since the epoch
  qint64 Size = 0;
  bool operator==(const PictureStamp&) const = default;
};
PictureStamp ReadPictureStamp(const QString& path);

// Reads the cached thumbnail of path for a cell of cellPixels. True only
// when the entry is there, decodes, and its URI, modification time and
// length match the picture (an entry without a length, as other programs
// may write it, goes by the URI and the time alone); originalSize is the
// picture's own size as recorded with the thumbnail, or the thumbnail's size
// when none was recorded.
bool ReadCachedThumbnail(const QString& path, int cellPixels, QImage& image, QSize& originalSize);

// Whether each chunk of a PNG, up to its end chunk, lies within the bytes,
// and no chunk is cut inside its 12-byte frame. The PNG library takes a
// chunk's length on trust and makes room for it before it finds the file
// too short: a damaged length in a small file costs gigabytes and seconds at
// every read. Such a file would fail to decode all the same, so it is
// refused before it is handed over.
bool PngChunksWithinBytes(const QByteArray& bytes);

// The reading of one cache entry from its bytes, as ReadCachedThumbnail and
// IsRecordedFailure do it with the file's: true only when the bytes are a PNG
// of at most 1024 pixels a side that decodes and carries the stamp of uri
// and stamp (see ReadCachedThumbnail); image then holds it with its texts.
bool ReadThumbnailEntry(const QByteArray& bytes, const QString& uri, const PictureStamp& stamp, QImage& image);

// Stores image as the thumbnail of path for a cell of cellPixels, reduced to
// the cache size when it is larger (a smaller picture is stored as it is, so
// that a second visit never decodes it again). The write goes to a temporary
// file that is renamed into place; folders are made private (0700), files
// readable by the owner only (0600). before is the picture's stamp taken
// before it was decoded: nothing is stored unless the picture still has it.
// Failures are passed over.
void StoreThumbnail(const QString& path, int cellPixels, const QImage& image, const QSize& originalSize,
                    const PictureStamp& before);

// True when a failure to decode path is recorded and path has not changed
// since (same URI, time and, when recorded, length).
bool IsRecordedFailure(const QString& path);
// Records that path could not be decoded; before is its stamp taken before
// the decode, and nothing is recorded unless the picture still has it.
void RecordFailure(const QString& path, const PictureStamp& before);
