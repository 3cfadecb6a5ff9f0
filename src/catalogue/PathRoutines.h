#pragma once
// The small routines that every window calls: the long form of a path, the
// shortening of a long path to a width, waiting, a random permutation and a
// few window helpers. They keep no state of their own. The separator is "/".

#include <QList>
#include <QString>

class QFontMetrics;
class QWidget;

// The path in its long form. A path without "~" comes back as it is. With
// one, a leading "~" stands for the home folder and the result is the
// absolute, cleaned path of the existing file or folder; a path that names
// nothing (a vanished file) yields "".
QString GetLongPath(const QString& path);

// Shortens a path to a room of widthTwips, measured with the given font.
// The first `keep` characters (the root: 1 for "/") stay unhurt; folders
// behind them give way to the marker " .../", then characters are cut from
// the end. A text fits when its width plus 60 twips is at most the room.
QString ShortenPath(const QFontMetrics& metrics, const QString& text, int widthTwips, int keep);
QString ShortenPath(const QWidget* window, const QString& text, int widthTwips, int keep);
// The same without cutting characters: a text with no folder left to drop
// stays too long.
QString ShortenAlbumPath(const QFontMetrics& metrics, const QString& text, int widthTwips,
                         int keep);
QString ShortenAlbumPath(const QWidget* window, const QString& text, int widthTwips, int keep);

// A random permutation of low to high. When high is below low the result is
// the single value 1.
QList<int> RandomSequence(int low, int high);

// Waits that many seconds, letting pending events run meanwhile.
void WaitSeconds(double seconds);

// Selects the whole text of a line box, text box or editable combo box;
// any other widget is left alone.
void SelectAllText(QWidget* box);

// Lets the user drag a borderless window with the mouse: call it from the
// press of the left button on the window or one of its children.
void MoveFormWithMouse(QWidget* window);

// Index of the first item of a list whose rectangle holds the point (in
// twips, relative to the list's viewport), both edges included; -1 if none,
// or if the widget is no list.
int ListIndexAt(const QWidget* list, int xTwips, int yTwips);

// Moves every element one place down and drops the last; an empty list
// stays empty.
template <typename T>
void RemoveFirstItem(QList<T>& items) {
  if (!items.isEmpty()) items.removeFirst();
}
