#pragma once
// The arithmetic of the picture viewer's size, in twips: how a picture is
// fitted into the room the main window leaves (never enlarged), how large
// it becomes at full size (which may enlarge), the window around it, and
// the picture again after the user has sized the window.

#include <QSize>

struct PictureRoom {
  int Left = 0, Top = 0;          // the viewer's position
  int MaximumWidth = 0;           // the browser's width
  int MaximumHeight = 0;          // the main window's client height less 60
  int TopMargin = 0, SideMargin = 120;
  int MinimumWidth = 5610;
};

// The shown size of a picture of the natural size given: reduced, aspect
// kept, so that the window stays inside the room from its own top left.
QSize FitPicture(QSize natural, const PictureRoom& room);

// The largest size the room allows for a picture of the shape given, and
// the window's outer size around it.
struct FullSize {
  QSize Picture;
  QSize Window;
};
FullSize FullSizePicture(QSize shape, const PictureRoom& room);

// The window's outer size around a shown picture: the picture and the
// margins, at least the minimum width.
QSize FormSize(QSize picture, const PictureRoom& room);

// The picture's size in a window of the outer size given: the window's
// height decides, unless the width then runs out of the window.
QSize ResizedPicture(QSize shown, QSize window, int topMargin, int sideMargin);
