#include "platform/KeyCodes.h"

#include <QKeyEvent>

namespace keys {

int KeyCode(const QKeyEvent* event) {
  const int k = event->key();
  if (k >= Qt::Key_A && k <= Qt::Key_Z) return KeyA + (k - Qt::Key_A);
  if (k >= Qt::Key_0 && k <= Qt::Key_9) {
    if (event->modifiers() & Qt::KeypadModifier) return Numpad0 + (k - Qt::Key_0);
    return Key0 + (k - Qt::Key_0);
  }
  if (k >= Qt::Key_F1 && k <= Qt::Key_F12) return F1 + (k - Qt::Key_F1);
  switch (k) {
    case Qt::Key_Backspace: return Back;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return Tab;
    case Qt::Key_Return:
    case Qt::Key_Enter: return Return;
    case Qt::Key_Shift: return Shift;
    case Qt::Key_Control: return Control;
    case Qt::Key_Alt: return Menu;
    case Qt::Key_Pause: return Pause;
    case Qt::Key_Escape: return Escape;
    case Qt::Key_Space: return Space;
    case Qt::Key_PageUp: return Prior;
    case Qt::Key_PageDown: return Next;
    case Qt::Key_End: return End;
    case Qt::Key_Home: return Home;
    case Qt::Key_Left: return Left;
    case Qt::Key_Up: return Up;
    case Qt::Key_Right: return Right;
    case Qt::Key_Down: return Down;
    case Qt::Key_Insert: return Insert;
    case Qt::Key_Delete: return Delete;
    case Qt::Key_Asterisk: return Multiply;
    case Qt::Key_Plus: return Add;
    case Qt::Key_Minus: return Subtract;
    case Qt::Key_Slash: return Divide;
    default: return 0;
  }
}

int ShiftOf(const QKeyEvent* event) {
  const Qt::KeyboardModifiers m = event->modifiers();
  int shift = NoShift;
  if (m & Qt::ShiftModifier) shift |= ShiftMask;
  if (m & Qt::ControlModifier) shift |= CtrlMask;
  if (m & Qt::AltModifier) shift |= AltMask;
  return shift;
}

int KeyAscii(const QKeyEvent* event) {
  const QString text = event->text();
  if (text.isEmpty()) return 0;
  return text.at(0).unicode();
}

}  // namespace keys
