#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTest>
#include <QTimer>

#include "browser/ThumbnailCache.h"
#include "browser/ThumbnailLoader.h"
#include "catalogue/MediaPicture.h"
#include "platform/MetafileDecoder.h"
#include "support/TestEnv.h"

namespace platform {
void PrintTo(DecodeOutcome outcome, std::ostream* out) { *out << "DecodeOutcome " << int(outcome); }
}  // namespace platform

namespace {

QString Folder() {
  QDir().mkpath(testenv::Root() + "/pictures");
  return testenv::Root() + "/pictures";
}

QString Fixture(const QString& name) { return testenv::DataFolder() + "/pictures/" + name; }

// A photograph-like JPEG: noise keeps it from compressing to nothing, so it
// takes far longer to decode than the small fixtures.
QString MakeJpeg(const QString& name, int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  QRandomGenerator(17).fillRange(reinterpret_cast<quint32*>(image.bits()), image.sizeInBytes() / 4);
  const QString path = Folder() + "/" + name;
  EXPECT_TRUE(image.save(path, "jpeg", 90));
  return path;
}

QString CopyFixture(const QString& fixture, const QString& name) {
  const QString path = Folder() + "/" + name;
  QFile::copy(Fixture(fixture), path);
  return path;
}

QStringList Lines(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
}

QVector<ThumbnailRequest> Requests(const QStringList& paths, int firstCell = 0) {
  QVector<ThumbnailRequest> requests;
  for (int i = 0; i < paths.size(); ++i) requests.append({firstCell + i, paths[i]});
  return requests;
}

// Everything a loader hands on, in the order it arrives.
struct Received {
  explicit Received(ThumbnailLoader& loader) {
    QObject::connect(&loader, &ThumbnailLoader::Ready, [this](const ThumbnailResult& r) { Results << r; });
    QObject::connect(&loader, &ThumbnailLoader::Finished, [this] { ++Finished; });
  }
  void Clear() {
    Results.clear();
    Finished = 0;
  }
  QVector<ThumbnailResult> Results;
  int Finished = 0;
  // "cell name" of each result.
  QStringList Cells() const {
    QStringList cells;
    for (const ThumbnailResult& r : Results)
      cells << QString::number(r.Cell) + " " + QFileInfo(r.Path).fileName();
    return cells;
  }
};

// Lets events run until the loader's page is finished (a minute at most,
// so a broken loader fails instead of hanging).
void WaitForPage(ThumbnailLoader& loader) {
  QEventLoop loop;
  QObject::connect(&loader, &ThumbnailLoader::Finished, &loop, &QEventLoop::quit);
  QTimer::singleShot(60000, &loop, &QEventLoop::quit);
  if (loader.Busy()) loop.exec();
}

// Lets the results of every worker arrive (or be dropped).
void Settle(ThumbnailLoader& loader) {
  loader.WaitForWorkers();
  QCoreApplication::processEvents();
}

// True when the helper that led the process group has been reaped and
// nothing of its group still runs (a killed child not yet reaped by its
// adopter counts as gone).
bool GroupGone(qint64 group) {
  if (QFileInfo::exists(QStringLiteral("/proc/%1").arg(group))) return false;
  for (const QString& entry : QDir("/proc").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile stat("/proc/" + entry + "/stat");
    if (!stat.open(QIODevice::ReadOnly)) continue;
    // "pid (name) state ppid pgrp ...": the name may hold blanks.
    const QByteArray text = stat.readAll();
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    if (fields.size() > 2 && fields[2].toLongLong() == group && fields[0] != "Z") return false;
  }
  return true;
}

}  // namespace

