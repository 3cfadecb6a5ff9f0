#include <gtest/gtest.h>

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

#include "browser/ThumbnailCache.h"
#include "support/TestEnv.h"

namespace {

// The owner's, group's and others' bits (the "user" bits tell what the
// current user may do, which for root is everything).
QFileDevice::Permissions PermissionsOf(const QString& path) {
  return QFileInfo(path).permissions() &
         ~(QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser);
}

QImage Filled(int width, int height, QRgb colour) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(colour);
  return image;
}

// A picture file: the cache never decodes it, it only reads its time and length.
QString MakePicture(const QString& name, int length = 1000) {
  return testenv::MakeFile(testenv::Root() + "/pictures/" + name, QByteArray(length, 'p'));
}

QString MTimeText(const QString& path) {
  return QString::number(QFileInfo(path).fileTime(QFileDevice::FileModificationTime).toSecsSinceEpoch());
}

void MoveMTime(const QString& path, int seconds) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_TRUE(file.setFileTime(file.fileTime(QFileDevice::FileModificationTime).addSecs(seconds),
                               QFileDevice::FileModificationTime));
}

void Store(const QString& picture, int cellPixels, const QImage& image, const QSize& original = QSize()) {
  StoreThumbnail(picture, cellPixels, image, original, ReadPictureStamp(picture));
}

}  // namespace

TEST(ThumbnailCacheTest, UriNameAndFolderAreThoseTheDesktopUses) {
  // Blanks, quotes, ";" and letters beyond ASCII are escaped as UTF-8
  // bytes; the apostrophe and the other characters allowed in a path stay.
  const QString odd =
      QString::fromUtf8("/tmp/My Pictures/Ann's \"best\"; day/Grüße #1 [a]{b}!$&()*+,=:@~%^`|<>?.jpg");
  EXPECT_EQ(ThumbnailUri(odd),
            "file:///tmp/My%20Pictures/Ann's%20%22best%22%3B%20day/"
            "Gr%C3%BC%C3%9Fe%20%231%20%5Ba%5D%7Bb%7D!$&()*+,=:@~%25%5E%60%7C%3C%3E%3F.jpg");
  EXPECT_EQ(ThumbnailFileName(ThumbnailUri(odd)), "b3ad794a3b08e27b4afeca26251a89d1.png");
  // The path is made absolute and clean first.
  EXPECT_EQ(ThumbnailUri("/tmp/a/./b/../c d.png"), "file:///tmp/a/c%20d.png");
  EXPECT_EQ(ThumbnailUri("x.png"), ThumbnailUri(QDir::currentPath() + "/x.png"));

  const QString root = testenv::Root() + "/cache/thumbnails";
  const QString name = ThumbnailFileName("file:///p/a.jpg");
  EXPECT_EQ(ThumbnailPath("/p/a.jpg", 128), root + "/normal/" + name);
  EXPECT_EQ(ThumbnailPath("/p/a.jpg", 129), root + "/large/" + name);
  EXPECT_EQ(FailureRecordPath("/p/a.jpg"), root + "/fail/vistrel/" + name);
  // A relative XDG_CACHE_HOME is ignored.
  qputenv("XDG_CACHE_HOME", "relative/cache");
  EXPECT_EQ(ThumbnailFolder(), testenv::Root() + "/home/.cache/thumbnails");
}

