#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QImageWriter>
#include <QRandomGenerator>
#include <QTest>
#include <QTimer>

#include "browser/ThumbnailCache.h"
#include "browser/ThumbnailLoader.h"
#include "catalogue/MediaPicture.h"
#include "platform/MetafileDecoder.h"
#include "support/TestEnv.h"

namespace {

QString Folder() { return testenv::Root() + "/pictures"; }

// A photograph-like JPEG: noise keeps it from compressing to nothing, so it
// takes far longer to decode than the small fixtures.
QString MakeJpeg(const QString& name, int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  QRandomGenerator random(17);
  for (int y = 0; y < height; ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < width; ++x) line[x] = random.generate() | 0xFF000000u;
  }
  QDir().mkpath(Folder());
  const QString path = Folder() + "/" + name;
  QImageWriter writer(path, "jpeg");
  writer.setQuality(90);
  EXPECT_TRUE(writer.write(image));
  return path;
}

QString CopyFixture(const QString& fixture, const QString& name) {
  QDir().mkpath(Folder());
  const QString path = Folder() + "/" + name;
  QFile::copy(testenv::DataFolder() + "/pictures/" + fixture, path);
  return path;
}

QVector<ThumbnailRequest> Requests(const QStringList& paths, int firstCell = 0) {
  QVector<ThumbnailRequest> requests;
  for (int i = 0; i < paths.size(); ++i) requests.append({firstCell + i, paths[i]});
  return requests;
}

// Everything a loader hands on, in the order it arrives.
struct Received {
  QVector<ThumbnailResult> Results;
  int Finished = 0;
};

void Record(ThumbnailLoader& loader, Received& received) {
  QObject::connect(&loader, &ThumbnailLoader::Ready,
                   [&received](const ThumbnailResult& result) { received.Results.append(result); });
  QObject::connect(&loader, &ThumbnailLoader::Finished, [&received] { ++received.Finished; });
}

// Lets events run until the loader's page is finished (a minute at most,
// so a broken loader fails instead of hanging).
void WaitForPage(ThumbnailLoader& loader) {
  QEventLoop loop;
  QObject::connect(&loader, &ThumbnailLoader::Finished, &loop, &QEventLoop::quit);
  QTimer::singleShot(60000, &loop, &QEventLoop::quit);
  if (loader.Busy()) loop.exec();
}

QStringList PathsOf(const QVector<ThumbnailResult>& results) {
  QStringList paths;
  for (const ThumbnailResult& result : results) paths << result.Path;
  return paths;
}

QList<int> CellsOf(const QVector<ThumbnailResult>& results) {
  QList<int> cells;
  for (const ThumbnailResult& result : results) cells << result.Cell;
  return cells;
}

// Tests that put a stand-in for the metafile helper in place.
class ThumbnailHelperTest : public testing::Test {
 protected:
  void TearDown() override {
    platform::SetDecoderFolder(QString());
    platform::SetDecoderTimeLimit(5000);
  }
  // The stand-in: a shell script of the given body; "$last" is the file.
  void UseFakeHelper(const QByteArray& body) {
    const QString folder = testenv::Root() + "/fakehelper";
    const QString path =
        testenv::MakeFile(folder + "/vistrel-decode", "#!/bin/sh\nfor last; do :; done\n" + body + "\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    platform::SetDecoderFolder(folder);
  }
  // A stand-in that notes its process number in pids, then hangs.
  QString UseHangingHelper() {
    const QString pids = testenv::Root() + "/helper.pids";
    UseFakeHelper("echo $$ >> '" + pids.toUtf8() + "'; exec sleep 30");
    platform::SetDecoderTimeLimit(60000);
    return pids;
  }
};

QList<qint64> PidsIn(const QString& path) {
  QList<qint64> pids;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return pids;
  for (const QByteArray& line : file.readAll().split('\n'))
    if (!line.trimmed().isEmpty()) pids << line.trimmed().toLongLong();
  return pids;
}

// A process that has not ended, or ended without being reaped.
bool Exists(qint64 pid) { return QFileInfo::exists(QStringLiteral("/proc/%1").arg(pid)); }

}  // namespace

