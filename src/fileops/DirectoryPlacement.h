#pragma once
// Where the folder chooser stands and how big it is: read from the settings
// DirectoryTop, DirectoryLeft, DirectoryHeight and DirectoryWidth, kept
// fully on the main window's area, and saved when the window closes. All
// measures are twips of the window's outer rectangle.

#include <QRect>
#include <QSize>

// Smallest size the chooser is given, so that the tree, the name box and
// the buttons keep some room.
inline constexpr int DirectoryMinimumWidth = 3600;
inline constexpr int DirectoryMinimumHeight = 3600;
// Size when the settings hold none.
inline constexpr int DirectoryDefaultWidth = 4740;
inline constexpr int DirectoryDefaultHeight = 4920;

// The rectangle that the settings give. A missing position puts the window
// at the lower right of the browser: top = browser height + main top - own
// height + 45, left = browser width + main left - own width. Without a
// browser (an empty browserSize) the window is centred on the main area.
// Unreadable numbers count as missing; a size below the minimum is raised
// to it.
QRect ReadDirectoryRect(const QRect& mainAreaTwips, const QSize& browserSizeTwips);

// Moves (and, if it is larger, shrinks) the rectangle so that it lies
// wholly inside the area. The minimum size is never undercut: a window
// that cannot fit keeps the area's top left corner.
QRect KeepWithinArea(const QRect& windowTwips, const QRect& areaTwips);

// Saves the size, and the position unless the window is minimised.
void SaveDirectoryRect(const QRect& outerTwips, bool minimised);
