#pragma once
// The slideshow's small window over the top right of the main window: the
// delay between pictures (1 to 60 seconds), random order, full size, and
// the stop. The show itself runs in the picture viewer, which stands
// without its buttons on Background; this window decides what comes next
// and when. It closes, and the show ends, when it loses the focus.

#include <QTimer>
#include <QWidget>

#include "core/WindowRoles.h"
#include "viewers/SlideshowOrder.h"

class NumberBox;
class QLabel;
class QPushButton;
class SingleImage;
class TransCheck;
class UpDown;

class SlideshowController : public QWidget {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::SlideshowController;
  explicit SlideshowController(QWidget* parent = nullptr);

  // One tick of the seconds; at the delay the next picture comes.
  void Timer1_Timer();
  void NextSlide();
  void stopButton_Click();
  // The delay in seconds as the box holds it, within 1 to 60.
  int Delay() const;

  int ElapsedSeconds = 0;
  qint32 SavedPicture = 0;
  SlideshowOrder Order;

  NumberBox* NumberBox1;
  UpDown* UpDown1;
  TransCheck* RandomOrder;
  TransCheck* Fullsize;
  QPushButton* stopButton;
  QTimer Timer1;

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Form_Load();
  void PlaceWindow();
  void NumberBox1_Change();
  void NumberBox1_KeyDown(int keyCode, int shift);
  void UpDown1_Change();
  void RandomOrder_Click();
  void Fullsize_Click();
  bool HandleKey(int keyCode, int shift);
  SingleImage* Viewer() const;
  void WaitForCycle();

  bool stopping_ = false;
  bool loaded_ = false;
  bool waitingForCycle_ = false;
};
