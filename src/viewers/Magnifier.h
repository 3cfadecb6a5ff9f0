#pragma once
// The screen magnifier: a small borderless window above every other window
// that shows the part of the screen around the mouse pointer, enlarged 1 to
// 10 times. It reads the screen itself, so it enlarges anything, inside the
// program or not. A press on the view drags the window; the grip at the
// bottom right sizes it, never below 3600 by 2175 twips. Its place, size
// and factor are kept in the settings from one opening to the next.

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QWidget>

#include "core/WindowRoles.h"

class BalloonHelp;
class QLabel;
class QPushButton;
class QScrollBar;
class QSizeGrip;
class QTimer;

// What ShowZoom copies: the part of the screen (Source, in screen
// coordinates, possibly running off the desktop) and the size it is
// stretched to (Target), a whole number of view pixels to each screen
// pixel; Target may pass the view's right and bottom edges by less than one
// screen pixel's worth.
struct ZoomRect {
  QRect Source;
  QSize Target;
};

// The part of the screen that a view of the given size shows around the
// pointer at the given factor.
ZoomRect ZoomSource(QPoint pointer, int viewWidth, int viewHeight, int factor);

class Magnifier : public QWidget {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::Magnifier;
  // The smallest size, in twips.
  static constexpr int MinimumWidth = 3600;
  static constexpr int MinimumHeight = 2175;

  explicit Magnifier(QWidget* parent = nullptr);

  // The enlarged view; it shows the picture ShowZoom last made.
  QLabel* picViewer;
  // The bar along the bottom with the factor and the close button.
  QWidget* picBar;
  // The factor, 1 to 10.
  QScrollBar* hscZoom;
  // The factor as "2 X".
  QLabel* lblZoom;
  QPushButton* cmdClose;
  QSizeGrip* SizeGrip;
  // Every 50 ms, from the start.
  QTimer* tmrRefresh;
  // Milliseconds since the view was last drawn.
  qint32 ElapsedMs = 0;

  // Draws the screen around the pointer into the view at the present
  // factor. Parts of the screen beyond the desktop come out black.
  void ShowZoom(QPoint pointer);

  BalloonHelp& Balloons() const { return *balloons_; }

 public slots:
  void tmrRefresh_Timer();
  void hscZoom_Change(int value);
  void cmdClose_Click();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  // Takes the saved place, size and factor.
  void ReadSettings();
  void SaveSettings() const;
  void LayoutControls();
  void ApplyHelp();

  BalloonHelp* balloons_;
  QPoint lastPointer_{-1000000, -1000000};
  int lastFactor_ = 0;
};
