#pragma once
// The main window's client area as the program lays it out: the command bar
// on top and the browser below it, as fixed frameless sub-windows, and the
// other windows placed inside the browser's area. Rectangles are in twips
// from the browser's top left corner.

#include <QPointer>
#include <QMdiSubWindow>
#include <QRect>
#include <functional>

class QMdiArea;
class QWidget;

class BrowserArea {
 public:
  // `outerWidthTwips` gives the main window's outer width.
  BrowserArea(QMdiArea* area, std::function<int()> outerWidthTwips);

  // Adds the command bar and the browser as fixed sub-windows.
  void AddBar(QWidget* bar);
  void AddBrowser(QWidget* browser);
  QMdiSubWindow* BrowserWindow() const { return browserWindow_; }
  // Adds a viewer as a movable, sizable sub-window with its title bar.
  void AddViewer(QWidget* window);
  // Forgets both, at the close.
  void Forget();

  // Puts the bar across the top and the browser below it, for the main
  // window's present size.
  void PlaceBrowser();
  // The browser's width as it stands, or as it will be when none is loaded.
  int BrowserWidthTwips() const;
  // The width the browser takes for the main window's present size, in pixels.
  int ExpectedBrowserWidth() const;

  QRect RectInBrowser(QWidget* frame) const;
  void SetRectInBrowser(QWidget* frame, const QRect& twipsRect);
  void CentreOnBrowser(QWidget* frame);
  // Keeps a window (a viewer as a rule) inside the browser's area: the first
  // puts it back at the left or top edge when it reaches past, the second
  // cuts its size.
  void PlaceViewerWindow(QWidget* window);
  void SizeForms(QWidget* window);
  // Makes a window's sub-window the active one, when it has one.
  void Activate(QWidget* frame);

 private:
  QPoint BrowserOrigin() const;

  QMdiArea* area_;
  std::function<int()> outerWidthTwips_;
  QPointer<QMdiSubWindow> barWindow_;
  QPointer<QMdiSubWindow> browserWindow_;
};
