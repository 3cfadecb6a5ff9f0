#include "browser/CommonKeys.h"

#include <QMetaObject>
#include <QWidget>

#include "platform/KeyCodes.h"
#include "shell/AppState.h"
#include "shell/CommandBar.h"
#include "shell/WindowRegistry.h"
#include "system/MixerModule.h"

namespace {

constexpr int KeyF = 'F';
constexpr int F2 = keys::F1 + 1, F5 = keys::F1 + 4, F6 = keys::F1 + 5, F7 = keys::F1 + 6,
              F8 = keys::F1 + 7, F9 = keys::F1 + 8, F10 = keys::F1 + 9;

// Unloads a window by the name it is registered under; a window that is not
// registered is closed.
void UnloadWindow(QWidget* window) {
  if (!window) return;
  for (const QString& name : Windows().LoadedNames()) {
    if (Windows().Find(name) == window) {
      Windows().Unload(name);
      return;
    }
  }
  window->close();
}

void ClickBarButton(const QString& name) {
  if (CommandBar* bar = Windows().Get<CommandBar>("CommandBar")) bar->ClickIfEnabled(name);
}

void MinimiseMainForm() {
  if (QWidget* main = Windows().Find("MainForm")) main->showMinimized();
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
        ClickBarButton("HelpButton");
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
        StepVolume(-1);
        return;
      case F7:
        StepVolume(1);
        return;
      case F8:
        ToggleMute();
        return;
      case F10:
        ClickBarButton("DirectoryButton");
        return;
      default:
        return;
    }
  }
  if (shift == keys::ShiftMask && keyCode == keys::Escape) {
    UnloadWindow(window);
    App().QuickExit = true;
    Windows().Unload("MainForm");
    return;
  }
  if (shift == keys::CtrlMask && keyCode == KeyF) ClickBarButton("searchButton");
}