TEST(ThumbnailLoaderTest, ResultsArriveInPageOrderAndTheSecondVisitDecodesNothing) {
  // A big photograph first: the small pictures after it are done long
  // before it, and must wait for it.
  const QStringList page{MakeJpeg("big photo.jpg", 2400, 1600),
                         CopyFixture("picture.png", "Ann's; \"small\".png"),
                         CopyFixture("picture.gif", "picture.gif"),
                         CopyFixture("turned.jpg", QString::fromUtf8("gedreht ü.jpg")),
                         CopyFixture("picture.bmp", "picture.bmp"),
                         testenv::MakeFile(Folder() + "/broken.jpg", QByteArray(3000, 'x')),
                         CopyFixture("picture.ico", "picture.ico"),
                         Folder() + "/gone.png"};
  ThumbnailLoader loader;
  Received received(loader);
  const auto visit = [&](int expectedDecodes, const char* name) {
    received.Clear();
    ThumbnailLoader::ResetDecodeCount();
    loader.Start(Requests(page, 10), 92);
    EXPECT_TRUE(loader.Busy());
    WaitForPage(loader);
    EXPECT_FALSE(loader.Busy());
    EXPECT_EQ(received.Finished, 1);
    EXPECT_EQ(ThumbnailLoader::DecodeCount(), expectedDecodes) << name;
    EXPECT_EQ(received.Cells(),
              QStringList({"10 big photo.jpg", "11 Ann's; \"small\".png", "12 picture.gif",
                           QString::fromUtf8("13 gedreht ü.jpg"), "14 picture.bmp", "15 broken.jpg",
                           "16 picture.ico", "17 gone.png"}))
        << name;
    ASSERT_EQ(received.Results.size(), 8) << name;
    const QVector<ThumbnailResult>& r = received.Results;
    EXPECT_EQ(r[0].Image.size(), QSize(128, 85)) << name;
    EXPECT_EQ(r[0].OriginalSize, QSize(2400, 1600)) << name;
    EXPECT_EQ(r[1].Image.size(), QSize(32, 24)) << name;
    EXPECT_EQ(r[1].Image.pixel(4, 4), qRgb(255, 0, 0)) << name;
    // The turned photograph's recorded size is upright too.
    EXPECT_EQ(r[3].OriginalSize, QSize(24, 32)) << name;
    for (int i = 0; i < 8; ++i) {
      EXPECT_EQ(r[i].Ok, i < 5 || i == 6) << name << " " << i;
      EXPECT_EQ(r[i].Image == InvalidImagePicture(), !r[i].Ok) << name << " " << i;
    }
  };
  visit(8, "first");
  // The broken file is recorded, the missing one is not.
  EXPECT_TRUE(QFileInfo::exists(FailureRecordPath(page[5])));
  EXPECT_FALSE(QFileInfo::exists(FailureRecordPath(page[7])));
  // Again: all from the cache, the broken file not tried, the missing one tried again.
  visit(1, "second");

  // A bigger cell asks for the large size, which is not cached yet.
  received.Clear();
  ThumbnailLoader::ResetDecodeCount();
  loader.Start(Requests(page.mid(0, 1)), 200);
  WaitForPage(loader);
  ASSERT_EQ(received.Results.size(), 1);
  EXPECT_EQ(received.Results[0].Image.size(), QSize(256, 170));
  EXPECT_EQ(ThumbnailLoader::DecodeCount(), 1);
}

TEST(ThumbnailLoaderTest, NewPageDropsTheOldOne) {
  QStringList old;
  for (int i = 0; i < 6; ++i) old << MakeJpeg(QString("old%1.jpg").arg(i), 1600, 1200);
  const QStringList fresh{CopyFixture("picture.png", "new0.png"), CopyFixture("picture.gif", "new1.gif")};
  ThumbnailLoader loader;
  Received received(loader);

  // An empty page finishes too, but from the event loop.
  loader.Start({}, 92);
  EXPECT_TRUE(loader.Busy());
  EXPECT_EQ(received.Finished, 0);
  WaitForPage(loader);
  EXPECT_EQ(received.Finished, 1);
  EXPECT_FALSE(loader.Busy());

  // Started and cancelled before any event ran: nothing arrives.
  received.Clear();
  loader.Start(Requests(old), 92);
  loader.Cancel();
  EXPECT_FALSE(loader.Busy());
  Settle(loader);
  EXPECT_EQ(received.Cells(), QStringList());
  EXPECT_EQ(received.Finished, 0);

  // A page turned while the old one is at work, from within the handing on
  // of one of its results (the window lets events run there): the rest of
  // the old page never comes.
  bool turned = false;
  QObject::connect(&loader, &ThumbnailLoader::Ready, [&](const ThumbnailResult& result) {
    if (result.Path == old[1] && !turned) {
      turned = true;
      loader.Start(Requests(fresh, 100), 92);
    }
  });
  loader.Start(Requests(old), 92);
  WaitForPage(loader);
  Settle(loader);
  EXPECT_EQ(received.Cells(), QStringList({"0 old0.jpg", "1 old1.jpg", "100 new0.png", "101 new1.gif"}));
  EXPECT_EQ(received.Finished, 1);
}