TEST(ThumbnailCacheTest, StoredThumbnailIsStampedPrivateAndReducedToTheCacheSize) {
  const QString picture = MakePicture(QString::fromUtf8("Grüße; \"Sommer\".jpg"), 1234);
  Store(picture, 92, Filled(300, 150, qRgb(10, 200, 30)), QSize(6000, 3000));
  RecordFailure(picture, ReadPictureStamp(picture));

  const QString stored = ThumbnailPath(picture, 92);
  for (const QString& file : {stored, FailureRecordPath(picture)})
    EXPECT_EQ(PermissionsOf(file), QFileDevice::ReadOwner | QFileDevice::WriteOwner) << file.toStdString();
  for (const char* folder : {"", "/normal", "/fail", "/fail/vistrel"})
    EXPECT_EQ(PermissionsOf(ThumbnailFolder() + folder),
              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner)
        << folder;
  // The temporary file was renamed, not left beside it.
  EXPECT_EQ(QDir(ThumbnailFolder() + "/normal").entryList(QDir::Files),
            QStringList{QFileInfo(stored).fileName()});
  // The stamp every program sharing the cache reads.
  const QImage file(stored, "png");
  EXPECT_EQ(file.text("Thumb::URI"), ThumbnailUri(picture));
  EXPECT_EQ(file.text("Thumb::MTime"), MTimeText(picture));
  EXPECT_EQ(file.text("Thumb::Size"), "1234");

  QImage image;
  QSize original;
  ASSERT_TRUE(ReadCachedThumbnail(picture, 92, image, original));
  EXPECT_EQ(image.size(), QSize(128, 64));
  EXPECT_EQ(image.pixel(60, 30), qRgb(10, 200, 30));
  EXPECT_EQ(original, QSize(6000, 3000));
  EXPECT_FALSE(ReadCachedThumbnail(picture, 200, image, original));
  // A changed picture makes both stale; storing again replaces the entry.
  MoveMTime(picture, 5);
  EXPECT_FALSE(ReadCachedThumbnail(picture, 92, image, original));
  EXPECT_FALSE(IsRecordedFailure(picture));
  Store(picture, 92, Filled(30, 15, qRgb(0, 0, 200)));
  ASSERT_TRUE(ReadCachedThumbnail(picture, 92, image, original));
  EXPECT_EQ(original, QSize(30, 15));

  // A small picture is stored as it is; without an original size the
  // thumbnail's own size stands for it.
  const QString small = MakePicture("small.png");
  Store(small, 200, Filled(40, 30, qRgb(1, 2, 3)));
  ASSERT_TRUE(ReadCachedThumbnail(small, 200, image, original));
  EXPECT_EQ(image.size(), QSize(40, 30));
  EXPECT_EQ(original, QSize(40, 30));
}

TEST(ThumbnailCacheTest, ForeignOrCorruptEntriesCountOnlyWhenTheirStampMatches) {
  const QString picture = MakePicture("beach.jpg", 1000);
  const QString uri = ThumbnailUri(picture);
  const auto png = [](QImage image, const QString& uri, const QString& mtime, const QString& size) {
    if (!uri.isEmpty()) image.setText("Thumb::URI", uri);
    if (!mtime.isEmpty()) image.setText("Thumb::MTime", mtime);
    if (!size.isEmpty()) image.setText("Thumb::Size", size);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return buffer.data();
  };
  const QImage entry = Filled(32, 24, qRgb(1, 2, 3));
  const QString mtime = MTimeText(picture);
  const QByteArray good = png(entry, uri, mtime, "1000");
  const struct {
    const char* What;
    QByteArray Bytes;
    bool Counts;
  } cases[] = {
      {"no PNG", "this is no PNG file", false},
      {"cut short", good.left(good.size() / 2), false},
      {"broken after its signature", QByteArray("\x89PNG\r\n\x1a\n broken", 16), false},
      {"unstamped", png(entry, "", "", ""), false},
      {"stamped for another file", png(entry, ThumbnailUri(picture + "x"), mtime, "1000"), false},
      {"another length", png(entry, uri, mtime, "999"), false},
      // Some programs leave the length out.
      {"no length", png(entry, uri, mtime, ""), true},
      {"matching", good, true},
  };
  for (const auto& c : cases) {
    testenv::MakeFile(ThumbnailPath(picture, 92), c.Bytes);
    testenv::MakeFile(FailureRecordPath(picture), c.Bytes);
    QImage image;
    QSize original;
    EXPECT_EQ(ReadCachedThumbnail(picture, 92, image, original), c.Counts) << c.What;
    EXPECT_EQ(image.isNull(), !c.Counts) << c.What;
    EXPECT_EQ(original, c.Counts ? QSize(32, 24) : QSize()) << c.What;
    EXPECT_EQ(IsRecordedFailure(picture), c.Counts) << c.What;
  }
}

