#pragma once
// What the viewers do alike with the file they show: copying or moving it
// through the folder chooser, and placing the rename and properties
// windows over them.

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

class QLabel;
class QWidget;

// Copies `source` into a folder the user chooses, proposing `proposal`;
// the word ("Copy" or "Move") titles the chooser. A refusal to replace
// picks another folder. True for a move whose copy went elsewhere and is
// whole, so that the source may now go (TargetFile holds the copy); false
// otherwise, also after a copy.
bool CopyThroughChooser(const QString& source, const QString& word, const QString& proposal);

// A window's outer rectangle in twips of the main window's client area,
// where the rename and properties windows are placed.
QRect ClientTwipsOf(const QWidget* window);

// Opens the rename window for the current item of the tab (PendingFile
// set for a single file) so that its name box lies over the name in the
// description: on the description's line, and at `nameLeftTwips` from the
// description's left edge (a single file: 60 from the viewer's).
void ShowRenameOver(int tab, const QWidget* viewer, const QLabel* description, int nameLeftTwips,
                    bool singleFile);

// Where a window of the given outer size (twips) opens beside a viewer's
// button: left of the viewer's right edge and below the button, kept inside
// the main window; in twips of the main window's client area.
QPoint BesideButtonTwips(QWidget* viewer, const QWidget* button, QSize outerTwips);

// Opens the properties of the file there.
void ShowPropertiesBelow(QWidget* viewer, const QWidget* button, const QString& path);
