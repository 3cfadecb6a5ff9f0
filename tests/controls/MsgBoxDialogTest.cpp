#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

#include "controls/MessageBox.h"
#include "controls/MsgBoxEnhanced.h"
#include "platform/Twips.h"
#include "support/MessageBoxAnswer.h"

using testenv::WhenMessageBoxShown;

namespace {

void Click(QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

// What the box showed when it was up, and the answer it gave.
struct Seen {
  QStringList captions;  // of the visible buttons
  int defaultIndex = -2, focusIndex = -2;
  bool focusOnDefault = false;
  QString title;
  QRect placed;
  int textX = 0;
  qint16 result = -1;
};

class MsgBoxDialog : public testing::Test {
 protected:
  void SetUp() override {
    box = std::make_unique<MsgBoxEnhanced>();
    box->SetSoundBeep(false);
  }
  void TearDown() override { box.reset(); }

  // Asks, notes what the box shows, then answers with the given key.
  Seen Ask(const QString& prompt, qint16 buttons, const QString& title = {},
           Qt::Key answer = Qt::Key_Escape) {
    Seen seen;
    WhenMessageBoxShown([&](MessageBox& form) {
      for (QPushButton* b : form.MsgButton)
        if (b->isVisible()) seen.captions << b->text();
      seen.defaultIndex = form.DefaultIndex;
      seen.focusIndex = form.FocusIndex;
      QWidget* focus = QApplication::focusWidget();
      seen.focusOnDefault = form.DefaultIndex >= 0 && focus == form.MsgButton[form.DefaultIndex] &&
                            form.MsgButton[form.DefaultIndex]->isDefault();
      seen.title = form.TopCaption->text();
      seen.placed = form.geometry();
      seen.textX = form.MsgText->x();
      QTest::keyClick(answer == Qt::Key_Space ? focus : &form, answer);
    });
    seen.result = box->MsgBox(prompt, buttons, title);
    return seen;
  }

  std::unique_ptr<MsgBoxEnhanced> box;
};

}  // namespace

TEST_F(MsgBoxDialog, YesNoWithNoAsDefaultAnswersBySeveralRoads) {
  const Seen no = Ask("Delete the file?", 292, "Delete", Qt::Key_Return);
  EXPECT_EQ(no.result, 7);
  EXPECT_EQ(no.captions, QStringList({"&Yes", "&No"}));
  EXPECT_EQ(no.defaultIndex, 1);
  EXPECT_EQ(no.focusIndex, 1);
  EXPECT_TRUE(no.focusOnDefault);
  EXPECT_EQ(box->IconIndex(), 1);
  EXPECT_EQ(box->Form(), nullptr);  // unloaded after the answer

  // Tab moves the focus, and the watch keeps it where the user put it.
  int focusAfterTab = -1;
  WhenMessageBoxShown([&](MessageBox& form) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QSignalSpy watch(form.Timer2, &QTimer::timeout);
    EXPECT_TRUE(QTest::qWaitFor([&] { return watch.count() >= 2; }));
    focusAfterTab = form.FocusIndex;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  });
  EXPECT_EQ(box->MsgBox("Delete the file?", 292, "Delete"), 6);
  EXPECT_EQ(focusAfterTab, 0);

  WhenMessageBoxShown([](MessageBox& form) { Click(form.MsgButton[2]); });
  EXPECT_EQ(box->MsgBox("Save first?", 35), 2);

  // A default beyond the set leaves the focus on the first button.
  const Seen yes = Ask("Keep it?", 512 + 4, {}, Qt::Key_Space);
  EXPECT_EQ(yes.result, 6);
  EXPECT_EQ(yes.defaultIndex, -1);
  EXPECT_EQ(yes.focusIndex, 0);
}

TEST_F(MsgBoxDialog, EscapeCloseBoxAndWindowCloseGiveTwo) {
  EXPECT_EQ(Ask("Overwrite?", 4).result, 2);
  // Escape while a button holds the focus reaches the form too.
  WhenMessageBoxShown([](MessageBox& form) { QTest::keyClick(form.MsgButton[0], Qt::Key_Escape); });
  EXPECT_EQ(box->MsgBox("Done.", 0), 2);

  WhenMessageBoxShown([](MessageBox& form) { QTest::mouseClick(form.ControlBoxUp, Qt::LeftButton); });
  EXPECT_EQ(box->MsgBox("Done.", 0), 2);

  WhenMessageBoxShown([](MessageBox& form) { form.close(); });
  EXPECT_EQ(box->MsgBox("Done.", 0), 2);
}

TEST_F(MsgBoxDialog, CountDownClosesWithZeroUnlessAnsweredFirst) {
  box->SetTimerSeconds(1);
  QElapsedTimer clock;
  clock.start();
  EXPECT_EQ(box->MsgBox("Closing soon", 1), 0);
  EXPECT_GE(clock.elapsed(), 950);  // a coarse timer may fire 5 % early

  box->SetTimerSeconds(2);
  WhenMessageBoxShown([](MessageBox& form) { Click(form.MsgButton[1]); });
  EXPECT_EQ(box->MsgBox("Closing soon", 1), 2);
  EXPECT_EQ(box->TimerSeconds(), 2);  // the property stays for the next call
}