// Tests that put a stand-in for the metafile helper in place.
class ThumbnailHelperTest : public testing::Test {
 protected:
  void TearDown() override {
    platform::SetDecoderFolder(QString());
    platform::SetDecoderTimeLimit(5000);
  }
  // The stand-in: a file of the given text, made executable; none at all
  // for a null text.
  void UseFakeHelper(const QByteArray& text) {
    const QString folder = testenv::Root() + "/fakehelper";
    QFile::remove(folder + "/vistrel-decode");
    if (!text.isNull()) {
      testenv::MakeFile(folder + "/vistrel-decode", text);
      QFile::setPermissions(folder + "/vistrel-decode",
                            QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    platform::SetDecoderFolder(folder);
  }
  // A shell script: "$last" is the picture.
  const QByteArray sh_ = "#!/bin/sh\nfor last; do :; done\n";
};

TEST_F(ThumbnailHelperTest, OnlyTheDecodersRefusalIsRecorded) {
  const QByteArray grow = "printf x >> \"$last\"; ";
  const QByteArray drawn = "cat '" + Fixture("picture.png").toUtf8() + "'";
  const struct {
    const char* Name;
    QByteArray Helper;
    DecodeOutcome Outcome;
    bool Stored, Recorded;
  } cases[] = {
      {"drawn.wmf", sh_ + drawn, DecodeOutcome::Decoded, true, false},
      {"refused.wmf", sh_ + "exit 1", DecodeOutcome::NotAPicture, false, true},
      {"crashed.wmf", sh_ + "kill -SEGV $$", DecodeOutcome::NotAPicture, false, true},
      {"garbage.wmf", sh_ + "echo not a picture; exit 0", DecodeOutcome::NotAPicture, false, true},
      // Changed while it was drawn: shown, but neither kept nor recorded.
      {"grown.wmf", sh_ + grow + drawn, DecodeOutcome::Decoded, false, false},
      {"grown and refused.wmf", sh_ + grow + "exit 1", DecodeOutcome::NotAPicture, false, false},
      // Failures that may pass.
      {"unreadable.wmf", sh_ + "exit 2", DecodeOutcome::Unreadable, false, false},
      {"out of memory.wmf", sh_ + "exit 3", DecodeOutcome::OutOfMemory, false, false},
      {"killed by the system.wmf", sh_ + "kill -KILL $$", DecodeOutcome::OutOfMemory, false, false},
      {"timed out.wmf", sh_ + "exec sleep 30", DecodeOutcome::TimedOut, false, false},
      {"not startable.wmf", "no program", DecodeOutcome::HelperMissing, false, false},
      {"no helper.wmf", QByteArray(), DecodeOutcome::HelperMissing, false, false},
  };
  const QImage png(Fixture("picture.png"));
  for (const auto& c : cases) {
    UseFakeHelper(c.Helper);
    // Short only where the limit is what is tested, so a busy machine does not time out the others.
    platform::SetDecoderTimeLimit(c.Outcome == DecodeOutcome::TimedOut ? 300 : 5000);
    const QString path = CopyFixture("picture.wmf", c.Name);
    const QImage& expected = c.Outcome == DecodeOutcome::Decoded ? png : InvalidImagePicture();
    QImage picture;
    EXPECT_EQ(DecodeMediaPicture(path, picture), c.Outcome) << c.Name;
    EXPECT_EQ(picture, expected) << c.Name;
    const ThumbnailResult result = MakeThumbnail({3, path}, 92);
    EXPECT_EQ(result.Ok, c.Outcome == DecodeOutcome::Decoded) << c.Name;
    EXPECT_EQ(result.Image, expected) << c.Name;
    EXPECT_EQ(QFileInfo::exists(ThumbnailPath(path, 92)), c.Stored) << c.Name;
    EXPECT_EQ(QFileInfo::exists(FailureRecordPath(path)), c.Recorded) << c.Name;
  }

  // The helper is given the cache size, the file and a ceiling of 1 GiB of
  // address space (in KiB).
  const QString record = testenv::Root() + "/arguments.txt";
  UseFakeHelper(sh_ + "{ printf '%s\\n' \"$@\"; ulimit -v; } > '" + record.toUtf8() + "'; exit 1");
  const QString path = CopyFixture("picture.wmf", "Ann's; \"box\".wmf");
  EXPECT_FALSE(MakeThumbnail({0, path}, 92).Ok);
  EXPECT_EQ(Lines(record), QStringList({"--fit", "128x128", "--", path, "1048576"}));
}

TEST_F(ThumbnailHelperTest, LeavingAPageKillsItsHelpers) {
  // Each stand-in notes its process group, then waits on a child of its
  // own; left to end, it would note that too.
  const QString notes = testenv::Root() + "/helper.notes";
  const QByteArray note = ">> '" + notes.toUtf8() + "'";
  UseFakeHelper(sh_ + "echo $$ " + note + "; sleep 30; echo ended " + note);
  platform::SetDecoderTimeLimit(60000);
  // More hanging metafiles than workers: every worker is held by one.
  QStringList hanging;
  for (int i = 0; i < 4; ++i) hanging << CopyFixture("picture.wmf", QString("hangs%1.wmf").arg(i));
  QStringList groups;
  {
    ThumbnailLoader loader;
    Received received(loader);
    loader.Start(Requests(hanging), 92);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Lines(notes).size() == loader.WorkerCount(); }));
    groups = Lines(notes);

    // The next page: the helpers of the page left are killed, not waited
    // for, and the new page fills.
    loader.Start(Requests({CopyFixture("picture.png", "next.png")}), 92);
    for (const QString& group : groups)
      EXPECT_TRUE(QTest::qWaitFor([&] { return GroupGone(group.toLongLong()); }, 20000))
          << group.toStdString();
    WaitForPage(loader);
    EXPECT_EQ(received.Cells(), QStringList({"0 next.png"}));
    EXPECT_EQ(Lines(notes), groups);

    // Closing with helpers at work.
    loader.Start(Requests(hanging), 92);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Lines(notes).size() == 2 * loader.WorkerCount(); }));
  }
  const QStringList all = Lines(notes);
  EXPECT_FALSE(all.contains("ended"));
  for (const QString& group : all)
    EXPECT_TRUE(QTest::qWaitFor([&] { return GroupGone(group.toLongLong()); })) << group.toStdString();
  // Nothing was recorded for the pictures left.
  for (const QString& path : hanging) EXPECT_FALSE(QFileInfo::exists(FailureRecordPath(path)));
}
