#include <gtest/gtest.h>

#include <QAccessible>
#include <QTest>

#include "controls/AccessibleControls.h"
#include "controls/Button.h"
#include "controls/MessageBox.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/NewLabel2.h"
#include "controls/NewSlider.h"
#include "controls/NewTabControl.h"
#include "controls/NumberBox.h"
#include "controls/RadioButton.h"
#include "controls/TransCheck.h"
#include "controls/TransRadio.h"
#include "controls/UpDown.h"
#include "support/MessageBoxAnswer.h"

namespace {

// The controls are read through Qt's accessibility layer, as a screen
// reader reads them.
QAccessibleInterface* Reader(QObject* control) {
  accessible::InstallControls();
  return QAccessible::queryAccessibleInterface(control);
}

QString Name(QAccessibleInterface* iface) { return iface->text(QAccessible::Name); }

void Press(QAccessibleInterface* iface, const QString& action) { iface->actionInterface()->doAction(action); }

// The names of the visible descendants in a role, depth first.
QStringList VisibleNames(QAccessibleInterface* iface, QAccessible::Role role) {
  QStringList names;
  for (int i = 0; i < iface->childCount(); ++i) {
    QAccessibleInterface* child = iface->child(i);
    if (child->state().invisible) continue;
    if (child->role() == role) names << Name(child);
    names << VisibleNames(child, role);
  }
  return names;
}

}  // namespace

TEST(Accessibility, PictureButtonsReadAsPushButtonsWithTheirNameAndState) {
  QWidget form;
  auto* open = new Button(&form);
  open->setAccessibleName("Open");
  open->resize(30, 30);
  auto* refresh = new Button(&form);
  refresh->setToolTip("Refresh");
  form.show();

  QAccessibleInterface* iface = Reader(open);
  EXPECT_EQ(iface->role(), QAccessible::PushButton);
  EXPECT_EQ(Name(iface), "Open");
  // Without a name given, the tooltip names the button.
  EXPECT_EQ(Name(Reader(refresh)), "Refresh");

  QTest::mousePress(open, Qt::LeftButton, {}, QPoint(10, 10));
  EXPECT_TRUE(iface->state().pressed);
  QTest::mouseRelease(open, Qt::LeftButton, {}, QPoint(10, 10));
  EXPECT_FALSE(iface->state().pressed);

  // The reader's press clicks it, but not while it is disabled.
  int clicks = 0;
  QObject::connect(open, &Button::Click, [&clicks] { ++clicks; });
  Press(iface, QAccessibleActionInterface::pressAction());
  EXPECT_EQ(clicks, 1);
  open->SetEnabled(false);
  EXPECT_TRUE(iface->state().disabled);
  Press(iface, QAccessibleActionInterface::pressAction());
  EXPECT_EQ(clicks, 1);
}

TEST(Accessibility, TabStripListsItsTabsWithCaptionsDescriptionsAndTheSelectedOne) {
  NewTabControl tabs;
  tabs.SetTabs(2);
  tabs.SetCaption(1, "Pictures");
  tabs.SetCaption(2, "Videos");
  tabs.SetTabDescription([](int tab) { return tab == 1 ? QString("12 files") : QString("3 files"); });
  tabs.resize(300, 40);
  tabs.show();

  QAccessibleInterface* iface = Reader(&tabs);
  EXPECT_EQ(iface->role(), QAccessible::PageTabList);
  // The four caption labels are the tabs' drawing, not children of their own.
  ASSERT_EQ(iface->childCount(), 2);
  QAccessibleInterface* pictures = iface->child(0);
  QAccessibleInterface* videos = iface->child(1);
  EXPECT_EQ(pictures->role(), QAccessible::PageTab);
  EXPECT_EQ(Name(pictures), "Pictures");
  EXPECT_EQ(Name(videos), "Videos");
  EXPECT_EQ(pictures->text(QAccessible::Description), "12 files");
  EXPECT_EQ(videos->text(QAccessible::Description), "3 files");
  EXPECT_EQ(iface->indexOfChild(videos), 1);
  EXPECT_EQ(videos->parent(), iface);
  EXPECT_FALSE(videos->state().selected);

  tabs.SetCurrentTab(2);
  EXPECT_FALSE(pictures->state().selected);
  EXPECT_TRUE(videos->state().selected);
  tabs.SetCaption(1, "Pictures (12)");
  EXPECT_EQ(Name(pictures), "Pictures (12)");

  // The reader's press brings a tab forward as a click does; pressing the
  // tab in front does nothing more.
  int clicks = 0;
  QObject::connect(&tabs, &NewTabControl::Click, [&clicks](qint16&, qint16&) { ++clicks; });
  Press(pictures, QAccessibleActionInterface::pressAction());
  Press(pictures, QAccessibleActionInterface::pressAction());
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(tabs.CurrentTab(), 1);
  EXPECT_TRUE(pictures->state().selected);
  EXPECT_FALSE(videos->state().selected);
}

