#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

#include "browser/ThumbnailCache.h"
#include "support/TestEnv.h"

namespace {

const QFileDevice::Permissions OwnerOnlyFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
const QFileDevice::Permissions OwnerOnlyFolder = OwnerOnlyFile | QFileDevice::ExeOwner;

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

void MoveMTime(const QString& path, int seconds) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_TRUE(file.setFileTime(file.fileTime(QFileDevice::FileModificationTime).addSecs(seconds),
                               QFileDevice::FileModificationTime));
}

// Gives the picture new content of another length, under the time it had.
void ChangeLengthOnly(const QString& path, int length) {
  const QDateTime modified = QFileInfo(path).fileTime(QFileDevice::FileModificationTime);
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(length, 'q'));
  ASSERT_TRUE(file.setFileTime(modified, QFileDevice::FileModificationTime));
}

}  // namespace

TEST(ThumbnailCacheTest, UriNameAndFolderAreThoseTheDesktopUses) {
  // Blanks, quotes, ";" and letters beyond ASCII are escaped as UTF-8
  // bytes; the apostrophe and the other characters allowed in a path stay.
  const QString first =
      QString::fromUtf8("/tmp/My Pictures/Ann's \"best\"; day/Grüße #1 [a]{b}!$&()*+,=:@~%^`|<>?.jpg");
  EXPECT_EQ(ThumbnailUri(first),
            "file:///tmp/My%20Pictures/Ann's%20%22best%22%3B%20day/"
            "Gr%C3%BC%C3%9Fe%20%231%20%5Ba%5D%7Bb%7D!$&()*+,=:@~%25%5E%60%7C%3C%3E%3F.jpg");
  EXPECT_EQ(ThumbnailFileName(ThumbnailUri(first)), "b3ad794a3b08e27b4afeca26251a89d1.png");
  const QString second = QString::fromUtf8("/home/ann/Bilder/Grüße; \"Sommer\" 2009/Ann's Foto.jpg");
  EXPECT_EQ(ThumbnailUri(second),
            "file:///home/ann/Bilder/Gr%C3%BC%C3%9Fe%3B%20%22Sommer%22%202009/Ann's%20Foto.jpg");
  EXPECT_EQ(ThumbnailFileName(ThumbnailUri(second)), "7646e442283db1263ebb82731d3230e7.png");
  // The path is made absolute and clean first.
  EXPECT_EQ(ThumbnailUri("/tmp/a/./b/../c d.png"), "file:///tmp/a/c%20d.png");
  EXPECT_EQ(ThumbnailUri("x.png"), ThumbnailUri(QDir::currentPath() + "/x.png"));

  EXPECT_EQ(ThumbnailCacheSize(92), 128);
  EXPECT_EQ(ThumbnailCacheSize(128), 128);
  EXPECT_EQ(ThumbnailCacheSize(129), 256);
  const QString root = testenv::Root() + "/cache/thumbnails";
  const QString name = ThumbnailFileName("file:///p/a.jpg");
  EXPECT_EQ(ThumbnailPath("/p/a.jpg", 128), root + "/normal/" + name);
  EXPECT_EQ(ThumbnailPath("/p/a.jpg", 129), root + "/large/" + name);
  EXPECT_EQ(FailureRecordPath("/p/a.jpg"), root + "/fail/vistrel/" + name);
  // A relative XDG_CACHE_HOME is ignored.
  qputenv("XDG_CACHE_HOME", "relative/cache");
  EXPECT_EQ(ThumbnailFolder(), testenv::Root() + "/home/.cache/thumbnails");
}

