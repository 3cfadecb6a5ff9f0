#pragma once
// Keeps track of which of the program's windows is in front: the active
// window of the main window's client area while the main window has the
// focus, else the dialog or message box of the program that has it. While
// another program is in front nothing changes here: coming back is the
// application's own activation.

#include <QObject>
#include <QPointer>

class QMainWindow;
class QMdiArea;
class QWidget;

class ForwardWindowWatch : public QObject {
  Q_OBJECT
 public:
  ForwardWindowWatch(QMainWindow* main, QMdiArea* area);

  // The program's window in front now; null while another program is.
  QWidget* Current() const;
  // The window last reported in front.
  QWidget* Forward() const { return forward_; }
  // Takes the window as in front without reporting it (the first
  // activation runs by hand).
  void SetForward(QWidget* window) { forward_ = window; }
  // Looks again; reports a change. Does nothing while switched off.
  void Check();
  void SetEnabled(bool on) { enabled_ = on; }

 signals:
  void ForwardChanged(QWidget* previous, QWidget* now);

 private:
  QMainWindow* main_;
  QMdiArea* area_;
  QPointer<QWidget> forward_;
  bool enabled_ = false;
};