TEST_F(MsgBoxDialog, AWidePromptIsClippedToTheScreen) {
  const int screenTwips = twips::FromPixels(QGuiApplication::primaryScreen()->geometry().width());
  box->SetTextAlignment(2);
  const Seen seen = Ask(QString(400, QChar('W')), 0, "Wide");
  EXPECT_EQ(seen.placed.width(), twips::ToPixels(screenTwips - 240));
  EXPECT_EQ(seen.textX, 10);  // centring never goes left of the text's margin
}

TEST_F(MsgBoxDialog, TitleFallsBackAndPositionFollowsTheOwner) {
  EXPECT_EQ(Ask("No window active", 0).title, "Message");

  // Centred on the active window, whose caption is the title when none is given.
  QWidget owner;
  owner.setWindowTitle("Album editor");
  owner.setGeometry(105, 90, 600, 420);
  owner.show();
  owner.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&owner));
  box->SetStartUpPosition(1);
  const Seen centred = Ask("Centred", 0);
  EXPECT_EQ(centred.title, "Album editor");
  const QRect frame = owner.frameGeometry();
  const QRect& placed = centred.placed;
  EXPECT_EQ(placed.x(), frame.x() + (frame.width() - placed.width()) / 2);
  EXPECT_EQ(placed.y(), frame.y() + (frame.height() - placed.height()) / 2);
  box->SetDefaultTitle("Vistrel");
  EXPECT_EQ(Ask("Titled", 0).title, "Vistrel");

  // With no active window, centring on the owner turns into centring on the screen for good.
  owner.hide();
  QApplication::setActiveWindow(nullptr);
  EXPECT_EQ(Ask("Alone", 0, "Given").title, "Given");
  EXPECT_EQ(box->StartUpPosition(), 2);

  box->SetStartUpPosition(0);
  box->SetLeft(1500);
  box->SetTop(3000);
  EXPECT_EQ(Ask("Placed", 0).placed.topLeft(), QPoint(100, 200));
}

TEST_F(MsgBoxDialog, ModelessShowReturnsAtOnceAndABoxIsNotReentered) {
  box->SetModal(false);
  EXPECT_EQ(box->MsgBox("Working...", 0), 0);
  ASSERT_NE(box->Form(), nullptr);
  EXPECT_TRUE(box->Form()->isVisible());
  Click(box->Form()->MsgButton[0]);
  EXPECT_EQ(box->Result(), 1);

  box->SetModal(true);
  qint16 inner = -1;
  WhenMessageBoxShown([&](MessageBox& form) {
    inner = box->MsgBox("Second question", 4);
    Click(form.MsgButton[0]);
  });
  EXPECT_EQ(box->MsgBox("First question", 0), 1);
  EXPECT_EQ(inner, 0);
}

TEST_F(MsgBoxDialog, AWhiteGradientBodyWithARuledHeadingIsDrawnAndDragged) {
  box->SetBackColorBody(0xFFFFFF);
  box->SetGradientPaint(true);
  box->SetHeadingType(1);
  box->SetMoveable(true);

  QImage body;
  bool rulesShown = false, headingActive = false;
  QPoint before, after;
  WhenMessageBoxShown([&](MessageBox& form) {
    body = form.Background->Drawing().Picture;
    rulesShown = form.HLine[0]->isVisible() && form.HLine[2]->width() == form.width();
    headingActive = form.HeadingActive();
    // Dragging the body moves the window; the button comes up where the
    // mouse stopped on the screen.
    before = form.pos();
    QTest::mousePress(form.Background, Qt::LeftButton, {}, QPoint(5, 5));
    const QPointF end = form.Background->mapToGlobal(QPointF(45, 25));
    QMouseEvent move(QEvent::MouseMove, QPointF(45, 25), end, Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(form.Background, &move);
    QMouseEvent release(QEvent::MouseButtonRelease, form.Background->mapFromGlobal(end), end,
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(form.Background, &release);
    after = form.pos();
    QTest::keyClick(&form, Qt::Key_Escape);
  });
  box->MsgBox("The album \"Holiday\" already exists.\nChoose another name.", 48);
  ASSERT_FALSE(body.isNull());
  // The body darkens from white, band by band from the top, 84 times by 3.
  EXPECT_EQ(body.pixel(body.width() - 2, 0), QColor(Qt::white).rgb());
  int darkest = 255;
  for (int y = 0; y < body.height(); ++y)
    darkest = std::min(darkest, qRed(body.pixel(body.width() - 2, y)));
  EXPECT_EQ(darkest, 3);
  EXPECT_TRUE(rulesShown);
  EXPECT_TRUE(headingActive);
  EXPECT_EQ(after - before, QPoint(40, 20));
}