TEST(ThumbnailCacheTest, StoredThumbnailReadsBackUntilThePictureChanges) {
  const QString picture = MakePicture(QString::fromUtf8("Grüße; \"Sommer\".jpg"), 1234);
  StoreThumbnail(picture, 92, Filled(300, 150, qRgb(10, 200, 30)), QSize(6000, 3000),
                 ReadPictureStamp(picture));

  const QString stored = ThumbnailPath(picture, 92);
  EXPECT_EQ(PermissionsOf(stored), OwnerOnlyFile);
  EXPECT_EQ(PermissionsOf(ThumbnailFolder()), OwnerOnlyFolder);
  EXPECT_EQ(PermissionsOf(ThumbnailFolder() + "/normal"), OwnerOnlyFolder);
  // The temporary file was renamed, not left beside it.
  EXPECT_EQ(QDir(ThumbnailFolder() + "/normal").entryList(QDir::Files),
            QStringList{QFileInfo(stored).fileName()});
  // The stamp every program sharing the cache reads.
  const QImage file(stored, "png");
  EXPECT_EQ(file.text("Thumb::URI"), ThumbnailUri(picture));
  EXPECT_EQ(
      file.text("Thumb::MTime"),
      QString::number(QFileInfo(picture).fileTime(QFileDevice::FileModificationTime).toSecsSinceEpoch()));
  EXPECT_EQ(file.text("Thumb::Size"), "1234");

  // Reduced to the normal size on the way in, the original size kept.
  QImage image;
  QSize original;
  ASSERT_TRUE(ReadCachedThumbnail(picture, 92, image, original));
  EXPECT_EQ(image.size(), QSize(128, 64));
  EXPECT_EQ(image.pixel(60, 30), qRgb(10, 200, 30));
  EXPECT_EQ(original, QSize(6000, 3000));
  EXPECT_FALSE(ReadCachedThumbnail(picture, 200, image, original));

  // A changed picture makes the entry stale; storing it again makes it fresh.
  MoveMTime(picture, 5);
  EXPECT_FALSE(ReadCachedThumbnail(picture, 92, image, original));
  StoreThumbnail(picture, 92, Filled(300, 150, 0), QSize(6000, 3000), ReadPictureStamp(picture));
  EXPECT_TRUE(ReadCachedThumbnail(picture, 92, image, original));
  QFile::remove(picture);
  EXPECT_FALSE(ReadCachedThumbnail(picture, 92, image, original));

  // A small picture is stored as it is; without an original size the
  // thumbnail's own size stands for it.
  const QString small = MakePicture("small.png");
  StoreThumbnail(small, 200, Filled(40, 30, qRgb(1, 2, 3)), QSize(), ReadPictureStamp(small));
  ASSERT_TRUE(ReadCachedThumbnail(small, 200, image, original));
  EXPECT_EQ(image.size(), QSize(40, 30));
  EXPECT_EQ(original, QSize(40, 30));
}

TEST(ThumbnailCacheTest, CorruptOrForeignEntryIsAMiss) {
  const QString picture = MakePicture("beach.jpg");
  const QString other = MakePicture("other.jpg");
  const QString entry = ThumbnailPath(picture, 92);
  QImage image;
  QSize original;

  testenv::MakeFile(entry, "this is no PNG file");
  EXPECT_FALSE(ReadCachedThumbnail(picture, 92, image, original));

  StoreThumbnail(picture, 92, Filled(120, 90, qRgb(200, 0, 0)), QSize(1200, 900), ReadPictureStamp(picture));
  QFile file(entry);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray whole = file.readAll();
  file.close();
  testenv::MakeFile(entry, whole.left(whole.size() / 2));
  EXPECT_FALSE(ReadCachedThumbnail(picture, 92, image, original));

  // Without a stamp, and stamped for another file.
  ASSERT_TRUE(Filled(20, 20, 0).save(entry, "png"));
  EXPECT_FALSE(ReadCachedThumbnail(picture, 92, image, original));
  StoreThumbnail(other, 92, Filled(20, 20, 0), QSize(), ReadPictureStamp(other));
  QFile::remove(entry);
  ASSERT_TRUE(QFile::copy(ThumbnailPath(other, 92), entry));
  EXPECT_FALSE(ReadCachedThumbnail(picture, 92, image, original));
  EXPECT_TRUE(image.isNull());

  // Storing replaces whatever was there.
  StoreThumbnail(picture, 92, Filled(120, 90, qRgb(200, 0, 0)), QSize(1200, 900), ReadPictureStamp(picture));
  ASSERT_TRUE(ReadCachedThumbnail(picture, 92, image, original));
  EXPECT_EQ(original, QSize(1200, 900));
}