TEST(ThumbnailLoaderTest, TwoToFourWorkers) {
  EXPECT_EQ(ThumbnailWorkerCount(1), 2);
  EXPECT_EQ(ThumbnailWorkerCount(3), 3);
  EXPECT_EQ(ThumbnailWorkerCount(64), 4);
}

TEST(ThumbnailLoaderTest, ResultsArriveInPageOrderAndTheSecondVisitDecodesNothing) {
  // A big photograph first: the small pictures after it are done long
  // before it, and must wait for it.
  const QStringList page{MakeJpeg("big photo.jpg", 2400, 1600),
                         CopyFixture("picture.png", "Ann's; \"small\".png"),
                         CopyFixture("picture.gif", "picture.gif"),
                         CopyFixture("turned.jpg", QString::fromUtf8("gedreht ü.jpg")),
                         CopyFixture("picture.bmp", "picture.bmp"),
                         testenv::MakeFile(Folder() + "/broken.jpg", QByteArray(3000, 'x')),
                         CopyFixture("picture.ico", "picture.ico")};
  ThumbnailLoader loader;
  Received received;
  Record(loader, received);
  ThumbnailLoader::ResetDecodeCount();
  loader.Start(Requests(page, 10), 92);
  EXPECT_TRUE(loader.Busy());
  WaitForPage(loader);
  EXPECT_FALSE(loader.Busy());
  EXPECT_EQ(received.Finished, 1);
  EXPECT_EQ(CellsOf(received.Results), (QList<int>{10, 11, 12, 13, 14, 15, 16}));
  EXPECT_EQ(PathsOf(received.Results), page);
  EXPECT_EQ(ThumbnailLoader::DecodeCount(), 7);

  const auto check = [&](const char* visit) {
    ASSERT_EQ(received.Results.size(), 7) << visit;
    const QVector<ThumbnailResult>& r = received.Results;
    EXPECT_TRUE(r[0].Ok) << visit;
    EXPECT_EQ(r[0].Image.size(), QSize(128, 85)) << visit;
    EXPECT_EQ(r[0].OriginalSize, QSize(2400, 1600)) << visit;
    EXPECT_EQ(r[1].Image.size(), QSize(32, 24)) << visit;
    EXPECT_EQ(r[1].Image.pixel(4, 4), qRgb(255, 0, 0)) << visit;
    // The turned photograph is upright, and so is its recorded size.
    EXPECT_EQ(r[3].Image.size(), QSize(24, 32)) << visit;
    EXPECT_EQ(r[3].OriginalSize, QSize(24, 32)) << visit;
    // The largest entry of the icon.
    EXPECT_EQ(r[6].Image.size(), QSize(48, 48)) << visit;
    EXPECT_FALSE(r[5].Ok) << visit;
    EXPECT_TRUE(r[5].Image == InvalidImagePicture()) << visit;
    for (int i : {0, 1, 2, 3, 4, 6}) EXPECT_TRUE(r[i].Ok) << visit << " " << i;
  };
  check("first visit");
  EXPECT_TRUE(QFileInfo::exists(FailureRecordPath(page[5])));
  for (int i : {0, 1, 2, 3, 4, 6}) EXPECT_TRUE(QFileInfo::exists(ThumbnailPath(page[i], 92))) << i;

  // The same page again: all from the cache, the broken file not tried.
  received = Received();
  ThumbnailLoader::ResetDecodeCount();
  loader.Start(Requests(page, 10), 92);
  WaitForPage(loader);
  EXPECT_EQ(ThumbnailLoader::DecodeCount(), 0);
  EXPECT_EQ(received.Finished, 1);
  EXPECT_EQ(PathsOf(received.Results), page);
  check("second visit");

  // A bigger cell asks for the large size, which is not cached yet.
  received = Received();
  loader.Start(Requests(page.mid(0, 1)), 200);
  WaitForPage(loader);
  ASSERT_EQ(received.Results.size(), 1);
  EXPECT_EQ(received.Results[0].Image.size(), QSize(256, 170));
  EXPECT_EQ(ThumbnailLoader::DecodeCount(), 1);
}

