#include <gtest/gtest.h>

#include "support/MessageBoxAnswer.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <functional>

#include "controls/MessageBox.h"
#include "controls/MessageBoxAppearance.h"
#include "controls/MsgBoxEnhanced.h"
#include "platform/Twips.h"
#include "shell/AppState.h"

namespace {

void WhenShown(std::function<void(MessageBox&)> answer) {
  testenv::WhenMessageBoxShown(std::move(answer));
}

void Click(QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

class MsgBoxDialog : public testing::Test {
 protected:
  void SetUp() override {
    box = CreateMsgBox();
    box->SetSoundBeep(false);
  }
  void TearDown() override { ReleaseMsgBox(); }
  MsgBoxEnhanced* box = nullptr;
};

}  // namespace

TEST_F(MsgBoxDialog, YesNoWithNoAsDefaultAnswersBySeveralRoads) {
  QStringList captions;
  int defaultIndex = -2, focusIndex = -2;
  bool noHasFocus = false;
  WhenShown([&](MessageBox& form) {
    for (QPushButton* b : form.MsgButton)
      if (b->isVisible()) captions << b->text();
    defaultIndex = form.DefaultIndex;
    focusIndex = form.FocusIndex;
    noHasFocus = form.MsgButton[1]->hasFocus() && form.MsgButton[1]->isDefault();
    QTest::keyClick(&form, Qt::Key_Return);
  });
  EXPECT_EQ(box->MsgBox("Delete the file?", 292, "Delete"), 7);
  EXPECT_EQ(captions, QStringList({"&Yes", "&No"}));
  EXPECT_EQ(defaultIndex, 1);
  EXPECT_EQ(focusIndex, 1);
  EXPECT_TRUE(noHasFocus);
  EXPECT_EQ(box->IconIndex(), 1);
  EXPECT_EQ(box->Form(), nullptr);  // unloaded after the answer

  // Tab moves the focus, and the watch keeps it where the user put it.
  int focusAfterTab = -1;
  WhenShown([&](MessageBox& form) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::qWait(250);
    focusAfterTab = form.FocusIndex;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  });
  EXPECT_EQ(box->MsgBox("Delete the file?", 292, "Delete"), 6);
  EXPECT_EQ(focusAfterTab, 0);

  WhenShown([](MessageBox& form) { Click(form.MsgButton[2]); });
  EXPECT_EQ(box->MsgBox("Save first?", 35), 2);
}

TEST_F(MsgBoxDialog, EscapeCloseBoxAndWindowCloseGiveTwo) {
  WhenShown([](MessageBox& form) { QTest::keyClick(&form, Qt::Key_Escape); });
  EXPECT_EQ(box->MsgBox("Overwrite?", 4), 2);
  // Escape while a button holds the focus reaches the form too.
  WhenShown([](MessageBox& form) { QTest::keyClick(form.MsgButton[0], Qt::Key_Escape); });
  EXPECT_EQ(box->MsgBox("Done.", 0), 2);

  bool pressedPicture = false;
  WhenShown([&](MessageBox& form) {
    QTest::mousePress(form.ControlBoxUp, Qt::LeftButton);
    pressedPicture = form.ControlBoxUp->pixmap().toImage() == form.ControlBoxDn->pixmap().toImage();
    QTest::mouseRelease(form.ControlBoxUp, Qt::LeftButton);
  });
  EXPECT_EQ(box->MsgBox("Done.", 0), 2);
  EXPECT_TRUE(pressedPicture);

  WhenShown([](MessageBox& form) { form.close(); });
  EXPECT_EQ(box->MsgBox("Done.", 0), 2);
}

TEST_F(MsgBoxDialog, CountDownClosesWithZeroUnlessAnsweredFirst) {
  box->SetTimerSeconds(1);
  QElapsedTimer clock;
  clock.start();
  EXPECT_EQ(box->MsgBox("Closing soon", 1), 0);
  EXPECT_GE(clock.elapsed(), 950);
  EXPECT_LT(clock.elapsed(), 3000);

  box->SetTimerSeconds(2);
  WhenShown([](MessageBox& form) { Click(form.MsgButton[1]); });
  EXPECT_EQ(box->MsgBox("Closing soon", 1), 2);
  EXPECT_EQ(box->TimerSeconds(), 2);  // the property stays for the next call
}

TEST_F(MsgBoxDialog, WidthComesFromTheTitleOrIsClippedToTheScreen) {
  int formWidth = 0, captionWidth = 0, textX = -1;
  const auto measure = [&](MessageBox& form) {
    formWidth = form.width();
    captionWidth = form.TopCaption->width();
    textX = form.MsgText->x();
    Click(form.MsgButton[0]);
  };
  WhenShown(measure);
  box->MsgBox("Ok", 0, "A title that is a good deal longer than the prompt below it");
  EXPECT_EQ(formWidth, twips::ToPixels(twips::FromPixels(captionWidth) + 300 + 270));
  box->SetControlBox(false);
  WhenShown(measure);
  box->MsgBox("Ok", 0, "A title that is a good deal longer than the prompt below it");
  EXPECT_EQ(formWidth, twips::ToPixels(twips::FromPixels(captionWidth) + 300));

  const int screenTwips = twips::FromPixels(QGuiApplication::primaryScreen()->geometry().width());
  box->SetTextAlignment(2);
  WhenShown(measure);
  box->MsgBox(QString(400, QChar('W')), 0, "Wide");
  EXPECT_EQ(formWidth, twips::ToPixels(screenTwips - 240));
  EXPECT_EQ(textX, 10);  // centring never goes left of the text's margin
}

