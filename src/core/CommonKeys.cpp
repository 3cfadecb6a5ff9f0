#include "core/CommonKeys.h"

#include <QWidget>

#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"

namespace {

constexpr int KeyF = 'F';
constexpr int F2 = keys::F1 + 1, F5 = keys::F1 + 4, F6 = keys::F1 + 5, F7 = keys::F1 + 6,
              F8 = keys::F1 + 7, F9 = keys::F1 + 8, F10 = keys::F1 + 9;

// Unloads a window through the registry; a window that is not registered is
// closed.
void UnloadWindow(QWidget* window) {
  if (!window) return;
  if (const auto id = Windows().IdOf(window)) {
    Windows().Unload(*id);
    return;
  }
  window->close();
}

// The command bar, or the window itself when it is the bar.
BarCommands* CommandsFor(QWidget* window) {
  if (auto* own = dynamic_cast<BarCommands*>(window)) return own;
  return CommandBarCommands();
}

void MinimiseMainForm() {
  if (QWidget* main = Windows().Find(WindowId::MainForm)) main->showMinimized();
}

}  // namespace

void HandleCommonKey(QWidget* window, int keyCode, int shift, bool unloadOnMinimise,
                     bool hasTree) {
  if (shift == keys::NoShift) {
    switch (keyCode) {
      case keys::Escape:
        UnloadWindow(window);
        return;
      case keys::F1:
        if (auto* c = CommandsFor(window)) c->ClickIfEnabled(BarButton::HelpButton);
        return;
      case F2:
      case F9:
        if (unloadOnMinimise) UnloadWindow(window);
        MinimiseMainForm();
        return;
      case F5:
        if (auto* tree = dynamic_cast<FolderTreeWindow*>(window); hasTree && tree)
          tree->FolderTree_Refresh();
        return;
      case F6:
        if (auto* c = CommandsFor(window)) c->StepVolume(-1);
        return;
      case F7:
        if (auto* c = CommandsFor(window)) c->StepVolume(1);
        return;
      case F8:
        if (auto* c = CommandsFor(window)) c->ToggleMute();
        return;
      case F10:
        if (auto* c = CommandsFor(window)) c->ClickIfEnabled(BarButton::DirectoryButton);
        return;
      default:
        return;
    }
  }
  if (shift == keys::ShiftMask && keyCode == keys::Escape) {
    UnloadWindow(window);
    App().QuickExit = true;
    Windows().Unload(WindowId::MainForm);
    return;
  }
  if (shift == keys::CtrlMask && keyCode == KeyF) if (auto* c = CommandsFor(window)) c->ClickIfEnabled(BarButton::searchButton);
}

bool HandleSettingsWindowKey(QWidget* window, int keyCode, int shift,
                             const std::function<void()>& unload) {
  if (keyCode == keys::Escape && (shift == keys::NoShift || shift == keys::ShiftMask)) {
    AppState& app = App();
    app.CloseRefused = false;
    unload();
    if (shift == keys::ShiftMask && !app.CloseRefused) {
      app.QuickExit = true;
      Windows().Unload(WindowId::MainForm);
    }
    return true;
  }
  if (keyCode == keys::F1 && shift == keys::NoShift) {
    if (BarCommands* bar = CommandBarCommands()) {
      QWidget* frame = FrameOf(window);
      frame->showMinimized();
      if (!bar->ClickIfEnabled(BarButton::HelpButton)) frame->showNormal();
    }
    return true;
  }
  return false;
}
