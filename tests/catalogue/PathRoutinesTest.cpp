#include <gtest/gtest.h>

#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QTimer>
#include <algorithm>

#include "catalogue/PathRoutines.h"
#include "platform/Twips.h"
#include "support/TestEnv.h"

namespace {

// The room, in twips, in which `text` just fits.
int RoomFor(const QWidget& w, const QString& text) {
  return twips::FromPixels(w.fontMetrics().horizontalAdvance(text)) + 60;
}

}  // namespace

TEST(PathRoutinesTest, ShortenPathDropsFoldersThenCutsCharacters) {
  QLabel l;
  const QString path = "/Media/Holiday/2001/Beach/a.jpg";
  EXPECT_EQ(ShortenPath(&l, path, RoomFor(l, path), 1), path);
  // The marker behind the root "/" doubles the separator while measuring;
  // the result has it once.
  EXPECT_EQ(ShortenPath(&l, path, RoomFor(l, path) - 1, 1), "/ .../Holiday/2001/Beach/a.jpg");
  EXPECT_EQ(ShortenPath(&l, path, RoomFor(l, "// .../Holiday/2001/Beach/a.jpg") - 1, 1),
            "/ .../2001/Beach/a.jpg");
  EXPECT_EQ(ShortenPath(&l, path, RoomFor(l, "// .../Beach/a.jpg"), 1), "/ .../Beach/a.jpg");
  EXPECT_EQ(ShortenPath(&l, path, RoomFor(l, "// .../a."), 1), "/ .../a.");
  EXPECT_EQ(ShortenPath(&l, path, 59, 1), "");
  // A longer root stays unhurt.
  EXPECT_EQ(
      ShortenPath(&l, "/home/ann/Pictures/2001/a.jpg", RoomFor(l, "/home// .../2001/a.jpg"), 6),
      "/home/ .../2001/a.jpg");
  // A text that fits only loses a doubled "/" behind the root.
  EXPECT_EQ(ShortenPath(&l, "//server/share", 100000, 1), "/server/share");
}

TEST(PathRoutinesTest, ShortenAlbumPathNeverCutsCharacters) {
  QLabel l;
  const QString path = "/Media/Holiday/2001/Beach/a.jpg";
  EXPECT_EQ(ShortenAlbumPath(&l, path, RoomFor(l, "// .../Beach/a.jpg"), 1), "/ .../Beach/a.jpg");
  EXPECT_EQ(ShortenAlbumPath(&l, path, 10, 1), "/ .../a.jpg");
  EXPECT_EQ(ShortenAlbumPath(&l, "averylongname.jpg", 10, 1), "averylongname.jpg");
}

TEST(PathRoutinesTest, GetLongPath) {
  EXPECT_EQ(GetLongPath("/no/such/a.jpg"), "/no/such/a.jpg");
  const QString backup = testenv::MakeFile(testenv::Root() + "/d/notes.txt~", "x");
  EXPECT_EQ(GetLongPath(testenv::Root() + "/d/./notes.txt~"), backup);
  EXPECT_EQ(GetLongPath(testenv::Root() + "/d/gone.txt~"), "");
  const QString inHome = testenv::MakeFile(QDir::homePath() + "/Pictures/b.png", "x");
  EXPECT_EQ(GetLongPath("~/Pictures/b.png"), inHome);
}

TEST(PathRoutinesTest, WaitSecondsLetsEventsRunForTheWholeTime) {
  bool fired = false;
  QTimer::singleShot(50, [&] { fired = true; });
  QElapsedTimer clock;
  clock.start();
  WaitSeconds(0.2);
  EXPECT_TRUE(fired);
  EXPECT_GE(clock.elapsed(), 200);
}

TEST(PathRoutinesTest, ListIndexAtGivesTheEdgeToTheFirstItem) {
  QListWidget list;
  list.addItems({"one", "two"});
  list.show();
  const QRect r0 = list.visualItemRect(list.item(0)), r1 = list.visualItemRect(list.item(1));
  ASSERT_EQ(r1.top(), r0.top() + r0.height());
  auto at = [&](int x, int y) {
    return ListIndexAt(&list, twips::FromPixels(x), twips::FromPixels(y));
  };
  EXPECT_EQ(at(r0.left(), r0.top()), 0);
  EXPECT_EQ(at(r1.left() + 5, r1.top() + 1), 1);
  EXPECT_EQ(at(r1.left() + 5, r1.top()), 0);
  EXPECT_EQ(at(r1.left() + 5, r1.top() + r1.height() + 1), -1);
  QLabel label;
  EXPECT_EQ(ListIndexAt(&label, 0, 0), -1);
}

TEST(PathRoutinesTest, MoveFormWithMouseDragsTheWindowUntilRelease) {
  QWidget window(nullptr, Qt::FramelessWindowHint);
  QLabel* grip = new QLabel("grip", &window);
  window.move(100, 100);
  window.show();
  const QPoint origin = window.pos();
  QCursor::setPos(300, 300);
  MoveFormWithMouse(grip);
  auto send = [&](QEvent::Type type, QPoint global, Qt::MouseButtons buttons) {
    QMouseEvent event(type, grip->mapFromGlobal(QPointF(global)), QPointF(global), Qt::LeftButton,
                      buttons, Qt::NoModifier);
    QApplication::sendEvent(grip, &event);
  };
  send(QEvent::MouseMove, {350, 320}, Qt::LeftButton);
  EXPECT_EQ(window.pos(), origin + QPoint(50, 20));
  send(QEvent::MouseButtonRelease, {360, 330}, Qt::NoButton);
  send(QEvent::MouseMove, {400, 400}, Qt::LeftButton);
  EXPECT_EQ(window.pos(), origin + QPoint(60, 30));
}