TEST_F(MsgBoxDialog, DefaultBeyondTheSetLeavesFocusOnTheFirstButton) {
  int defaultIndex = 0, focusIndex = -1;
  WhenShown([&](MessageBox& form) {
    defaultIndex = form.DefaultIndex;
    focusIndex = form.FocusIndex;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  });
  EXPECT_EQ(box->MsgBox("Keep it?", 512 + 4), 6);
  EXPECT_EQ(defaultIndex, -1);
  EXPECT_EQ(focusIndex, 0);

  // A set the box does not know shows no buttons; Escape still answers.
  int visible = -1;
  WhenShown([&](MessageBox& form) {
    visible = 0;
    for (QPushButton* b : form.MsgButton) visible += b->isVisible() ? 1 : 0;
    QTest::keyClick(&form, Qt::Key_Escape);
  });
  EXPECT_EQ(box->MsgBox("Strange", 6), 2);
  EXPECT_EQ(visible, 0);
}

TEST_F(MsgBoxDialog, TitleFallsBackAndPositionFollowsTheOwner) {
  QString title;
  QRect placed;
  const auto look = [&](MessageBox& form) {
    title = form.TopCaption->text();
    placed = form.geometry();
    QTest::keyClick(&form, Qt::Key_Escape);
  };
  WhenShown(look);
  box->MsgBox("No window active", 0);
  EXPECT_EQ(title, "Message");

  // Centred on the active window, whose caption is the title when none is given.
  QWidget owner;
  owner.setWindowTitle("Album editor");
  owner.setGeometry(105, 90, 600, 420);
  owner.show();
  owner.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&owner));
  box->SetStartUpPosition(1);
  WhenShown(look);
  box->MsgBox("Centred", 0);
  EXPECT_EQ(title, "Album editor");
  const QRect frame = owner.frameGeometry();
  EXPECT_EQ(placed.x(), frame.x() + (frame.width() - placed.width()) / 2);
  EXPECT_EQ(placed.y(), frame.y() + (frame.height() - placed.height()) / 2);

  box->SetDefaultTitle("Vistrel");
  WhenShown(look);
  box->MsgBox("Titled", 0);
  EXPECT_EQ(title, "Vistrel");

  // With no active window, centring on the owner turns into centring on the screen for good.
  owner.hide();
  QApplication::setActiveWindow(nullptr);
  WhenShown(look);
  box->MsgBox("Alone", 0, "Given");
  EXPECT_EQ(title, "Given");
  EXPECT_EQ(box->StartUpPosition(), 2);

  box->SetStartUpPosition(0);
  box->SetLeft(1500);
  box->SetTop(3000);
  WhenShown(look);
  box->MsgBox("Placed", 0);
  EXPECT_EQ(placed.topLeft(), QPoint(100, 200));
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
  WhenShown([&](MessageBox& form) {
    inner = box->MsgBox("Second question", 4);
    Click(form.MsgButton[0]);
  });
  EXPECT_EQ(box->MsgBox("First question", 0), 1);
  EXPECT_EQ(inner, 0);
}

TEST_F(MsgBoxDialog, ProgramAppearanceIsAWhiteGradientBodyWithARuledHeading) {
  SetMessageBoxAppearance();
  EXPECT_EQ(box->BackColorBody(), 0xFFFFFFu);
  EXPECT_TRUE(box->GradientPaint());
  EXPECT_EQ(box->HeadingType(), 1);
  EXPECT_EQ(box->TextAlignment(), 2);
  EXPECT_TRUE(box->Moveable());
  EXPECT_EQ(box->DefaultTitle(), "Vistrel");
  EXPECT_EQ(box->StartUpPosition(), 1);
  EXPECT_EQ(box->BackColorHeading(), 0x80000002u);  // the rest stays at the defaults

  QImage body, shot;
  bool rulesShown = false, headingActive = false;
  QPoint before, after;
  WhenShown([&](MessageBox& form) {
    body = form.Background->Drawing().Picture;
    rulesShown = form.HLine[0]->isVisible() && form.HLine[2]->width() == form.width();
    headingActive = form.HeadingActive();
    shot = form.grab().toImage();
    // Dragging the body moves the window.
    before = form.pos();
    QTest::mousePress(form.Background, Qt::LeftButton, {}, QPoint(5, 5));
    const QPointF end = form.Background->mapToGlobal(QPointF(45, 25));
    QMouseEvent move(QEvent::MouseMove, QPointF(45, 25), end, Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(form.Background, &move);
    // The button comes up where the mouse stopped on the screen.
    QMouseEvent release(QEvent::MouseButtonRelease, form.Background->mapFromGlobal(end), end,
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(form.Background, &release);
    after = form.pos();
    QTest::keyClick(&form, Qt::Key_Escape);
  });
  box->MsgBox("The album \"Holiday\" already exists.\nChoose another name.", 48);
  shot.save("/tmp/msgbox-appearance.png");
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