TEST(ThumbnailCacheTest, FailureIsRecordedUntilThePictureChanges) {
  const QString picture = MakePicture("broken.jpg");
  EXPECT_FALSE(IsRecordedFailure(picture));
  RecordFailure(picture, ReadPictureStamp(picture));
  EXPECT_TRUE(IsRecordedFailure(picture));
  EXPECT_EQ(PermissionsOf(FailureRecordPath(picture)), OwnerOnlyFile);
  EXPECT_EQ(PermissionsOf(ThumbnailFolder() + "/fail/vistrel"), OwnerOnlyFolder);
  QImage image;
  QSize original;
  EXPECT_FALSE(ReadCachedThumbnail(picture, 92, image, original));

  MoveMTime(picture, -60);
  EXPECT_FALSE(IsRecordedFailure(picture));

  // A corrupt record is no record; a missing picture gets none.
  testenv::MakeFile(FailureRecordPath(picture), QByteArray("\x89PNG\r\n\x1a\n broken", 16));
  EXPECT_FALSE(IsRecordedFailure(picture));
  const QString gone = testenv::Root() + "/pictures/gone.jpg";
  RecordFailure(gone, ReadPictureStamp(gone));
  EXPECT_FALSE(QFileInfo::exists(FailureRecordPath(gone)));
}

TEST(ThumbnailCacheTest, LengthCountsWhereItIsRecorded) {
  const QString picture = MakePicture("scan.jpg", 1000);
  QImage image;
  QSize original;
  StoreThumbnail(picture, 92, Filled(64, 48, qRgb(9, 9, 9)), QSize(640, 480), ReadPictureStamp(picture));
  RecordFailure(picture, ReadPictureStamp(picture));
  ASSERT_TRUE(ReadCachedThumbnail(picture, 92, image, original));
  ASSERT_TRUE(IsRecordedFailure(picture));
  ChangeLengthOnly(picture, 1500);
  EXPECT_FALSE(ReadCachedThumbnail(picture, 92, image, original));
  EXPECT_FALSE(IsRecordedFailure(picture));

  // An entry written by a program that leaves the length out goes by the
  // URI and the time; one with a length that differs is stale.
  const QString mtime =
      QString::number(QFileInfo(picture).fileTime(QFileDevice::FileModificationTime).toSecsSinceEpoch());
  QImage foreign = Filled(32, 24, qRgb(1, 2, 3));
  foreign.setText("Thumb::URI", ThumbnailUri(picture));
  foreign.setText("Thumb::MTime", mtime);
  ASSERT_TRUE(foreign.save(ThumbnailPath(picture, 92), "png"));
  ASSERT_TRUE(ReadCachedThumbnail(picture, 92, image, original));
  EXPECT_EQ(original, QSize(32, 24));
  foreign.setText("Thumb::Size", "1000");
  ASSERT_TRUE(foreign.save(ThumbnailPath(picture, 92), "png"));
  EXPECT_FALSE(ReadCachedThumbnail(picture, 92, image, original));
  foreign.setText("Thumb::Size", "1500");
  ASSERT_TRUE(foreign.save(ThumbnailPath(picture, 92), "png"));
  EXPECT_TRUE(ReadCachedThumbnail(picture, 92, image, original));
}

TEST(ThumbnailCacheTest, PictureChangedDuringItsDecodeLeavesNothing) {
  // Still being copied in: longer after the decode than before it.
  const QString growing = MakePicture("growing.jpg", 1000);
  PictureStamp before = ReadPictureStamp(growing);
  ASSERT_TRUE(before.Valid);
  EXPECT_EQ(before.Size, 1000);
  {
    QFile file(growing);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write(QByteArray(500, 'p'));
  }
  StoreThumbnail(growing, 92, Filled(64, 48, qRgb(128, 128, 128)), QSize(640, 480), before);
  RecordFailure(growing, before);
  EXPECT_FALSE(QFileInfo::exists(ThumbnailPath(growing, 92)));
  EXPECT_FALSE(QFileInfo::exists(FailureRecordPath(growing)));

  // Rewritten to the same length: the time tells.
  const QString rewritten = MakePicture("rewritten.jpg", 1000);
  before = ReadPictureStamp(rewritten);
  MoveMTime(rewritten, 3);
  StoreThumbnail(rewritten, 92, Filled(64, 48, 0), QSize(), before);
  RecordFailure(rewritten, before);
  EXPECT_FALSE(QFileInfo::exists(ThumbnailPath(rewritten, 92)));
  EXPECT_FALSE(QFileInfo::exists(FailureRecordPath(rewritten)));

  // Missing before the decode, there after it.
  const QString late = testenv::Root() + "/pictures/late.jpg";
  before = ReadPictureStamp(late);
  EXPECT_FALSE(before.Valid);
  MakePicture("late.jpg");
  StoreThumbnail(late, 92, Filled(64, 48, 0), QSize(), before);
  EXPECT_FALSE(QFileInfo::exists(ThumbnailPath(late, 92)));
  EXPECT_FALSE(QDir(ThumbnailFolder()).exists());
}
