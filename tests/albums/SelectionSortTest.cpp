#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

#include "albums/SelectionRules.h"
#include "albums/SelectionSort.h"
#include "controls/MessageBox.h"
#include "controls/MsgBoxEnhanced.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/Settings.h"
#include "support/AreaHost.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "shell/SharedMessageBox.h"
#include "support/MessageBoxAnswer.h"

using namespace selectionrules;

namespace {

// A command bar that only counts the refreshes asked of it.
class CountingBar : public QWidget, public BarCommands {
 public:
  int Refreshes = 0;
  bool ClickIfEnabled(BarButton button) override {
    Click(button);
    return true;
  }
  void Click(BarButton button) override {
    if (button == BarButton::refreshButton) ++Refreshes;
  }
  QString DirectoryCaption() const override { return QString(); }
  void ShowOnDisplay(const QString&, bool) override {}
  void StepVolume(int) override {}
  void ToggleMute() override {}
};

class SelectionSortTest : public testing::Test {
 protected:
  void SetUp() override {
    CreateSharedMsgBox()->SetSoundBeep(false);
    Windows().Loaded(WindowId::CommandBar, &bar_);
    AppState& app = App();
    app.SelectPicturesMask = "11111111000000000001";
    app.SelectVideosMask = "11110000000000000000";
    app.SelectAudiosMask = "01111100000000000000";
    app.SortOrderCode = 3;
    app.SortDescendingFlag = true;
  }
  void TearDown() override {
    if (window_) {
      window_->saveButton->setEnabled(false);
      window_->close();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    testenv::FinishMessageBoxWatches();
    ReleaseSharedMsgBox();
  }

  SelectionSort* Open() {
    window_ = new SelectionSort;
    window_->show();
    return window_;
  }
  // The ticks of the boxes by group, then of the three "All" boxes and of
  // AllTypes.
  static QString Boxes(const SelectionSort* w) {
    QString text;
    const auto add = [&text](const QCheckBox* box) { text += box->isChecked() ? '1' : '0'; };
    for (int i = 1; i <= 9; ++i) add(w->SelectPic(i));
    text += ' ';
    for (int i = 1; i <= 4; ++i) add(w->SelectVid(i));
    text += ' ';
    for (int i = 1; i <= 6; ++i) add(w->SelectAud(i));
    text += " | ";
    for (const QCheckBox* box : {w->AllPictures, w->AllVideos, w->AllAudios}) add(box);
    text += ' ';
    add(w->AllTypes);
    return text;
  }
  bool Gone() const { return window_.isNull() || !Windows().IsLoaded(WindowId::SelectionSort); }

  // Answers the next question with the button given (0 the first) and
  // notes its prompt and title.
  void Answer(int button) {
    testenv::WhenMessageBoxShown([this, button](MessageBox& box) {
      prompt_ = box.MsgText->text();
      title_ = box.TopCaption->text();
      box.MsgButton[size_t(button)]->click();
    });
  }

  CountingBar bar_;
  QPointer<SelectionSort> window_;
  QString prompt_, title_;
};

}  // namespace

TEST_F(SelectionSortTest, LoadsFromTheMasksAndTheGroupRulesFollowTheClicks) {
  SelectionSort* w = Open();
  EXPECT_EQ(w->windowTitle(), " File Selection and Sort");
  EXPECT_EQ(w->SelectVid(3)->text(), "Windows Video Files (*.wmv'*.asx)");
  EXPECT_EQ(Boxes(w), "111111111 1111 011111 | 110 0");
  EXPECT_TRUE(w->SortOrder(3)->isChecked());
  EXPECT_TRUE(w->SortDescending->isChecked());
  EXPECT_FALSE(w->saveButton->isEnabled());
  EXPECT_EQ(w->exitButton->text(), "Close");

  // The last audio box completes its group and so all types.
  w->SelectAud(1)->click();
  EXPECT_EQ(Boxes(w), "111111111 1111 111111 | 111 1");
  EXPECT_TRUE(w->saveButton->isEnabled());
  EXPECT_EQ(w->exitButton->text(), "Cancel");
  // One box unticked clears its group and all types at once.
  w->SelectPic(4)->click();
  EXPECT_EQ(Boxes(w), "111011111 1111 111111 | 011 0");
  // A group's box sets the group; all types clears everything; one group
  // on its own does not tick all types.
  w->AllPictures->click();
  EXPECT_EQ(Boxes(w), "111111111 1111 111111 | 111 1");
  w->AllTypes->click();
  EXPECT_EQ(Boxes(w), "000000000 0000 000000 | 000 0");
  w->AllVideos->click();
  EXPECT_EQ(Boxes(w), "000000000 1111 000000 | 010 0");
}

TEST_F(SelectionSortTest, SaveWritesTheMasksAndTheOrderAndListsAgainOutsideAnAlbum) {
  settings::SaveSetting("SelectPictures", "11111111111111111111");
  SelectionSort* w = Open();
  w->SelectPic(2)->click();
  w->SelectVid(4)->click();
  w->SelectAud(2)->click();
  w->TabControl->setCurrentIndex(1);
  w->SortOrder(4)->click();
  w->SortDescending->click();
  w->saveButton->click();

  EXPECT_EQ(settings::GetSetting("SelectPictures"), "10111111000000000001");
  EXPECT_EQ(settings::GetSetting("SelectVideos"), "11100000000000000000");
  EXPECT_EQ(settings::GetSetting("SelectAudios"), "00111100000000000000");
  EXPECT_EQ(settings::GetSetting("SortOrder"), "4");
  EXPECT_EQ(settings::GetSetting("SortDescending"), "False");
  EXPECT_EQ(App().SelectPicturesMask, "10111111000000000001");
  EXPECT_TRUE(Gone());
  EXPECT_EQ(bar_.Refreshes, 1);

  // In an album the list waits for its next building.
  App().AlbumMode = true;
  w = Open();
  w->SortOrder(1)->click();
  w->saveButton->click();
  EXPECT_EQ(settings::GetSetting("SortOrder"), "1");
  EXPECT_TRUE(Gone());
  EXPECT_EQ(bar_.Refreshes, 1);
}

TEST_F(SelectionSortTest, IncompleteChoicesAreRefusedWithTheirMessage) {
  App().SortOrderCode = 0;
  SelectionSort* w = Open();
  Answer(0);
  w->AllTypes->click();  // every type on
  w->AllTypes->click();  // every type off
  w->saveButton->click();
  EXPECT_EQ(prompt_, "At least one file type must be selected for display.");
  EXPECT_EQ(title_, "File Selection and Sort Options");
  EXPECT_FALSE(Gone());

  // No order was stored: none is ticked, and the save says so.
  Answer(0);
  w->SelectVid(1)->click();
  w->saveButton->click();
  EXPECT_EQ(prompt_, "A file sort order must be selected.");
  EXPECT_EQ(w->TabControl->currentIndex(), 1);
  EXPECT_FALSE(Gone());
  EXPECT_EQ(settings::GetSetting("SelectVideos", "unsaved"), "unsaved");
  EXPECT_EQ(bar_.Refreshes, 0);
}

TEST_F(SelectionSortTest, ClosingWithChangesAsksAndCancelRefusesTheClose) {
  SelectionSort* w = Open();
  // Unchanged, Esc closes without a question.
  QTest::keyClick(w, Qt::Key_Escape);
  EXPECT_TRUE(Gone());

  w = Open();
  w->SelectPic(1)->click();
  Answer(2);  // Cancel
  QTest::keyClick(w, Qt::Key_Escape);
  EXPECT_EQ(prompt_, "The Vistrel selection/sort options have changed.\nDo you wish to save the changes?");
  EXPECT_EQ(title_, "Exit Sort/Selection Entry");
  EXPECT_FALSE(Gone());
  EXPECT_TRUE(App().CloseRefused);
  // Shift+Esc refused so goes no further.
  Answer(2);
  QTest::keyClick(w, Qt::Key_Escape, Qt::ShiftModifier);
  EXPECT_FALSE(Gone());
  EXPECT_FALSE(App().QuickExit);

  // No closes and keeps the settings as they were.
  Answer(1);
  EXPECT_TRUE(Windows().Unload(WindowId::SelectionSort));
  EXPECT_TRUE(Gone());
  EXPECT_EQ(settings::GetSetting("SelectPictures", "unsaved"), "unsaved");
  EXPECT_EQ(bar_.Refreshes, 0);

  // Yes saves on the way out.
  w = Open();
  w->SelectPic(1)->click();
  Answer(0);
  w->exitButton->click();
  EXPECT_TRUE(Gone());
  EXPECT_EQ(settings::GetSetting("SelectPictures"), "01111111000000000001");
  EXPECT_EQ(bar_.Refreshes, 1);
}

TEST_F(SelectionSortTest, InTheMainWindowItsFrameRefusesAndClosesWithIt) {
  testenv::AreaHost host;
  Windows().Loaded(WindowId::MainForm, &host);
  host.show();
  SelectionSort* w = Open();
  QPointer<QWidget> frame = FrameOf(w);
  ASSERT_NE(frame.data(), w);

  w->SortDescending->click();
  Answer(2);
  EXPECT_FALSE(frame->close());
  EXPECT_TRUE(frame->isVisible());

  Answer(1);
  EXPECT_TRUE(frame->close());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(frame.isNull());
  EXPECT_TRUE(host.area->subWindowList().isEmpty());
  Windows().Closed(&host);
}
