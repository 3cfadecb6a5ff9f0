#include <gtest/gtest.h>

#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include "support/TestEnv.h"
#include "viewers/AniGif.h"
#include "viewers/GifFrames.h"

namespace {

// Runs a picture tool in the test's folder; its standard output.
QByteArray RunTool(const QString& program, const QStringList& arguments) {
  QProcess tool;
  tool.setWorkingDirectory(testenv::Root());
  tool.start(program, arguments);
  EXPECT_TRUE(tool.waitForFinished(60000)) << program.toStdString();
  EXPECT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
  return tool.readAllStandardOutput();
}

// A picture of one colour, or holes: a blue top row over transparency.
QString Still(const QString& name, const QString& size, const QString& colour) {
  if (colour == "holes")
    RunTool("convert",
            {"-size", size, "xc:none", "-fill", "blue", "-draw", "rectangle 0,0 3,0", name});
  else
    RunTool("convert", {"-size", size, "xc:" + colour, name});
  return name;
}

// Gifsicle with its arguments written as one line.
QByteArray Gifsicle(const QString& line) { return RunTool("gifsicle", line.split(' ')); }

QString Save(const QString& name, const QByteArray& bytes) {
  return testenv::MakeFile(testenv::Root() + "/" + name, bytes);
}

// Per frame: width, height, delay, disposal, left, top.
using Records = std::vector<std::array<int, 6>>;
Records Split(const QByteArray& bytes) {
  Records records;
  for (const GifFrame& f : SplitFrames(bytes).Frames)
    records.push_back({f.Picture.width(), f.Picture.height(), f.Delay, f.Disposal, f.Left, f.Top});
  return records;
}

// A 6x5 red frame wiped afterwards, a green square at 1,2 restored to the
// previous picture, a blue bar at 4,0 left in place (a frame of no delay
// and no disposal would get no control block at all).
QByteArray ThreeFrames() {
  return Gifsicle(QString("--loopcount=forever --logical-screen 6x5 -d 20 --disposal background %1 "
                           "-d 30 --disposal previous --position 1,2 %2 "
                           "-d 0 --disposal asis --position 4,0 %3")
                       .arg(Still("red65.gif", "6x5", "red"), Still("lime.gif", "2x2", "lime"),
                            Still("bar.gif", "2x1", "blue")));
}

}  // namespace

TEST(GifFrames, FramesCarryDelayDisposalAndPositionAndAreCutToTheScreen) {
  const QByteArray gif = ThreeFrames();
  const GifSplit split = SplitFrames(gif);
  EXPECT_EQ(QSize(split.PictureWidth, split.PictureHeight), QSize(6, 5));
  EXPECT_EQ(Split(gif), (Records{{6, 5, 200, 2, 0, 0}, {2, 2, 300, 3, 1, 2}, {2, 1, 1, 1, 4, 0}}));
  QByteArray narrow = gif;  // a header that claims a smaller screen
  narrow[6] = 5;
  narrow[8] = 4;
  EXPECT_EQ(Split(narrow),
            (Records{{5, 4, 200, 2, 0, 0}, {2, 2, 300, 3, 1, 2}, {1, 1, 1, 1, 4, 0}}));

  const QString red = Still("red.gif", "4x3", "red"), blue = Still("blue.gif", "4x3", "blue");
  EXPECT_EQ(Split(Gifsicle(red)), (Records{{4, 3, 10, 0, 0, 0}}));  // no control block
  // An image before the first control block is a frame of its own.
  EXPECT_EQ(Split(Gifsicle(red + " -d 50 --position 1,1 " + Still("b.gif", "2x2", "blue"))),
            (Records{{4, 3, 10, 0, 0, 0}, {2, 2, 500, 0, 1, 1}}));
  // Without a loop extension the first control block follows the colour
  // table at once, whose last byte here is not 0.
  const QByteArray noLoop = Gifsicle(QString("--no-loopcount -d 20 %1 -d 30 %2").arg(red, blue));
  ASSERT_EQ(noLoop.mid(18, 3), QByteArray("\xFF\x21\xF9"));
  EXPECT_EQ(Split(noLoop), (Records{{4, 3, 200, 0, 0, 0}, {4, 3, 300, 0, 0, 0}}));
}

TEST(GifFrames, CommentsAndDelays) {
  const QString red = Still("red.gif", "4x3", "red");
  // A comment in front of the second control block, and one written by
  // hand between the third control block and its image.
  QByteArray gif = Gifsicle(QString("-d 6553 %1 --comment made-here -d 0 --disposal asis %1 "
                                    "--disposal none -d 6554 --position 2,1 %2 "
                                    "-d 65535 --position 0,0 %1")
                                .arg(red, Still("s.gif", "2x2", "blue")));
  const qsizetype third = gif.lastIndexOf("\x21\xF9", gif.lastIndexOf("\x21\xF9") - 1);
  gif.insert(third + 8, QByteArray("\x21\xFE\x05hello\x00", 9));
  EXPECT_EQ(Split(gif), (Records{{4, 3, 65530, 0, 0, 0}, {4, 3, 1, 1, 0, 0}, {2, 2, 65535, 0, 2, 1},
                                 {4, 3, 65535, 0, 0, 0}}));
}

TEST(GifFrames, OtherBytesGiveNoFramesAndBrokenOnesNeverCrash) {
  const QByteArray png = RunTool("convert", {"-size", "4x3", "xc:red", "png:-"});
  EXPECT_EQ(SplitFrames(png).Frames.size(), 0u);
  const QByteArray gif = ThreeFrames();
  for (qsizetype n = 0; n <= gif.size(); ++n) {
    EXPECT_LE(SplitFrames(gif.left(n)).Frames.size(), 3u);
    SplitFrames(gif.left(n) + QByteArray("\x00\x21\xF9", 3));
  }
  // A colour table and a screen far beyond the bytes.
  const QByteArray claims("GIF89a\xFF\xFF\xFF\xFF\xF7\0\0\0\x21\xF9", 16);
  EXPECT_EQ(SplitFrames(claims).Frames.size(), 0u);
}

