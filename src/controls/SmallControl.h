#pragma once
// The common ground of the program's small drawn controls: the usual mouse
// events with the button and shift numbers, and Click for a left press
// released over the control.

#include <QWidget>

class QMouseEvent;

// The mouse button and shift numbers of a mouse event: buttons 1 left,
// 2 right, 4 middle (the pressed or released button, or those held while
// moving); shift 1 Shift, 2 Ctrl, 4 Alt.
int MouseButtonOf(const QMouseEvent* event, bool moving);
int MouseShiftOf(const QMouseEvent* event);

class SmallControl : public QWidget {
  Q_OBJECT
 public:
  explicit SmallControl(QWidget* parent = nullptr);
  QWidget* hWnd() { return this; }
  // True between a left press and its release.
  bool Pressed() const { return pressed_; }

 signals:
  void Click();
  void DblClick();
  // Buttons 1 left, 2 right, 4 middle; shift 1 Shift, 2 Ctrl, 4 Alt;
  // x and y in twips.
  void MouseDown(int button, int shift, int x, int y);
  void MouseUp(int button, int shift, int x, int y);
  void MouseMove(int button, int shift, int x, int y);

 protected:
  // True while the mouse is over the control.
  bool Hovered() const { return hovered_; }

  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  bool pressed_ = false;
  bool hovered_ = false;
};
