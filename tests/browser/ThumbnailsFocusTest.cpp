// The browser's keys as a user presses them: Tab through the cells, Ctrl+F1
// to Ctrl+F4 between the tabs, Enter in the position boxes, Home; and what a
// press on a box of the bottom strip closes.

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include "browser/BrowserFixture.h"
#include "controls/NumberBox.h"
#include "controls/ThumbnailScroll.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"
#include "core/AppState.h"
#include "core/WindowRegistry.h"

using namespace browsertest;

namespace {

class ThumbnailsFocusTest : public BrowserTest {
 protected:
  // Opens the browser on the folder as the active window, so that the
  // focus moves as it does on a desktop.
  void OpenActive(Thumbnails& window, const QString& folder) {
    Open(window, folder);
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  // Presses a key on whatever has the focus.
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* focus = QApplication::focusWidget();
    ASSERT_NE(focus, nullptr);
    QTest::keyClick(focus, key, modifiers);
  }
  static int FocusedCell(const Thumbnails& window, int tab) {
    for (int cell = 0; cell < window.CellCount(tab); ++cell)
      if (window.Cell(tab, cell)->hasFocus()) return cell;
    return -1;
  }
  static void EnterPosition(Thumbnails& window, int tab, const QString& value) {
    EnterNumber(window.PositionNumber[size_t(tab - 1)], value);
  }
};

}  // namespace

TEST_F(ThumbnailsFocusTest, TabAndShiftTabWalkTheCells) {
  Thumbnails window;
  OpenActive(window, MakePictureFolder("walk", 6));
  ASSERT_TRUE(window.FocusCell(PicturesTab, 0));
  Press(Qt::Key_Tab);
  Press(Qt::Key_Tab);
  EXPECT_EQ(App().CurrentPicture(), 2);
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(FocusedCell(window, PicturesTab), 1);
  EXPECT_EQ(App().CurrentPicture(), 1);
}

TEST_F(ThumbnailsFocusTest, EachTabKeepsItsCurrentItemAcrossCtrlFKeys) {
  const QString folder = MakePictureFolder("keep", 60);
  MakeFolderWith("keep", Numbered("v%1.avi", 7) + Numbered("a%1.mp3", 80));
  Thumbnails window;
  OpenActive(window, folder);

  // Pictures on 53 (page 3 of 15 cells), videos on 6, audios on 77 (page 2
  // of 30 names).
  window.VScroll[0]->SetValue(3);
  WaitForPage(window);
  ASSERT_TRUE(window.FocusCell(PicturesTab, 8));
  window.SetCurrentTab(VideosTab);
  ASSERT_TRUE(window.FocusCell(VideosTab, 6));
  window.SetCurrentTab(AudiosTab);
  window.VScroll[2]->SetValue(2);
  ASSERT_TRUE(window.FocusCell(AudiosTab, 17));
  ASSERT_EQ(App().CurrentPicture(), 53);
  ASSERT_EQ(App().CurrentVideo(), 6);
  ASSERT_EQ(App().CurrentAudio(), 77);

  for (const Qt::Key key : {Qt::Key_F1, Qt::Key_F2, Qt::Key_F3, Qt::Key_F4, Qt::Key_F1, Qt::Key_F3}) {
    Press(key, Qt::ControlModifier);
    EXPECT_EQ(App().CurrentPicture(), 53);
    EXPECT_EQ(App().CurrentVideo(), 6);
    EXPECT_EQ(App().CurrentAudio(), 77);
  }
  // The keys go on from the current cell of the tab in front.
  EXPECT_EQ(window.CurrentTab(), AudiosTab);
  EXPECT_EQ(FocusedCell(window, AudiosTab), 17);
  Press(Qt::Key_F1, Qt::ControlModifier);
  WaitForPage(window);
  EXPECT_EQ(FocusedCell(window, PicturesTab), 8);
  EXPECT_EQ(window.PositionNumber[0]->Value(), "54");
}

