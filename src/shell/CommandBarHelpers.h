#pragma once
// What the command bar's files share: the browser it works on, its message
// box, and bringing a window forward.

#include <QString>

#include "browser/Thumbnails.h"
#include "shell/SharedMessageBox.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "core/WindowShow.h"

namespace commandbar {

// Message box styles: OK with an exclamation mark or an information sign.
inline constexpr qint16 OkExclamation = 48;
inline constexpr qint16 OkInformation = 64;

inline Thumbnails* Browser() { return Windows().Get<Thumbnails>(); }

inline void Say(const QString& prompt, qint16 style, const QString& title) {
  CreateSharedMsgBox()->MsgBox(prompt, style, title);
}

// Brings a loaded window forward and, as the bar's buttons do, to its
// normal state.
inline void ShowNormal(WindowId id) {
  QWidget* window = Windows().Load(id);
  if (!window) return;
  QWidget* frame = FrameOf(window);
  frame->showNormal();
  frame->raise();
  window->activateWindow();
  GiveKeyboard(window);
}

}  // namespace commandbar
