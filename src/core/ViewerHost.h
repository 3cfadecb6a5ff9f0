#pragma once
// Where the viewers stand: movable sub-windows of the main window's area,
// placed in twips from the browser's top left corner, as the browser's own
// windows are. The main window offers it; without a main window (a viewer
// on its own) a viewer is a top-level window placed on the screen.

#include <QRect>

class QWidget;

class ViewerHost {
 public:
  virtual ~ViewerHost() = default;
  // Makes the window a movable, sizable sub-window of the main window's area.
  virtual void AddViewer(QWidget* window) = 0;
  // The outer rectangle of the window's frame, in twips from the browser's
  // top left corner; SetViewerRect places it so.
  virtual QRect ViewerRect(QWidget* window) = 0;
  virtual void SetViewerRect(QWidget* window, const QRect& twipsRect) = 0;
  // The width and height of the browser window in twips.
  virtual int BrowserWidthTwips() const = 0;
  virtual int BrowserHeightTwips() const = 0;
  // The main window's outer rectangle on the screen, in twips.
  virtual QRect MainOuterTwips() const = 0;
};

// The main window's host; nullptr when there is no main window.
ViewerHost* TheViewerHost();