TEST(ThumbnailLoaderTest, NewPageDropsTheOldOne) {
  QStringList old;
  for (int i = 0; i < 6; ++i) old << MakeJpeg(QString("old%1.jpg").arg(i), 1600, 1200);
  const QStringList fresh{CopyFixture("picture.png", "new0.png"), CopyFixture("picture.gif", "new1.gif"),
                          CopyFixture("picture.jpg", "new2.jpg")};
  ThumbnailLoader loader;
  Received received;
  Record(loader, received);

  // Started and cancelled before any event ran: nothing arrives.
  loader.Start(Requests(old), 92);
  loader.Cancel();
  EXPECT_FALSE(loader.Busy());
  loader.WaitForWorkers();
  QCoreApplication::processEvents();
  EXPECT_TRUE(received.Results.isEmpty());
  EXPECT_EQ(received.Finished, 0);

  // A new page started over a running one: only the new page arrives.
  QFile::remove(ThumbnailPath(old[0], 92));
  loader.Start(Requests(old), 92);
  loader.Start(Requests(fresh), 92);
  WaitForPage(loader);
  loader.WaitForWorkers();
  QCoreApplication::processEvents();
  EXPECT_EQ(PathsOf(received.Results), fresh);
  EXPECT_EQ(received.Finished, 1);

  // A page turned from within the handing on of a result (the window lets
  // events run there): the rest of the old page never comes.
  received = Received();
  bool turned = false;
  QObject::connect(&loader, &ThumbnailLoader::Ready, [&](const ThumbnailResult& result) {
    if (result.Path == old[1] && !turned) {
      turned = true;
      loader.Start(Requests(fresh, 100), 92);
    }
  });
  loader.Start(Requests(old), 92);
  WaitForPage(loader);
  loader.WaitForWorkers();
  QCoreApplication::processEvents();
  ASSERT_TRUE(turned);
  EXPECT_EQ(PathsOf(received.Results), QStringList({old[0], old[1]}) + fresh);
  EXPECT_EQ(CellsOf(received.Results), (QList<int>{0, 1, 100, 101, 102}));
  EXPECT_EQ(received.Finished, 1);
}

TEST(ThumbnailLoaderTest, EmptyPageFinishesFromTheEventLoop) {
  ThumbnailLoader loader;
  Received received;
  Record(loader, received);
  loader.Start({}, 92);
  EXPECT_EQ(received.Finished, 0);
  EXPECT_TRUE(loader.Busy());
  WaitForPage(loader);
  EXPECT_EQ(received.Finished, 1);
  EXPECT_TRUE(received.Results.isEmpty());
  EXPECT_FALSE(loader.Busy());
}