TEST(ThumbnailCacheTest, PictureRewrittenDuringItsDecodeLeavesNothing) {
  // The stamp is taken, then the picture is rewritten to the same length
  // (a picture that grows meanwhile is in ThumbnailLoaderTest): neither its
  // thumbnail nor its failure is kept, not even the cache's folder.
  const QString rewritten = MakePicture("rewritten.jpg", 1000);
  const PictureStamp before = ReadPictureStamp(rewritten);
  ASSERT_TRUE(before.Valid);
  MoveMTime(rewritten, 3);
  StoreThumbnail(rewritten, 92, Filled(64, 48, qRgb(128, 128, 128)), QSize(640, 480), before);
  RecordFailure(rewritten, before);
  EXPECT_FALSE(QDir(ThumbnailFolder()).exists());
}

TEST(ThumbnailCacheTest, EntryWithAChunkLongerThanTheFileIsAMissUnread) {
  PictureStamp stamp;
  stamp.Valid = true;
  stamp.MTimeMs = 1700000000000;
  stamp.Size = 1234;
  const QString uri = "file:///tmp/picture.jpg";

  // A 2 x 2 entry with that stamp, whole: a hit.
  QImage entry(2, 2, QImage::Format_ARGB32);
  entry.fill(Qt::red);
  entry.setText("Thumb::URI", uri);
  entry.setText("Thumb::MTime", "1700000000");
  entry.setText("Thumb::Size", "1234");
  QByteArray whole;
  QBuffer buffer(&whole);
  ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
  ASSERT_TRUE(entry.save(&buffer, "PNG"));
  QImage read;
  EXPECT_TRUE(PngChunksWithinBytes(whole));
  ASSERT_TRUE(ReadThumbnailEntry(whole, uri, stamp, read));
  EXPECT_EQ(read.size(), QSize(2, 2));

  // 238 bytes whose text chunk is longer than its length says, so that the
  // next length read claims 1.7 GB: the PNG library took that room and spent
  // seconds in it at every read before the chunks were checked.
  QFile damaged(testenv::DataFolder() + "/fuzz/thumbnail-long-chunk.png");
  ASSERT_TRUE(damaged.open(QIODevice::ReadOnly));
  const QByteArray bytes = damaged.readAll();
  ASSERT_EQ(bytes.size(), 238);
  EXPECT_FALSE(PngChunksWithinBytes(bytes));
  read = QImage();
  EXPECT_FALSE(ReadThumbnailEntry(bytes, uri, stamp, read));
  EXPECT_TRUE(read.isNull());
  // 235 bytes whose last chunk is cut inside its frame: its length alone,
  // 1.7 GB again, stands before the end of the bytes.
  QFile cut(testenv::DataFolder() + "/fuzz/thumbnail-cut-chunk.png");
  ASSERT_TRUE(cut.open(QIODevice::ReadOnly));
  const QByteArray cutBytes = cut.readAll();
  ASSERT_EQ(cutBytes.size(), 235);
  EXPECT_FALSE(PngChunksWithinBytes(cutBytes));
  // Cut where that chunk began, the bytes pass to the reader again.
  EXPECT_TRUE(PngChunksWithinBytes(cutBytes.left(226)));
  EXPECT_FALSE(ReadThumbnailEntry(cutBytes, uri, stamp, read));
  EXPECT_TRUE(read.isNull());
  // The same with its last chunks cut off, and a length pointing past the end.
  EXPECT_FALSE(ReadThumbnailEntry(whole.left(whole.size() - 20), uri, stamp, read));
  QByteArray overlong = whole;
  overlong[8] = '\x7F';  // the header chunk's length
  EXPECT_FALSE(ReadThumbnailEntry(overlong, uri, stamp, read));
}
