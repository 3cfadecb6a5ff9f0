#pragma once
// Where the main window stands at start and what is saved of it at the
// close. All measures are twips.

#include <QRect>

// Smallest size of the main window, wherever it is sized.
inline constexpr int MainMinimumWidth = 9600;
inline constexpr int MainMinimumHeight = 6780;

// The position and size to restore, from MainLeft, MainTop, MainWidth and
// MainHeight (defaults: centred in the work area at the minimum size);
// negative left and top are raised to 0, a size below the minimum to it.
QRect RestoredMainRect(const QRect& workAreaTwips);

enum class MainWindowState { Normal, Minimised, Maximised };

// Saves the window at the close. A window last maximised only writes
// MainMaximized "Yes", so that its normal size comes back later. Otherwise
// MainMaximized "No"; a window in normal state saves its left and top
// (negative raised to 0); then width and height, each the smaller of the
// last stored size and the work area's.
void SaveMainPosition(MainWindowState lastState, MainWindowState presentState,
                      const QRect& presentTwips, int lastWidth, int lastHeight,
                      const QRect& workAreaTwips);