TEST_F(ThumbnailsFocusTest, MovesWithinThePageShownFillNothingAgain) {
  Thumbnails window;
  OpenActive(window, MakePictureFolder("stay", 20));
  QSignalSpy filled(&window, &Thumbnails::PageFilled);

  // The position box: an item of the page shown takes the frame there.
  EnterPosition(window, PicturesTab, "7");
  WaitForPage(window);
  EXPECT_EQ(filled.count(), 0);
  EXPECT_EQ(App().CurrentPicture(), 6);
  EXPECT_EQ(FocusedCell(window, PicturesTab), 6);

  // Home in the default folder, on its first page already.
  window.Form_KeyDown(keys::Home, 0);
  WaitForPage(window);
  EXPECT_EQ(filled.count(), 0);

  // An item of the next page does fill it.
  EnterPosition(window, PicturesTab, "17");
  WaitForPage(window);
  EXPECT_EQ(filled.count(), 1);
  EXPECT_EQ(window.VScroll[0]->Value(), 1);
  EXPECT_EQ(App().CurrentPicture(), 16);
  // Home now turns back to the first page.
  window.Form_KeyDown(keys::Home, 0);
  WaitForPage(window);
  EXPECT_EQ(filled.count(), 2);
  EXPECT_EQ(window.VScroll[0]->Value(), 0);
}

TEST_F(ThumbnailsFocusTest, TheDocumentsPositionBoxFollowsTheFrame) {
  Thumbnails window;
  OpenActive(window, MakeFolderWith("documents", Numbered("d%1.txt", 40)));
  ASSERT_EQ(window.CurrentTab(), DocumentsTab);
  EXPECT_FALSE(window.PositionNumber[3]->isHidden());
  window.DocumentIcon_KeyDown(0, keys::Down, 0);
  window.DocumentIcon_KeyDown(1, keys::Down, 0);
  EXPECT_EQ(App().CurrentDocument(), 2);
  EXPECT_EQ(window.PositionNumber[3]->Value(), "3");
  // Enter in the box turns the page; no cell of the documents takes the focus.
  EnterPosition(window, DocumentsTab, "35");
  EXPECT_EQ(window.VScroll[3]->Value(), 1);
  EXPECT_EQ(App().CurrentDocument(), 30);
}

TEST_F(ThumbnailsFocusTest, APressOnABoxClosesOnlyItsOwnViewer) {
  const QString folder = MakePictureFolder("boxes", 20);
  MakeFolderWith("boxes", Numbered("v%1.avi", 40) + Numbered("a%1.wav", 40));
  Thumbnails window;
  OpenActive(window, folder);
  const auto loadViewers = [] {
    for (WindowId id : {WindowId::SingleImage, WindowId::SingleVideo})
      if (!Windows().IsLoaded(id)) Windows().Loaded(id, new QWidget);
  };
  const auto press = [&window](int tab) {
    window.SetCurrentTab(tab);
    QTest::mouseClick(window.PositionNumber[size_t(tab - 1)]->txtNumber(), Qt::LeftButton);
  };

  loadViewers();
  press(AudiosTab);
  EXPECT_TRUE(Windows().IsLoaded(WindowId::SingleImage));
  EXPECT_TRUE(Windows().IsLoaded(WindowId::SingleVideo));
  press(VideosTab);
  EXPECT_TRUE(Windows().IsLoaded(WindowId::SingleImage));
  EXPECT_FALSE(Windows().IsLoaded(WindowId::SingleVideo));
  loadViewers();
  press(PicturesTab);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::SingleImage));
  EXPECT_TRUE(Windows().IsLoaded(WindowId::SingleVideo));
  Windows().Unload(WindowId::SingleVideo);
}

TEST_F(ThumbnailsFocusTest, TheBottomStripKeepsItsGroupsApartInANarrowWindow) {
  Thumbnails window;
  Open(window, MakePictureFolder("narrow", 40));
  // The browser of the smallest main window: 9405 twips wide.
  window.resize(627, 343);
  window.ChangeFormSize();
  window.SetCurrentTab(PicturesTab);
  ASSERT_FALSE(window.InchLabel->isHidden());
  ASSERT_FALSE(window.PositionLabel[0]->isHidden());
  // Neither text runs into the next: the count into "Thumbnail Size:",
  // "inches" into the right-aligned "Position:".
  const auto textWidth = [](const QLabel* label) {
    return label->fontMetrics().horizontalAdvance(label->text());
  };
  const QLabel* position = window.PositionLabel[0];
  EXPECT_LT(window.InchLabel->x() + textWidth(window.InchLabel),
            position->x() + position->width() - textWidth(position));
  EXPECT_LT(window.CountLabel[0]->x() + textWidth(window.CountLabel[0]), window.SizeLabel->x());
  // The size group stands as far from the tab control's left edge as its
  // right end from the right edge, less the margin of 75 twips.
  const int left = twips::FromPixels(window.SizeLabel->x()) - 60;
  const int right = 9345 - twips::FromPixels(window.InchLabel->geometry().right() + 1);
  EXPECT_NEAR(right - left, 75, 30);
}
