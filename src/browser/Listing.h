#pragma once
// Turns the current folder or album into the four lists behind the
// browser's tabs. No widgets here: the browser window wires this to its
// controls and fills each tab's first page as soon as its list stands.

#include <QString>
#include <QStringList>
#include <array>
#include <functional>

#include "browser/FileListBox.h"
#include "browser/TabState.h"

// ---- Masks ----------------------------------------------------------------

// The masks of the selected positions of a mask text, each set position put
// in front of the ones before it.
QString PicturesPattern(const QString& selectPicturesMask);
// The selected video masks, then every exterior video extension.
QString VideosPattern(const QString& selectVideosMask, const QStringList& exteriorVideoExtensions);
QString AudiosPattern(const QString& selectAudiosMask);
// Appends one mask for each document extension. The documents pattern is
// never cleared, so each rebuild adds the same masks once more; the listing
// tries each mask once, so the repeats cost nothing.
void AppendDocumentMasks(QString& pattern, const QStringList& documentExtensions);

// ---- Entries and paging ---------------------------------------------------

// A listed name with the key of the sort order in front (2 extension,
// 3 date, 4 length; any other order adds none). Date and length are read
// from the file of that name in keyFolder: a length that can't be read
// leaves the name without key, a date that can't be read gives every such
// file the same key.
QString SortEntry(const QString& name, qint16 sortOrderCode, const QString& keyFolder);

// The highest value of a tab's scroll bar: one step a page. At a page size
// of 1 the last entry can't be reached by the bar; that is how it works.
qint32 ScrollMax(qint32 count, qint16 pageSize);

// The tab to show after a listing: Pictures when it has entries, else the
// first of Videos, Audios, Documents that has some, else Pictures.
int TabToShow(const std::array<TabState, TabCount>& tabs);

// Album rows by tab: pictures, icons and cursors to Pictures, videos to
// Videos, audios to Audios. Empty rows and rows of any other kind (Real
// media, documents, web pages, unknown) are dropped; repeated rows stay.
struct AlbumRows {
  QStringList Pictures, Videos, Audios;
};
AlbumRows SplitAlbumRows(const QStringList& rows);

// ---- The listing ----------------------------------------------------------

class Listing {
 public:
  // The invisible folder listing behind the four tabs.
  FileListBox File1;
  std::array<TabState, TabCount> Tabs;

  TabState& Tab(int tab) { return Tabs[size_t(tab - 1)]; }
  const TabState& Tab(int tab) const { return Tabs[size_t(tab - 1)]; }

  // Reads the selection and sort settings into the program state, rebuilds
  // the four patterns and forgets File1's folder, so that the next listing
  // reads the folder again.
  void ReadSelection();

  // Builds the session's four lists of the current folder, or of the album
  // on display (rows in the album's order, from albumRows). After each tab's
  // list stands, tabListed(tab) runs, Pictures first. Dates and lengths are read
  // from keyFolder. The Documents tab lists the folder File1 last read, in
  // an album too.
  void BuildLists(const QString& keyFolder, const std::function<QStringList()>& albumRows,
                  const std::function<void(int tab)>& tabListed);

 private:
  void ListFolderTab(int tab, const QString& keyFolder, bool descending);
};
