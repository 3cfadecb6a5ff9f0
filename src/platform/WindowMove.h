#pragma once
// Lets the user drag a borderless window: the window system moves it where
// it can; elsewhere the window follows the mouse until the left button
// comes up.

#include <QPoint>

class QWidget;

namespace platform {

// Starts moving the top-level window; `globalStart` is where the mouse was
// pressed, in screen coordinates.
void MoveWindowWithMouse(QWidget* window, QPoint globalStart);

}  // namespace platform
