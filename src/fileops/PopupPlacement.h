#pragma once
// The rename and properties windows are top-level windows placed over the
// browser or a viewer. Their callers reckon the place from the cell or the
// label it goes over: in twips of the main window's client area, where the
// browser and the viewers stand. These helpers turn such a place into a
// place on the screen.

#include <QPoint>

class QWidget;

// The screen position (pixels) of a point given in twips of the main
// window's client area; without a main window on the screen the client
// area is taken to start at the screen's origin.
QPoint ClientTwipsToScreen(int leftTwips, int topTwips);

// Moves a top-level window so that its outer top left stands there.
void MoveToClientTwips(QWidget* window, int leftTwips, int topTwips);
