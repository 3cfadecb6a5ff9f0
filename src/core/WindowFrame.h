#pragma once
// The window that carries a loaded window's frame: its sub-window in the
// main window's client area, or the window itself.

#include <QMdiSubWindow>
#include <QWidget>

inline QWidget* FrameOf(QWidget* window) {
  if (!window) return nullptr;
  if (auto* sub = qobject_cast<QMdiSubWindow*>(window)) return sub;
  if (auto* sub = qobject_cast<QMdiSubWindow*>(window->parentWidget())) return sub;
  return window;
}