TEST(AniGif, FramesComposeOverTheBackgroundWithTransparencyAndDisposal) {
  AniGif gif;
  gif.resize(60, 50);
  gif.SetBackColor(Qt::yellow);
  const QColor red(Qt::red), lime(Qt::green), blue(Qt::blue), yellow(Qt::yellow);
  auto at = [&](int x, int y) { return gif.Composition().pixelColor(x, y); };
  ASSERT_EQ(gif.LoadFile(Save("three.gif", ThreeFrames()), true), 3);
  EXPECT_FALSE(gif.TimerStatus());
  EXPECT_EQ(at(0, 0), red);
  EXPECT_FALSE(gif.FileMoving());
  gif.NextFrame();  // frame 1 is wiped before the square comes
  EXPECT_EQ(at(0, 0), yellow);
  EXPECT_EQ(at(1, 2), lime);
  EXPECT_TRUE(gif.FileMoving());
  gif.NextFrame();  // the square stays beside the bar
  EXPECT_EQ(at(1, 2), lime);
  EXPECT_EQ(at(5, 0), blue);
  EXPECT_EQ(gif.grab().toImage().pixelColor(50, 2), blue);  // stretched to the control

  const QString red43 = Still("red.gif", "4x3", "red");
  const QByteArray holes = Gifsicle(red43 + " " + Still("h.gif", "4x3", "holes"));
  ASSERT_EQ(gif.LoadFile(Save("holes.gif", holes), true), 2);
  gif.NextFrame();
  EXPECT_EQ(at(2, 0), blue);
  EXPECT_EQ(at(1, 1), red);  // frame 1 through the hole
}

TEST(AniGif, FinishCycleFastEndsOnFrameOneAndRestartPlaysAtItsPace) {
  AniGif gif;
  QSignalSpy cycles(&gif, &AniGif::CycleDone);
  const QByteArray slow =
      Gifsicle(QString("-d 1000 %1 %2 %3")
                   .arg(Still("r.gif", "4x3", "red"), Still("b.gif", "4x3", "blue"),
                        Still("g.gif", "4x3", "lime")));
  ASSERT_EQ(gif.LoadFile(Save("slow.gif", slow)), 3);
  EXPECT_TRUE(QTest::qWaitFor([&] { return gif.CurrentFrame() == 1; }));
  gif.NextFrame();
  gif.FinishCycleFast();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !gif.TimerStatus(); }));
  EXPECT_EQ(gif.CurrentFrame(), 1);
  EXPECT_EQ(gif.Composition().pixelColor(0, 0), QColor(Qt::red));
  EXPECT_EQ(cycles.count(), 1);

  gif.RestartAnimate();
  EXPECT_TRUE(QTest::qWaitFor([&] { return gif.CurrentFrame() == 2; }));
  QTest::qWait(200);
  EXPECT_EQ(gif.CurrentFrame(), 2);  // ten seconds a frame again
  gif.StopAnimate(true, true);
  EXPECT_FALSE(gif.TimerStatus());
  EXPECT_EQ(gif.CurrentFrame(), 1);
}

TEST(AniGif, StillsAndBrokenFiles) {
  AniGif gif;
  QSignalSpy cycles(&gif, &AniGif::CycleDone);
  EXPECT_EQ(gif.LoadFile(Save("one.gif", Gifsicle(Still("red.gif", "4x3", "red")))), 1);
  EXPECT_FALSE(gif.TimerStatus());
  EXPECT_TRUE(gif.FileMoving());
  EXPECT_EQ(cycles.count(), 1);

  const QByteArray png = RunTool("convert", {"-size", "5x2", "xc:red", "png:-"});
  EXPECT_EQ(gif.LoadFile(Save("png.gif", png)), 0);
  EXPECT_EQ(gif.Composition().size(), QSize(5, 2));
  const QByteArray jpeg = RunTool("convert", {"-size", "5x2", "xc:red", "jpg:-"});
  EXPECT_EQ(gif.LoadFile(Save("cut.jpg", jpeg.chopped(2))), 0);
  EXPECT_TRUE(gif.Composition().isNull());

  const QByteArray three = ThreeFrames();
  gif.LoadFile(Save("half.gif", three.left(three.size() / 2)));
  gif.LoadFile(Save("mark.gif", three.chopped(1) + QByteArray("\x00\x21\xF9", 3)), true);
  for (int i = 0; i < 4; ++i) gif.NextFrame();
}

TEST(GifFrames, ALargeScreenOfManyFramesStopsWhenDecodingGrowsTooCostly) {
  // 100 frames of one pixel on a 4096 x 4096 screen: every piece decodes to
  // the whole screen, so after 32 of them 2^29 pixels have been filled.
  QString line = "--logical-screen 4096x4096";
  const QString dot = Still("dot.gif", "1x1", "red");
  for (int i = 0; i < 100; ++i) line += QString(" -d 5 --position %1,0 %2").arg(i).arg(dot);
  const QByteArray gif = Gifsicle(line);
  ASSERT_LT(gif.size(), 20000);
  const GifSplit split = SplitFrames(gif);
  ASSERT_EQ(split.Frames.size(), 32u);
  EXPECT_EQ(split.Frames[0].Picture.size(), QSize(4096, 4096));
  EXPECT_EQ(split.Frames[31].Picture.size(), QSize(1, 1));
  EXPECT_EQ(split.Frames[31].Left, 31);
  EXPECT_EQ(split.DecodedPixels, 536870912);
}
