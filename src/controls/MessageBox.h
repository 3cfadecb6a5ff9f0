#pragma once
// The message box's window: a frameless dialog with a heading bar of its
// own (title, drawn close box, optional rules), a body that may carry a
// gradient, the prompt, and up to four answer buttons. The shared
// MsgBoxEnhanced object fills and places everything; the form handles the
// user's answer, the count-down and the heading's active look.

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <array>

#include "controls/MsgDefs.h"

class MsgBoxEnhanced;

// A surface that shows its retained picture, or else its back colour.
class MessageBoxSurface : public QWidget {
 public:
  explicit MessageBoxSurface(QWidget* parent);
  MsgDefs::Surface& Drawing() { return Drawing_; }
  // Makes the retained picture the widget's size, cleared to the back colour.
  void ResetPicture();
  // Drops the retained picture: the widget then paints its back colour.
  void ClearPicture() { Drawing_.Picture = QImage(); }
  // What is painted on top of the back colour when there is no picture.
  void SetOverlay(const QPixmap& pixmap, QPoint at);
  // The sides on which the form's edge is drawn over the surface.
  void SetFrameEdges(Qt::Edges edges) { Edges_ = edges; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  MsgDefs::Surface Drawing_;
  QPixmap Overlay_;
  QPoint OverlayAt_;
  Qt::Edges Edges_;
};

class MessageBox : public QDialog {
  Q_OBJECT

 public:
  explicit MessageBox(MsgBoxEnhanced& owner);

  MessageBoxSurface* TopHeading;
  QLabel* TopCaption;
  QLabel* ControlBoxUp;
  QLabel* ControlBoxDn;  // holds the pressed picture of the close box; never shown
  std::array<QWidget*, 3> HLine;
  MessageBoxSurface* Background;
  QLabel* MsgText;
  std::array<QPushButton*, 4> MsgButton;
  QTimer* Timer1;  // the count-down, a tick a second
  QTimer* Timer2;  // the focus and heading watch

  // The index of the button that keeps the focus, and the seconds gone.
  int FocusIndex = 0;
  int SecondsGone = 0;
  // The button made the default when the box was filled, -1 for none.
  int DefaultIndex = -1;

  // True once the form's activation work (gradient, timers) has run.
  bool Activated() const { return Activated_; }
  // Whether the heading shows as active at present.
  bool HeadingActive() const { return HeadingActive_; }
  // Closes the form; the result stays as set.
  void Unload();

 protected:
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Form_Activate();
  void Timer1_Timer();
  void Timer2_Timer();
  void MsgButton_Click(int index);
  void PaintHeading(bool active);
  void StartMove(QMouseEvent* event);

  MsgBoxEnhanced& Owner_;
  bool Activated_ = false;
  bool Unloaded_ = false;
  bool HeadingPainted_ = false;
  bool HeadingActive_ = false;
};
