#pragma once
// Maps Qt's key events onto the virtual-key numbers and shift states that
// the program's key tables are written in (Esc 27, Enter 13, F1 112, ...;
// shift 0 none, 1 Shift, 2 Ctrl, 4 Alt, added together).

class QKeyEvent;

namespace keys {

enum VirtualKey : int {
  Back = 8, Tab = 9, Return = 13, Shift = 16, Control = 17, Menu = 18,
  Pause = 19, Escape = 27, Space = 32, Prior = 33, Next = 34, End = 35,
  Home = 36, Left = 37, Up = 38, Right = 39, Down = 40, Insert = 45,
  Delete = 46, Key0 = 48, KeyA = 65, Numpad0 = 96, Multiply = 106, Add = 107,
  Subtract = 109, Decimal = 110, Divide = 111, F1 = 112, F12 = 123
};

enum ShiftState : int { NoShift = 0, ShiftMask = 1, CtrlMask = 2, AltMask = 4 };

// The virtual-key number of the event's key, 0 when it has none.
int KeyCode(const QKeyEvent* event);
// The shift state of the event as 0, 1, 2, 4 or a sum of them.
int ShiftOf(const QKeyEvent* event);
// The character code that a key press types (the "KeyAscii"), 0 if none.
int KeyAscii(const QKeyEvent* event);

}  // namespace keys
