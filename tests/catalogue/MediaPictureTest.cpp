#include <gtest/gtest.h>

#include <sys/types.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>
#include <QtEndian>
#include <tuple>

#include "catalogue/MediaPicture.h"
#include "catalogue/PcxDecoder.h"
#include "platform/MetafileDecoder.h"
#include "support/TestEnv.h"

namespace platform {
// Outcomes by name in failure messages.
void PrintTo(DecodeOutcome outcome, std::ostream* out) {
  static const char* const names[] = {"Decoded",  "NotAPicture", "Unreadable", "HelperMissing",
                                      "TimedOut", "OutOfMemory", "Cancelled"};
  *out << names[int(outcome)];
}
}  // namespace platform

namespace {

QString Fixture(const QString& name) { return testenv::DataFolder() + "/pictures/" + name; }

QByteArray Bytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// "r,g,b" of a pixel, for readable failures.
std::string ColourAt(const QImage& image, int x, int y) {
  const QRgb c = image.pixel(x, y);
  return QStringLiteral("%1,%2,%3").arg(qRed(c)).arg(qGreen(c)).arg(qBlue(c)).toStdString();
}

// Close enough for lossy JPEG.
bool Near(QRgb actual, QRgb expected) {
  return qAbs(qRed(actual) - qRed(expected)) <= 40 && qAbs(qGreen(actual) - qGreen(expected)) <= 40 &&
         qAbs(qBlue(actual) - qBlue(expected)) <= 40;
}

const QRgb kRed = qRgb(255, 0, 0), kGreen = qRgb(0, 255, 0), kBlue = qRgb(0, 0, 255),
           kWhite = qRgb(255, 255, 255), kBlack = qRgb(0, 0, 0);

void ExpectQuadrants(const QImage& image, const QString& name) {
  const int w = image.width(), h = image.height();
  const struct {
    int x, y;
    QRgb colour;
  } probes[] = {{w / 8, h / 6, kRed}, {w - 1 - w / 8, h / 6, kGreen},
                {w / 8, h - 1 - h / 6, kBlue}, {w - 1 - w / 8, h - 1 - h / 6, kWhite}};
  for (const auto& p : probes)
    EXPECT_TRUE(Near(image.pixel(p.x, p.y), p.colour))
        << name.toStdString() << " at " << p.x << "," << p.y << " is " << ColourAt(image, p.x, p.y);
}

// Processes of the group that still run (a killed child not yet reaped by
// its adopter counts as gone).
int LivingProcessesOfGroup(pid_t group) {
  int living = 0;
  for (const QString& entry : QDir("/proc").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile stat("/proc/" + entry + "/stat");
    if (!stat.open(QIODevice::ReadOnly)) continue;
    // "pid (name) state ppid pgrp ...": the name may hold blanks.
    const QByteArray text = stat.readAll();
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    if (fields.size() > 2 && fields[2].toInt() == group && fields[0] != "Z") ++living;
  }
  return living;
}

void ExpectHalves(const QImage& image, const QString& name) {
  EXPECT_EQ(image.pixel(3, 3), kBlack) << name.toStdString();
  EXPECT_EQ(image.pixel(15, 20), kBlack) << name.toStdString();
  EXPECT_EQ(image.pixel(16, 3), kWhite) << name.toStdString();
  EXPECT_EQ(image.pixel(30, 20), kWhite) << name.toStdString();
}

class MediaPictureTest : public testing::Test {
 protected:
  void SetUp() override {
    platform::SetDecoderFolder(testenv::BuildProgramFolder());
    platform::SetDecoderTimeLimit(5000);
  }
  void TearDown() override {
    platform::SetDecoderFolder(QString());
    platform::SetDecoderTimeLimit(5000);
    platform::SetDecoderMemoryLimit(qint64(1) << 30);
  }
  // Puts a stand-in helper, a shell script of the given body, where the
  // decoder looks for the real one.
  void UseFakeHelper(const QByteArray& body) {
    const QString folder = testenv::Root() + "/fakehelper";
    const QString path = testenv::MakeFile(folder + "/vistrel-decode", "#!/bin/sh\n" + body + "\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    platform::SetDecoderFolder(folder);
  }
};

TEST_F(MediaPictureTest, EveryPictureExtensionDecodes) {
  const QStringList colourKinds = {"bmp", "dib", "rle", "gif", "jpeg", "jpe", "jpg", "wmf",
                                   "emf", "png", "mng", "tif", "tiff", "pcx"};
  for (const QString& ext : colourKinds) {
    QImage picture;
    ASSERT_TRUE(LoadMediaPicture(Fixture("picture." + ext), picture)) << ext.toStdString();
    EXPECT_EQ(picture.size(), QSize(32, 24)) << ext.toStdString();
    ExpectQuadrants(picture, ext);
  }
  for (const char* ext : {"xbm", "jfx", "xif"}) {
    QImage picture;
    ASSERT_TRUE(LoadMediaPicture(Fixture("picture." + QString(ext)), picture)) << ext;
    EXPECT_EQ(picture.size(), QSize(32, 24)) << ext;
    ExpectHalves(picture, ext);
  }
  // The icon holds a 16x16 and a 48x48 entry: the larger is shown.
  QImage icon;
  ASSERT_TRUE(LoadMediaPicture(Fixture("picture.ico"), icon));
  EXPECT_EQ(icon.size(), QSize(48, 48));
  ExpectQuadrants(icon, "ico");
  QImage cursor;
  ASSERT_TRUE(LoadMediaPicture(Fixture("picture.cur"), cursor));
  EXPECT_EQ(cursor.size(), QSize(32, 32));
  ExpectQuadrants(cursor, "cur");
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

TEST_F(MediaPictureTest, PaintbrushVariantsDecode) {
  for (const char* name : {"palette8.pcx", "planes.pcx", "twobit.pcx"}) {
    QImage picture;
    ASSERT_TRUE(LoadMediaPicture(Fixture(name), picture)) << name;
    EXPECT_EQ(picture.size(), QSize(32, 24)) << name;
    EXPECT_EQ(picture.pixel(4, 4), kRed) << name;
    EXPECT_EQ(picture.pixel(28, 4), kGreen) << name;
    EXPECT_EQ(picture.pixel(4, 20), kBlue) << name;
    EXPECT_EQ(picture.pixel(28, 20), kWhite) << name;
  }
  QImage mono;
  ASSERT_TRUE(LoadMediaPicture(Fixture("mono.pcx"), mono));
  ExpectHalves(mono, "mono.pcx");
}

TEST_F(MediaPictureTest, ExifOrientationTurnsThePhotograph) {
  QImage picture;
  ASSERT_TRUE(LoadMediaPicture(Fixture("turned.jpg"), picture));
  ASSERT_EQ(picture.size(), QSize(24, 32));
  // A quarter turn clockwise: the red corner moves to the top right, the
  // blue one to the top left.
  EXPECT_TRUE(Near(picture.pixel(20, 3), kRed)) << ColourAt(picture, 20, 3);
  EXPECT_TRUE(Near(picture.pixel(3, 3), kBlue)) << ColourAt(picture, 3, 3);
  EXPECT_TRUE(Near(picture.pixel(20, 28), kGreen)) << ColourAt(picture, 20, 28);
  // Reduced into a box, the turned shape is what must fit.
  QImage small;
  ASSERT_TRUE(LoadMediaPicture(Fixture("turned.jpg"), small, QSize(12, 12)));
  EXPECT_EQ(small.size(), QSize(9, 12));
}

TEST_F(MediaPictureTest, ReducedDecodingKeepsAspectAndNeverEnlarges) {
  QImage big(400, 300, QImage::Format_RGB32);
  big.fill(kBlue);
  const QString dir = testenv::Root() + "/big/";
  for (const char* ext : {"jpg", "png", "bmp", "tif"}) {
    const QString path = dir + "photo." + ext;
    QFile::remove(path);
    ASSERT_TRUE(QDir().mkpath(dir));
    ASSERT_TRUE(big.save(path, ext == QByteArray("tif") ? "TIFF" : ext))
        << ext;
    QImage picture;
    ASSERT_TRUE(LoadMediaPicture(path, picture, QSize(100, 100))) << ext;
    EXPECT_EQ(picture.size(), QSize(100, 75)) << ext;
    EXPECT_TRUE(Near(picture.pixel(50, 37), kBlue)) << ext;
  }
  QImage small;
  ASSERT_TRUE(LoadMediaPicture(Fixture("picture.png"), small, QSize(100, 100)));
  EXPECT_EQ(small.size(), QSize(32, 24));
  // Animated network graphics tell no size before decoding: they are
  // reduced afterwards, like the kinds decoded by our own code.
  for (const char* name : {"picture.mng", "picture.gif", "picture.pcx", "picture.ico",
                           "picture.wmf", "picture.emf"}) {
    QImage reduced;
    ASSERT_TRUE(LoadMediaPicture(Fixture(name), reduced, QSize(16, 16))) << name;
    EXPECT_EQ(reduced.size(), QString(name).endsWith("ico") ? QSize(16, 16) : QSize(16, 12)) << name;
    EXPECT_TRUE(Near(reduced.pixel(2, 2), kRed)) << name << " " << ColourAt(reduced, 2, 2);
  }
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
  EXPECT_TRUE(Near(picture.pixel(5999, 5599), kGreen));
}

TEST_F(MediaPictureTest, ContentDecidesBeforeTheExtension) {
  const QString dir = testenv::Root() + "/renamed/";
  QDir().mkpath(dir);
  ASSERT_TRUE(QFile::copy(Fixture("picture.png"), dir + "really-png.bmp"));
  ASSERT_TRUE(QFile::copy(Fixture("picture.pcx"), dir + "really-pcx.tif"));
  ASSERT_TRUE(QFile::copy(Fixture("picture.gif"), dir + "really-gif.dat"));
  for (const char* name : {"really-png.bmp", "really-pcx.tif", "really-gif.dat"}) {
    QImage picture;
    ASSERT_TRUE(LoadMediaPicture(dir + name, picture)) << name;
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
  const std::pair<QString, DecodeOutcome> damaged[] = {
      {Fixture("truncated.png"), DecodeOutcome::NotAPicture},
      {Fixture("broken.wmf"), DecodeOutcome::NotAPicture},
      {Fixture("broken.emf"), DecodeOutcome::NotAPicture},
      {testenv::MakeFile(dir + "noise.gif", QByteArray(300, '\x5A')), DecodeOutcome::NotAPicture},
      {testenv::MakeFile(dir + "empty.bmp", QByteArray()), DecodeOutcome::NotAPicture},
      {testenv::MakeFile(dir + "cut.pcx", Bytes(Fixture("picture.pcx")).left(200)),
       DecodeOutcome::NotAPicture},
      {testenv::MakeFile(dir + "words.ico", "not an icon at all"), DecodeOutcome::NotAPicture},
      {testenv::MakeFile(dir + "cut.tiff", Bytes(Fixture("picture.tiff")).left(300)),
       DecodeOutcome::NotAPicture},
      {testenv::MakeFile(dir + "cut.jfx", Bytes(Fixture("picture.jfx")).left(150)),
       DecodeOutcome::NotAPicture},
      {testenv::MakeFile(dir + "text.wmf", "not a metafile"), DecodeOutcome::NotAPicture},
      // Nothing a decoder could judge.
      {dir + "missing.jpg", DecodeOutcome::Unreadable},
      {dir + "missing.emf", DecodeOutcome::Unreadable},
      {dir + "folder.png", DecodeOutcome::Unreadable},
  };
  for (const auto& [path, outcome] : damaged) {
    QImage picture(5, 5, QImage::Format_RGB32);
    EXPECT_EQ(DecodeMediaPicture(path, picture, QSize(64, 64)), outcome) << path.toStdString();
    EXPECT_EQ(picture, marker) << path.toStdString();
    picture = QImage(5, 5, QImage::Format_RGB32);
    EXPECT_FALSE(LoadMediaPicture(path, picture)) << path.toStdString();
    EXPECT_EQ(picture, marker) << path.toStdString();
  }
  // A file this process may not read (a test run by root reads anything).
  if (::geteuid() != 0) {
    const QString locked = testenv::MakeFile(dir + "locked.png", Bytes(Fixture("picture.png")));
    QFile::setPermissions(locked, QFileDevice::WriteOwner);
    QImage picture;
    EXPECT_EQ(DecodeMediaPicture(locked, picture), DecodeOutcome::Unreadable);
  }
}

TEST_F(MediaPictureTest, JpegWithoutEndMarkerStillDecodesByItsName) {
  // Photographs go straight to the decoder, which shows what is there.
  QImage picture;
  EXPECT_TRUE(LoadMediaPicture(Fixture("noend.jpg"), picture));
  EXPECT_EQ(picture.size(), QSize(32, 24));
}

TEST_F(MediaPictureTest, HelperFailuresTellWhetherTheFileIsToBlame) {
  const QImage& marker = InvalidImagePicture();
  platform::SetDecoderTimeLimit(300);
  const std::tuple<const char*, QByteArray, DecodeOutcome> helpers[] = {
      {"hangs", "exec sleep 30", DecodeOutcome::TimedOut},
      {"crashes", "kill -SEGV $$", DecodeOutcome::NotAPicture},
      {"fails", "exit 1", DecodeOutcome::NotAPicture},
      {"writes garbage", "echo not a picture; exit 0", DecodeOutcome::NotAPicture},
      {"cannot read the file", "exit 2", DecodeOutcome::Unreadable},
      {"runs out of memory", "exit 3", DecodeOutcome::OutOfMemory},
      {"is killed by the system", "kill -KILL $$", DecodeOutcome::OutOfMemory},
  };
  for (const auto& [what, body, outcome] : helpers) {
    UseFakeHelper(body);
    QImage picture;
    EXPECT_EQ(DecodeMediaPicture(Fixture("picture.emf"), picture), outcome) << what;
    EXPECT_EQ(picture, marker) << what;
  }
  // A helper that cannot be started, and none at all.
  UseFakeHelper("");
  testenv::MakeFile(testenv::Root() + "/fakehelper/vistrel-decode", "no program");
  QImage picture;
  EXPECT_EQ(DecodeMediaPicture(Fixture("picture.wmf"), picture), DecodeOutcome::HelperMissing);
  platform::SetDecoderFolder(testenv::Root() + "/nowhere");
  EXPECT_EQ(platform::DecoderProgramPath(), "");
  EXPECT_EQ(DecodeMediaPicture(Fixture("picture.wmf"), picture), DecodeOutcome::HelperMissing);
  EXPECT_EQ(picture, marker);
}

TEST_F(MediaPictureTest, HelperReceivesTheBoxTheFileAndAMemoryCeiling) {
  const QString record = testenv::Root() + "/arguments.txt";
  UseFakeHelper("{ printf '%s\\n' \"$@\"; ulimit -v; } > '" + record.toUtf8() + "'; exit 1");
  QImage picture;
  EXPECT_FALSE(LoadMediaPicture(Fixture("picture.wmf"), picture, QSize(80, 60)));
  QFile file(record);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  // The ceiling is 1 GiB of address space, in KiB.
  EXPECT_EQ(QString::fromUtf8(file.readAll()).toStdString(),
            ("--fit\n80x60\n--\n" + Fixture("picture.wmf") + "\n1048576\n").toStdString());
}

TEST_F(MediaPictureTest, HelperThatRunsOutOfMemoryIsNotTheFilesFault) {
  // A metafile whose frame claims 8000 x 6000 pixels: drawn whole it needs
  // far more than 200 MB, reduced to a thumbnail it needs little.
  QByteArray bytes = Bytes(Fixture("picture.emf"));
  ASSERT_GE(bytes.size(), 40);
  qToLittleEndian<qint32>(211667, bytes.data() + 32);
  qToLittleEndian<qint32>(158750, bytes.data() + 36);
  const QString huge = testenv::MakeFile(testenv::Root() + "/huge.emf", bytes);
  platform::SetDecoderMemoryLimit(200 << 20);
  QImage picture;
  EXPECT_EQ(DecodeMediaPicture(huge, picture), DecodeOutcome::OutOfMemory);
  EXPECT_EQ(picture, InvalidImagePicture());
  EXPECT_EQ(DecodeMediaPicture(huge, picture, QSize(64, 64)), DecodeOutcome::Decoded);
  EXPECT_EQ(picture.size(), QSize(64, 48));
}

TEST_F(MediaPictureTest, PictureNoLongerWantedKillsTheHelperAndAllItStarted) {
  // The stand-in notes its process group, then waits on a child of its own.
  const QString marker = testenv::Root() + "/helper.pid";
  UseFakeHelper("echo $$ > '" + marker.toUtf8() + ".part'; mv '" + marker.toUtf8() + ".part' '" +
                marker.toUtf8() + "'; sleep 30");
  platform::SetDecoderTimeLimit(60000);
  const auto stillWanted = [&] { return !QFile::exists(marker); };
  QImage picture;
  EXPECT_EQ(DecodeMediaPicture(Fixture("picture.emf"), picture, QSize(), stillWanted),
            DecodeOutcome::Cancelled);
  EXPECT_EQ(picture, InvalidImagePicture());
  const pid_t group = pid_t(Bytes(marker).trimmed().toInt());
  ASSERT_GT(group, 1);
  // The kill has reached its child too (it dies a moment after the signal).
  EXPECT_TRUE(QTest::qWaitFor([group] { return LivingProcessesOfGroup(group) == 0; }));
}

// PC Paintbrush pictures built in memory: header, then coded lines.
QByteArray PcxBytes(int bits, int planes, int width, int height, int bytesPerLine,
                    const QByteArray& data, const QByteArray& palette16 = QByteArray()) {
  QByteArray head(128, 0);
  head[0] = 0x0A;
  head[1] = 5;
  head[2] = 1;
  head[3] = char(bits);
  qToLittleEndian<quint16>(quint16(width - 1), head.data() + 8);
  qToLittleEndian<quint16>(quint16(height - 1), head.data() + 10);
  head.replace(16, palette16.size(), palette16);
  head[65] = char(planes);
  qToLittleEndian<quint16>(quint16(bytesPerLine), head.data() + 66);
  return head + data;
}

TEST(PcxDecoderTest, TrueColourPlanesAndRunsAcrossLines) {
  // Two pixels a line, two lines: one run of four 0xC8 bytes covers the
  // red plane of line one and spills into the green plane; a byte of 0xC0
  // or more is coded as a run of one.
  const QByteArray data("\xC4\xC8" "\x10\x20" "\xC1\xC5\x00" "\x01\x02\x03\x04\x05\x06", 13);
  const QImage image = DecodePcx(PcxBytes(8, 3, 2, 2, 2, data));
  ASSERT_EQ(image.size(), QSize(2, 2));
  EXPECT_EQ(image.pixel(0, 0), qRgb(0xC8, 0xC8, 0x10));
  EXPECT_EQ(image.pixel(1, 0), qRgb(0xC8, 0xC8, 0x20));
  EXPECT_EQ(image.pixel(0, 1), qRgb(0xC5, 0x01, 0x03));
  EXPECT_EQ(image.pixel(1, 1), qRgb(0x00, 0x02, 0x04));
}

TEST(PcxDecoderTest, PalettesAndDamage) {
  // Eight bits with the 256-colour palette at the end.
  QByteArray palette(768, 0);
  palette[3 * 7] = char(10);
  palette[3 * 7 + 1] = char(20);
  palette[3 * 7 + 2] = char(30);
  const QByteArray eight =
      PcxBytes(8, 1, 2, 1, 2, QByteArray("\x07\x00", 2)) + QByteArray("\x0C", 1) + palette;
  QImage image = DecodePcx(eight);
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
  EXPECT_EQ(image.pixel(2, 0), qRgb(255, 255, 255));

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

}  // namespace
