#pragma once
// What the browser has on display, without any widget: the folder or the
// album shown, and behind each of its four tabs a list of entries with the
// tab's current item. The browser fills it; the viewers and the file
// operations read and edit it by tab.

#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <algorithm>
#include <array>

// Tabs are numbered as they stand: 1 Pictures, 2 Videos, 3 Audios,
// 4 Documents.
inline constexpr int PicturesTab = 1;
inline constexpr int VideosTab = 2;
inline constexpr int AudiosTab = 3;
inline constexpr int DocumentsTab = 4;
inline constexpr int TabCount = 4;

// The list behind one tab. It holds one scratch element beyond the count of
// its tab; "" marks a file deleted while listed. In a folder an entry is a
// bare file name, in an album the full path as the album stores it.
struct TabList {
  QStringList Files;
  // The current item, 32-bit so that lists beyond 32,767 work.
  qint32 Current = 0;
};

class BrowserSession {
 public:
  // The folder on display, no trailing "/" (but for the root); while an
  // album is open, the album's name.
  QString CurrentFolder;
  // True while an album, not a folder, is on display.
  bool AlbumMode = false;
  // The album on display.
  qint32 SelectedAlbumId = 0;

  // The list and the current item of a tab by its number; a number outside
  // 1 to 4 stands for Pictures.
  QStringList& List(int tab) { return tabs_[Slot(tab)].Files; }
  const QStringList& List(int tab) const { return tabs_[Slot(tab)].Files; }
  qint32& Current(int tab) { return tabs_[Slot(tab)].Current; }
  qint32 Current(int tab) const { return tabs_[Slot(tab)].Current; }
  // The number of files listed on a tab: the list without its scratch
  // element. Deleted entries ("") still count.
  qint32 Count(int tab) const { return qint32(std::max<qsizetype>(List(tab).size() - 1, 0)); }
  // Entry `index` of a tab's list; "" outside the list.
  QString Entry(int tab, qint32 index) const;
  // Whether entry `index` is a file to act on: inside the list and not "".
  bool HasEntry(int tab, qint32 index) const;

  QStringList& PictureFiles() { return List(PicturesTab); }
  QStringList& VideoFiles() { return List(VideosTab); }
  QStringList& AudioFiles() { return List(AudiosTab); }
  QStringList& DocumentFiles() { return List(DocumentsTab); }
  const QStringList& PictureFiles() const { return List(PicturesTab); }
  const QStringList& VideoFiles() const { return List(VideosTab); }
  const QStringList& AudioFiles() const { return List(AudiosTab); }
  const QStringList& DocumentFiles() const { return List(DocumentsTab); }
  qint32& CurrentPicture() { return Current(PicturesTab); }
  qint32& CurrentVideo() { return Current(VideosTab); }
  qint32& CurrentAudio() { return Current(AudiosTab); }
  qint32& CurrentDocument() { return Current(DocumentsTab); }
  qint32 CurrentPicture() const { return Current(PicturesTab); }
  qint32 CurrentVideo() const { return Current(VideosTab); }
  qint32 CurrentAudio() const { return Current(AudiosTab); }
  qint32 CurrentDocument() const { return Current(DocumentsTab); }

 private:
  static size_t Slot(int tab) {
    return tab >= PicturesTab && tab <= DocumentsTab ? size_t(tab - PicturesTab) : 0;
  }
  std::array<TabList, TabCount> tabs_;
};
