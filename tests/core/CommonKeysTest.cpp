#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "core/CommonKeys.h"
#include "controls/Button.h"
#include "fileops/ChooseDirectory.h"
#include "platform/KeyCodes.h"
#include "core/AppState.h"
#include "shell/CommandBar.h"
#include "core/WindowRegistry.h"
#include "support/PulseServer.h"

namespace {

constexpr int F2 = keys::F1 + 1, F5 = keys::F1 + 4, F9 = keys::F1 + 8, F10 = keys::F1 + 9;

// A window with a folder tree: counts the refreshes that the keys ask for.
class TreeWindow : public QWidget, public FolderTreeWindow {
 public:
  int refreshes = 0;
  void FolderTree_Refresh() override { ++refreshes; }
};

void RunDeferredDeletes() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

}  // namespace

TEST(CommonKeys, EscapeUnloadsTheWindowAndShiftEscapeEndsTheProgram) {
  QPointer<QWidget> viewer = new QWidget;
  Windows().Loaded(WindowId::SingleImage, viewer);
  viewer->show();
  HandleCommonKey(viewer, keys::Escape, keys::NoShift, false, false);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::SingleImage));
  RunDeferredDeletes();
  EXPECT_TRUE(viewer.isNull());

  // A window that is not registered is closed.
  QWidget loose;
  loose.show();
  HandleCommonKey(&loose, keys::Escape, keys::NoShift, false, false);
  EXPECT_FALSE(loose.isVisible());

  // Ctrl+Esc is no key of this table.
  QPointer<QWidget> main = new QWidget;
  Windows().Loaded(WindowId::MainForm, main);
  QPointer<QWidget> dialog = new QWidget;
  Windows().Loaded(WindowId::FindFiles, dialog);
  HandleCommonKey(dialog, keys::Escape, keys::CtrlMask, false, false);
  EXPECT_TRUE(Windows().IsLoaded(WindowId::FindFiles));
  EXPECT_FALSE(App().QuickExit);

  HandleCommonKey(dialog, keys::Escape, keys::ShiftMask, false, false);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::FindFiles));
  EXPECT_TRUE(App().QuickExit);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::MainForm));
  RunDeferredDeletes();
  EXPECT_TRUE(main.isNull());
}

TEST(CommonKeys, F2AndF9MinimiseTheMainWindowAndUnloadOnlyWhenAsked) {
  QPointer<QWidget> main = new QWidget;
  Windows().Loaded(WindowId::MainForm, main);
  main->show();
  QPointer<QWidget> viewer = new QWidget;
  Windows().Loaded(WindowId::SingleVideo, viewer);

  HandleCommonKey(viewer, F2, keys::NoShift, false, false);
  EXPECT_TRUE(main->isMinimized());
  EXPECT_TRUE(Windows().IsLoaded(WindowId::SingleVideo));

  main->showNormal();
  HandleCommonKey(viewer, F2, keys::ShiftMask, true, false);
  EXPECT_FALSE(main->isMinimized());
  EXPECT_TRUE(Windows().IsLoaded(WindowId::SingleVideo));

  HandleCommonKey(viewer, F9, keys::NoShift, true, false);
  EXPECT_TRUE(main->isMinimized());
  EXPECT_FALSE(Windows().IsLoaded(WindowId::SingleVideo));
  Windows().Unload(WindowId::MainForm);
  RunDeferredDeletes();
}

TEST(CommonKeys, F5RefreshesTheTreeOnlyOfAWindowThatHasOne) {
  TreeWindow window;
  HandleCommonKey(&window, F5, keys::NoShift, false, false);
  EXPECT_EQ(window.refreshes, 0);
  HandleCommonKey(&window, F5, keys::NoShift, false, true);
  EXPECT_EQ(window.refreshes, 1);
  // A window without the routine is passed over.
  QWidget plain;
  HandleCommonKey(&plain, F5, keys::NoShift, false, true);
}

TEST(CommonKeys, F10OpensTheFolderChooserOnlyWhenItsButtonIsEnabled) {
  AbsentPulseServer absent;
  auto* bar = new CommandBar;
  Windows().Loaded(WindowId::CommandBar, bar);
  QWidget window;

  // The chooser, when it comes, is seen and sent away.
  bool chooserSeen = false;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    auto* chooser = Windows().Get<ChooseDirectory>();
    if (!chooser || !chooser->isVisible()) return;
    chooserSeen = true;
    chooser->cancelButton_Click();
  });
  poll.start(20);

  bar->DirectoryButton->SetEnabled(false);
  HandleCommonKey(&window, F10, keys::NoShift, false, false);
  EXPECT_FALSE(chooserSeen);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::ChooseDirectory));

  bar->DirectoryButton->SetEnabled(true);
  HandleCommonKey(&window, F10, keys::ShiftMask, false, false);
  EXPECT_FALSE(chooserSeen);
  HandleCommonKey(&window, F10, keys::NoShift, false, false);
  EXPECT_TRUE(chooserSeen);
  EXPECT_TRUE(App().DirectoryCancelled);

  Windows().Unload(WindowId::CommandBar);
  RunDeferredDeletes();
}