TEST_F(ThumbnailHelperTest, OnlyTheDecodersRefusalIsRecorded) {
  const QByteArray grow = "printf x >> \"$last\"; ";
  const QByteArray drawn = "cat '" + (testenv::DataFolder() + "/pictures/picture.png").toUtf8() + "'";
  platform::SetDecoderTimeLimit(300);
  const struct {
    const char* Name;
    QByteArray Helper;
    bool Ok, Stored, Recorded;
  } cases[] = {
      {"drawn.wmf", drawn, true, true, false},
      {"refused.wmf", "exit 1", false, false, true},
      {"crashed.wmf", "kill -SEGV $$", false, false, true},
      // Changed while it was drawn: shown, but neither kept nor recorded.
      {"grown.wmf", grow + drawn, true, false, false},
      {"grown and refused.wmf", grow + "exit 1", false, false, false},
      // Failures that may pass.
      {"unreadable.wmf", "exit 2", false, false, false},
      {"out of memory.wmf", "exit 3", false, false, false},
      {"killed.wmf", "kill -KILL $$", false, false, false},
      {"timed out.wmf", "exec sleep 30", false, false, false},
  };
  for (const auto& c : cases) {
    UseFakeHelper(c.Helper);
    const QString path = CopyFixture("picture.wmf", c.Name);
    const ThumbnailResult result = MakeThumbnail({3, path}, 92);
    EXPECT_EQ(result.Cell, 3) << c.Name;
    EXPECT_EQ(result.Ok, c.Ok) << c.Name;
    EXPECT_EQ(result.Image.size(), c.Ok ? QSize(32, 24) : QSize(32, 32)) << c.Name;
    EXPECT_EQ(QFileInfo::exists(ThumbnailPath(path, 92)), c.Stored) << c.Name;
    EXPECT_EQ(QFileInfo::exists(FailureRecordPath(path)), c.Recorded) << c.Name;
    EXPECT_EQ(IsRecordedFailure(path), c.Recorded) << c.Name;
  }
  // No helper at all, and a missing picture.
  platform::SetDecoderFolder(testenv::Root() + "/nowhere");
  const QString helperless = CopyFixture("picture.wmf", "helperless.wmf");
  const QString gone = Folder() + "/gone.png";
  for (const QString& path : {helperless, gone}) {
    EXPECT_FALSE(MakeThumbnail({0, path}, 92).Ok);
    EXPECT_FALSE(QFileInfo::exists(FailureRecordPath(path))) << path.toStdString();
  }
  // A picture this process may not read (a test run by root reads anything).
  if (::geteuid() != 0) {
    const QString locked = CopyFixture("picture.png", "locked.png");
    QFile::setPermissions(locked, QFileDevice::WriteOwner);
    EXPECT_FALSE(MakeThumbnail({0, locked}, 92).Ok);
    EXPECT_FALSE(QFileInfo::exists(FailureRecordPath(locked)));
  }
}

TEST_F(ThumbnailHelperTest, LeavingAPageKillsItsHelpers) {
  const QString pids = UseHangingHelper();
  // More hanging metafiles than workers: every worker is held by one.
  QStringList hanging;
  for (int i = 0; i < 4; ++i) hanging << CopyFixture("picture.wmf", QString("hangs%1.wmf").arg(i));
  const QStringList next{CopyFixture("picture.png", "next.png"), CopyFixture("picture.gif", "next.gif")};
  {
    ThumbnailLoader loader;
    Received received;
    Record(loader, received);
    loader.Start(Requests(hanging), 92);
    ASSERT_TRUE(QTest::qWaitFor([&] { return PidsIn(pids).size() == loader.WorkerCount(); }));
    const QList<qint64> first = PidsIn(pids);

    // The next page: the helpers of the page left are killed, not waited
    // for, and the new page fills.
    loader.Start(Requests(next), 92);
    for (const qint64 pid : first)
      EXPECT_TRUE(QTest::qWaitFor([pid] { return !Exists(pid); }, 20000)) << pid;
    WaitForPage(loader);
    EXPECT_EQ(PathsOf(received.Results), next);
    EXPECT_EQ(received.Finished, 1);
    EXPECT_EQ(PidsIn(pids).size(), first.size());

    // Closing with helpers at work.
    QFile::remove(pids);
    loader.Start(Requests(hanging), 92);
    ASSERT_TRUE(QTest::qWaitFor([&] { return PidsIn(pids).size() == loader.WorkerCount(); }));
  }
  for (const qint64 pid : PidsIn(pids)) EXPECT_FALSE(Exists(pid)) << pid;
  // Nothing was recorded for the pictures left.
  for (const QString& path : hanging) EXPECT_FALSE(QFileInfo::exists(FailureRecordPath(path)));
}
