#include <gtest/gtest.h>

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QtEndian>
#include <tuple>

#include "catalogue/MediaPicture.h"
#include "catalogue/PcxDecoder.h"
#include "platform/MetafileDecoder.h"
#include "support/TestEnv.h"

namespace {

QString Fixture(const QString& name) { return testenv::DataFolder() + "/pictures/" + name; }

QByteArray Bytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const QRgb kRed = qRgb(255, 0, 0), kGreen = qRgb(0, 255, 0), kBlue = qRgb(0, 0, 255),
           kWhite = qRgb(255, 255, 255), kBlack = qRgb(0, 0, 0);

// Exact, or within tolerance on each channel (lossy JPEG).
void ExpectColour(const QImage& image, int x, int y, QRgb expected, const QString& name,
                  int tolerance = 0) {
  const QRgb c = image.pixel(x, y);
  const auto near = [tolerance](int a, int b) { return qAbs(a - b) <= tolerance; };
  EXPECT_TRUE(near(qRed(c), qRed(expected)) && near(qGreen(c), qGreen(expected)) &&
              near(qBlue(c), qBlue(expected)))
      << name.toStdString() << " at " << x << "," << y << " is " << qRed(c) << "," << qGreen(c) << ","
      << qBlue(c);
}

bool IsTwoTone(const QString& name) {
  return name.startsWith("mono") || name.endsWith("xbm") || name.endsWith("jfx") || name.endsWith("xif");
}

// The colour fixtures have red, green, blue and white quarters; the
// two-tone ones a black left half and a white right half.
void ExpectDrawn(const QImage& image, const QString& name) {
  if (IsTwoTone(name)) {
    for (const auto& [x, y, colour] :
         {std::tuple{3, 3, kBlack}, {15, 20, kBlack}, {16, 3, kWhite}, {30, 20, kWhite}})
      ExpectColour(image, x, y, colour, name);
    return;
  }
  const int w = image.width(), h = image.height(), tolerance = name.contains(".jp") ? 40 : 0;
  for (const auto& [x, y, colour] : {std::tuple{w / 8, h / 6, kRed}, {w - 1 - w / 8, h / 6, kGreen},
                                     {w / 8, h - 1 - h / 6, kBlue}, {w - 1 - w / 8, h - 1 - h / 6, kWhite}})
    ExpectColour(image, x, y, colour, name, tolerance);
}

class MediaPictureTest : public testing::Test {
 protected:
  void SetUp() override { platform::SetDecoderFolder(testenv::BuildProgramFolder()); }
  void TearDown() override {
    platform::SetDecoderFolder(QString());
    platform::SetDecoderMemoryLimit(qint64(1) << 30);
  }
};

TEST_F(MediaPictureTest, EveryPictureKindDecodesWholeAndReduced) {
  const struct {
    const char* Names;
    QSize Whole, Reduced;
  } kinds[] = {
      {"picture.bmp picture.dib picture.rle picture.gif picture.jpeg picture.jpe picture.jpg noend.jpg "
       "picture.wmf picture.emf picture.png picture.mng picture.tif picture.tiff picture.pcx palette8.pcx "
       "planes.pcx twobit.pcx mono.pcx picture.xbm picture.jfx picture.xif",
       {32, 24}, {16, 12}},
      // The icon holds a 16x16 and a 48x48 entry: the larger is shown.
      {"picture.ico", {48, 48}, {16, 16}},
      {"picture.cur", {32, 32}, {16, 16}},
  };
  for (const auto& kind : kinds) {
    for (const QString& name : QString(kind.Names).split(' ')) {
      QImage whole, reduced;
      ASSERT_TRUE(LoadMediaPicture(Fixture(name), whole)) << name.toStdString();
      EXPECT_EQ(whole.size(), kind.Whole) << name.toStdString();
      ExpectDrawn(whole, name);
      ASSERT_TRUE(LoadMediaPicture(Fixture(name), reduced, QSize(16, 16))) << name.toStdString();
      EXPECT_EQ(reduced.size(), kind.Reduced) << name.toStdString();
      ExpectColour(reduced, 2, 2, IsTwoTone(name) ? kBlack : kRed, name, 40);
    }
  }
}

TEST_F(MediaPictureTest, MetafileTextIsDrawnWithItsFonts) {
  QImage picture;
  ASSERT_TRUE(LoadMediaPicture(Fixture("text.wmf"), picture));
  ASSERT_EQ(picture.size(), QSize(200, 60));
  EXPECT_EQ(picture.pixel(195, 55), kWhite);
  int dark = 0;
  for (int y = 0; y < 60; ++y)
    for (int x = 0; x < 200; ++x) dark += qGray(picture.pixel(x, y)) < 64;
  // "Hello" in bold at 40 pixels covers roughly a fifth of the page.
  EXPECT_GT(dark, 1200);
  EXPECT_LT(dark, 4000);
}

TEST_F(MediaPictureTest, ExifOrientationTurnsThePhotograph) {
  QImage picture;
  ASSERT_TRUE(LoadMediaPicture(Fixture("turned.jpg"), picture));
  ASSERT_EQ(picture.size(), QSize(24, 32));
  // A quarter turn clockwise: red to the top right, blue to the top left.
  ExpectColour(picture, 20, 3, kRed, "turned", 40);
  ExpectColour(picture, 3, 3, kBlue, "turned", 40);
  ExpectColour(picture, 20, 28, kGreen, "turned", 40);
  // Reduced into a box, the turned shape is what must fit.
  ASSERT_TRUE(LoadMediaPicture(Fixture("turned.jpg"), picture, QSize(12, 12)));
  EXPECT_EQ(picture.size(), QSize(9, 12));
}

TEST_F(MediaPictureTest, TwoColourPictureReducesInItsColours) {
  // A one-bit palette picture, reduced, keeps its colours (not a dither).
  QImage mono(300, 200, QImage::Format_Mono);
  mono.setColorTable({qRgb(255, 0, 0), qRgb(0, 0, 255)});
  mono.fill(0);
  const QString path = testenv::Root() + "/two colours.png";
  ASSERT_TRUE(mono.save(path));
  QImage picture;
  ASSERT_TRUE(LoadMediaPicture(path, picture, QSize(96, 96)));
  EXPECT_EQ(picture.size(), QSize(96, 64));
  ExpectColour(picture, 90, 60, kRed, "reduced", 10);
  EXPECT_EQ(MediaPictureSize(path), QSize(300, 200));
}

TEST_F(MediaPictureTest, FullSizeDecodingTakesLargePhotographs) {
  // 6000x5600 decodes into 134 MB, above the readers' usual ceiling.
  QImage big(6000, 5600, QImage::Format_RGB888);
  big.fill(kGreen);
  const QString path = testenv::Root() + "/large.jpg";
  ASSERT_TRUE(big.save(path, "JPEG", 10));
  big = QImage();
  QImage picture;
  ASSERT_TRUE(LoadMediaPicture(path, picture));
  EXPECT_EQ(picture.size(), QSize(6000, 5600));
  ExpectColour(picture, 5999, 5599, kGreen, "large", 40);
}

TEST_F(MediaPictureTest, ContentDecidesBeforeTheExtension) {
  for (const auto& [fixture, name] : {std::pair{"picture.png", "really-png.bmp"},
                                      {"picture.pcx", "really-pcx.tif"}, {"picture.gif", "really-gif.dat"}}) {
    const QString path = testenv::MakeFile(testenv::Root() + "/renamed/" + name, Bytes(Fixture(fixture)));
    QImage picture;
    ASSERT_TRUE(LoadMediaPicture(path, picture)) << name;
    EXPECT_EQ(picture.size(), QSize(32, 24)) << name;
    EXPECT_EQ(picture.pixel(4, 4), kRed) << name;
  }
}

TEST_F(MediaPictureTest, DamagedFilesGiveTheInvalidImage) {
  const QImage& marker = InvalidImagePicture();
  ASSERT_EQ(marker.size(), QSize(32, 32));  // the browser's own marker, not the drawn stand-in
  EXPECT_EQ(qRed(marker.pixel(16, 16)), 220);

  const QString dir = testenv::Root() + "/damaged/";
  QDir().mkpath(dir + "folder.png");
  const auto cut = [&](const char* fixture, int length, const char* name) {
    return testenv::MakeFile(dir + name, Bytes(Fixture(fixture)).left(length));
  };
  const std::pair<QString, DecodeOutcome> damaged[] = {
      {Fixture("truncated.png"), DecodeOutcome::NotAPicture},
      {Fixture("broken.wmf"), DecodeOutcome::NotAPicture},
      {Fixture("broken.emf"), DecodeOutcome::NotAPicture},
      {testenv::MakeFile(dir + "noise.gif", QByteArray(300, '\x5A')), DecodeOutcome::NotAPicture},
      {testenv::MakeFile(dir + "empty.bmp", QByteArray()), DecodeOutcome::NotAPicture},
      {testenv::MakeFile(dir + "words.ico", "not an icon at all"), DecodeOutcome::NotAPicture},
      {cut("picture.pcx", 200, "cut.pcx"), DecodeOutcome::NotAPicture},
      {cut("picture.tiff", 300, "cut.tiff"), DecodeOutcome::NotAPicture},
      {cut("picture.jfx", 150, "cut.jfx"), DecodeOutcome::NotAPicture},
      // Nothing a decoder could judge.
      {dir + "missing.jpg", DecodeOutcome::Unreadable},
      {dir + "folder.png", DecodeOutcome::Unreadable},
  };
  for (const auto& [path, outcome] : damaged) {
    QImage picture(5, 5, QImage::Format_RGB32);
    EXPECT_EQ(int(DecodeMediaPicture(path, picture, QSize(64, 64))), int(outcome)) << path.toStdString();
    EXPECT_EQ(picture, marker) << path.toStdString();
  }
  // A file this process may not read (a test run by root reads anything).
  if (::geteuid() != 0) {
    const QString locked = testenv::MakeFile(dir + "locked.png", Bytes(Fixture("picture.png")));
    QFile::setPermissions(locked, QFileDevice::WriteOwner);
    QImage picture;
    EXPECT_EQ(int(DecodeMediaPicture(locked, picture)), int(DecodeOutcome::Unreadable));
  }
}

TEST_F(MediaPictureTest, HelperThatRunsOutOfMemoryIsNotTheFilesFault) {
  // A metafile whose frame claims 8000 x 6000 pixels: drawn whole it needs
  // far more than 200 MB, reduced to a thumbnail it needs little.
  QByteArray bytes = Bytes(Fixture("picture.emf"));
  qToLittleEndian<qint32>(211667, bytes.data() + 32);
  qToLittleEndian<qint32>(158750, bytes.data() + 36);
  const QString huge = testenv::MakeFile(testenv::Root() + "/huge.emf", bytes);
  platform::SetDecoderMemoryLimit(200 << 20);
  QImage picture;
  EXPECT_EQ(int(DecodeMediaPicture(huge, picture)), int(DecodeOutcome::OutOfMemory));
  EXPECT_EQ(picture, InvalidImagePicture());
  EXPECT_EQ(int(DecodeMediaPicture(huge, picture, QSize(64, 64))), int(DecodeOutcome::Decoded));
  EXPECT_EQ(picture.size(), QSize(64, 48));
}

// PC Paintbrush pictures built in memory: header, then coded lines.
QByteArray PcxBytes(int bits, int planes, int width, int height, int bytesPerLine, const QByteArray& data) {
  QByteArray head(128, 0);
  head[0] = 0x0A;
  head[1] = 5;
  head[2] = 1;
  head[3] = char(bits);
  qToLittleEndian<quint16>(quint16(width - 1), head.data() + 8);
  qToLittleEndian<quint16>(quint16(height - 1), head.data() + 10);
  head[65] = char(planes);
  qToLittleEndian<quint16>(quint16(bytesPerLine), head.data() + 66);
  return head + data;
}

TEST(PcxDecoderTest, PlanesRunsPalettesAndDamage) {
  // Two pixels a line, two lines: one run of four 0xC8 bytes covers the
  // red plane of line one and spills into the green plane; a byte of 0xC0
  // or more is coded as a run of one.
  const QByteArray data("\xC4\xC8" "\x10\x20" "\xC1\xC5\x00" "\x01\x02\x03\x04\x05\x06", 13);
  QImage image = DecodePcx(PcxBytes(8, 3, 2, 2, 2, data));
  ASSERT_EQ(image.size(), QSize(2, 2));
  EXPECT_EQ(image.pixel(0, 0), qRgb(0xC8, 0xC8, 0x10));
  EXPECT_EQ(image.pixel(1, 0), qRgb(0xC8, 0xC8, 0x20));
  EXPECT_EQ(image.pixel(0, 1), qRgb(0xC5, 0x01, 0x03));
  EXPECT_EQ(image.pixel(1, 1), qRgb(0x00, 0x02, 0x04));

  // Eight bits with the 256-colour palette at the end.
  QByteArray palette(768, 0);
  palette.replace(3 * 7, 3, QByteArray("\x0A\x14\x1E", 3));
  image = DecodePcx(PcxBytes(8, 1, 2, 1, 2, QByteArray("\x07\x00", 2)) + '\x0C' + palette);
  ASSERT_EQ(image.size(), QSize(2, 1));
  EXPECT_EQ(image.pixel(0, 0), qRgb(10, 20, 30));
  EXPECT_EQ(image.pixel(1, 0), qRgb(0, 0, 0));
  // Without that palette, eight bits are grey levels.
  image = DecodePcx(PcxBytes(8, 1, 2, 1, 2, QByteArray("\x07\x80", 2)));
  EXPECT_EQ(image.pixel(1, 0), qRgb(128, 128, 128));
  // Monochrome with an empty header palette: 1 is white.
  image = DecodePcx(PcxBytes(1, 1, 8, 1, 2, QByteArray("\xA0\x00", 2)));
  ASSERT_EQ(image.size(), QSize(8, 1));
  EXPECT_EQ(image.pixel(0, 0), qRgb(255, 255, 255));
  EXPECT_EQ(image.pixel(1, 0), qRgb(0, 0, 0));

  // Data ending before the last line, a bad signature, an unsupported
  // depth and a line too short for the width all decode to nothing.
  EXPECT_TRUE(DecodePcx(PcxBytes(8, 3, 2, 2, 2, QByteArray("\x01\x02\x03", 3))).isNull());
  QByteArray wrong = PcxBytes(8, 1, 2, 1, 2, QByteArray("\x01\x02", 2));
  wrong[0] = 0x0B;
  EXPECT_TRUE(DecodePcx(wrong).isNull());
  EXPECT_TRUE(DecodePcx(PcxBytes(16, 1, 2, 1, 4, QByteArray(4, 0))).isNull());
  EXPECT_TRUE(DecodePcx(PcxBytes(8, 1, 20, 1, 2, QByteArray(2, 0))).isNull());
  EXPECT_TRUE(DecodePcx(QByteArray("\x0A\x05\x01", 3)).isNull());
}

TEST(PcxDecoderTest, HugeLinesOverFewBytesAreRefusedUnread) {
  // A header of 22017 x 2486 pixels in three planes of 52171 bytes a line,
  // over some two hundred bytes of data: the data can't fill the lines, so
  // the picture is refused without taking room for them first.
  const QByteArray bytes = Bytes(testenv::DataFolder() + "/fuzz/pcx-huge-lines.pcx");
  ASSERT_EQ(bytes.size(), 333);
  EXPECT_TRUE(LooksLikePcx(bytes));
  EXPECT_TRUE(DecodePcx(bytes).isNull());
  // Four planes of 65535 bytes a line, 65535 lines: 17 gigabytes claimed
  // by three bytes.
  EXPECT_TRUE(DecodePcx(PcxBytes(1, 4, 4096, 65535, 65535, QByteArray("\xFF\x00\x01", 3))).isNull());
}

}  // namespace