TEST(Accessibility, CheckBoxesOptionButtonsAndLabelsReadTheirCaptionAndState) {
  QWidget form;
  auto* remember = new TransCheck(&form);
  remember->SetCaption("Remember");
  auto* left = new TransRadio(&form);
  left->SetCaption("Left");
  auto* right = new TransRadio(&form);
  right->SetCaption("Right");
  auto* small = new RadioButton(&form);
  small->setAccessibleName("Small");
  auto* large = new RadioButton(&form);
  auto* label = new NewLabel2(&form);
  label->SetCaption("Size:");

  QAccessibleInterface* check = Reader(remember);
  EXPECT_EQ(check->role(), QAccessible::CheckBox);
  EXPECT_EQ(Name(check), "Remember");
  // The wrapped Qt check box is not read a second time.
  EXPECT_EQ(check->childCount(), 0);
  EXPECT_FALSE(check->state().checked);
  remember->SetValue(1);
  EXPECT_TRUE(check->state().checked);
  remember->SetValue(2);
  EXPECT_FALSE(check->state().checked);
  EXPECT_TRUE(check->state().checkStateMixed);
  Press(check, QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(remember->Value(), 1);

  QAccessibleInterface* leftOption = Reader(left);
  QAccessibleInterface* rightOption = Reader(right);
  EXPECT_EQ(leftOption->role(), QAccessible::RadioButton);
  EXPECT_EQ(Name(rightOption), "Right");
  right->SetValue(true);
  Press(leftOption, QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(leftOption->state().checked);
  EXPECT_FALSE(rightOption->state().checked);

  QAccessibleInterface* smallOption = Reader(small);
  EXPECT_EQ(smallOption->role(), QAccessible::RadioButton);
  EXPECT_EQ(Name(smallOption), "Small");
  large->SetValue(true);
  small->SetValue(true);
  EXPECT_TRUE(smallOption->state().checked);
  EXPECT_FALSE(Reader(large)->state().checked);

  QAccessibleInterface* labelReader = Reader(label);
  EXPECT_EQ(labelReader->role(), QAccessible::StaticText);
  label->SetCaption("Width:");
  EXPECT_EQ(Name(labelReader), "Width:");
}

TEST(Accessibility, SliderAndSpinBoxesGiveTheirValueAndLimits) {
  QWidget form;
  auto* slider = new NewSlider(&form);
  slider->SetMax(100);
  slider->SetValue(40);
  QAccessibleInterface* sliderReader = Reader(slider);
  EXPECT_EQ(sliderReader->role(), QAccessible::Slider);
  ASSERT_NE(sliderReader->valueInterface(), nullptr);
  EXPECT_EQ(sliderReader->valueInterface()->currentValue().toInt(), 40);
  EXPECT_EQ(sliderReader->valueInterface()->maximumValue().toInt(), 100);
  EXPECT_EQ(sliderReader->text(QAccessible::Value), "40");
  // The reader may set it, held to the limits as the mouse is.
  sliderReader->valueInterface()->setCurrentValue(250);
  EXPECT_EQ(slider->Value(), 100);

  auto* box = new NumberBox(&form);
  box->setAccessibleName("Thumbnail Size");
  box->SetValue("1234.5");
  QAccessibleInterface* boxReader = Reader(box);
  EXPECT_EQ(boxReader->role(), QAccessible::SpinBox);
  EXPECT_EQ(Name(boxReader), "Thumbnail Size");
  // The value as the box shows it, and as a number.
  EXPECT_EQ(boxReader->text(QAccessible::Value), "1,234.50");
  EXPECT_DOUBLE_EQ(boxReader->valueInterface()->currentValue().toDouble(), 1234.5);
  // Its text box, which takes the keys, is its child.
  ASSERT_EQ(boxReader->childCount(), 1);
  EXPECT_EQ(boxReader->child(0)->role(), QAccessible::EditableText);

  auto* upDown = new UpDown(&form);
  upDown->SetRange(1, 10);
  upDown->SetValue(3);
  QAccessibleInterface* upDownReader = Reader(upDown);
  EXPECT_EQ(upDownReader->role(), QAccessible::SpinBox);
  EXPECT_EQ(upDownReader->valueInterface()->currentValue().toInt(), 3);
  EXPECT_EQ(upDownReader->valueInterface()->minimumValue().toInt(), 1);
  ASSERT_EQ(upDownReader->childCount(), 2);
  EXPECT_EQ(Name(upDownReader->child(0)), "Up");
  EXPECT_EQ(Name(upDownReader->child(1)), "Down");
}

TEST(Accessibility, MessageBoxReadsAsADialogWithItsTitlePromptAndAnswers) {
  MsgBoxEnhanced box;
  box.SetSoundBeep(false);
  QString name, description;
  QStringList texts, buttons;
  testenv::WhenMessageBoxShown([&](MessageBox& form) {
    QAccessibleInterface* iface = Reader(&form);
    EXPECT_EQ(iface->role(), QAccessible::Dialog);
    name = Name(iface);
    description = iface->text(QAccessible::Description);
    texts = VisibleNames(iface, QAccessible::StaticText);
    buttons = VisibleNames(iface, QAccessible::PushButton);
    QTest::keyClick(&form, Qt::Key_Escape);
  });
  // 1: OK and Cancel.
  EXPECT_EQ(box.MsgBox("File not found.", 1, "Open Picture"), 2);
  EXPECT_EQ(name, "Open Picture");
  EXPECT_EQ(description, "File not found.");
  // The title in the heading, then the prompt.
  EXPECT_EQ(texts, QStringList({"Open Picture", "File not found."}));
  EXPECT_EQ(buttons, QStringList({"OK", "Cancel"}));
}
