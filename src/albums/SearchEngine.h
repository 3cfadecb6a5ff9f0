#pragma once
// The file search that the search window and the album editor share: a
// folder tree walked for file names that match a list of patterns, the
// folder being searched and the count shown while it runs, the full paths
// of what it finds handed on in the order found, and a stop that answers at
// once. One search runs at a time.

#include <QString>
#include <QStringList>
#include <functional>

// The ";"-separated pattern list for a name (no extension; "*" allowed)
// and an index of the search window's file-type list (FindFilesTypeList of
// catalogue/MediaTypes.h): every extension of the chosen groups behind
// the name, each followed by ";".
QString SearchPatternList(const QString& name, int typeIndex);
// The same for an index of the album editor's list (AlbumEditTypeList),
// whose groups differ a little: no CD tracks (its index 19 is MIDI), ".mpe"
// among the movies, and the JPEG and MP3 extensions in another order.
QString AlbumSearchPatternList(const QString& name, int typeIndex);

// What a running search tells its window.
struct SearchSink {
  std::function<void(const QString& path)> Found;    // a full path, in order
  std::function<void(const QString& folder)> Folder; // the folder now searched
  std::function<void(int count)> Count;              // files found so far
};

// Searches `root` (its subfolders too unless oneFolderOnly) for the
// patterns; returns when done or stopped, letting the window repaint and
// answer throughout. False, and nothing searched, while another search runs.
bool SearchFiles(const QString& root, const QString& patterns, bool oneFolderOnly, const SearchSink& sink);
// Asks the running search to stop; it ends within a moment.
void StopSearch();
bool SearchRunning();
