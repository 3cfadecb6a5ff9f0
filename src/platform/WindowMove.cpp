#include "platform/WindowMove.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>
#include <QWindow>

namespace platform {

namespace {

// Where the window system cannot move a window for us, the window follows
// the mouse until the left button comes up.
class WindowDrag : public QObject {
 public:
  WindowDrag(QWidget* window, QPoint start)
      : window_(window), start_(start), origin_(window->pos()) {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (!window_) {
      deleteLater();
      return false;
    }
    if (event->type() == QEvent::MouseMove) {
      auto* mouse = static_cast<QMouseEvent*>(event);
      if (mouse->buttons() & Qt::LeftButton) {
        window_->move(origin_ + (mouse->globalPosition().toPoint() - start_));
        return true;
      }
    } else if (event->type() == QEvent::MouseButtonRelease) {
      auto* mouse = static_cast<QMouseEvent*>(event);
      if (mouse->button() == Qt::LeftButton) {
        window_->move(origin_ + (mouse->globalPosition().toPoint() - start_));
        qApp->removeEventFilter(this);
        deleteLater();
        return true;
      }
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  QPointer<QWidget> window_;
  QPoint start_, origin_;
};

}  // namespace

void MoveWindowWithMouse(QWidget* window, QPoint globalStart) {
  if (!window) return;
  QWidget* top = window->window();
  if (QWidget* grabber = QWidget::mouseGrabber()) grabber->releaseMouse();
  if (QWindow* handle = top->windowHandle(); handle && handle->startSystemMove()) return;
  qApp->installEventFilter(new WindowDrag(top, globalStart));
}

}  // namespace platform
