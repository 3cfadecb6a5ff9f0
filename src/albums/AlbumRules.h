#pragma once
// The plain rules of the album windows: the texts they show, the count
// line, the test of a name already in an album, and which dropped files an
// album takes. They keep no state and show nothing.
//
// An album's name and its entries are written as values, never as part of
// a statement's text, so an apostrophe in either is kept as typed: an album
// "Mum's birthday" holding "/photos/O'Brien.jpg" saves, lists and opens like
// any other.

#include <QList>
#include <QString>
#include <QStringList>

class QMimeData;

namespace albumrules {

inline constexpr const char* AddNewAlbum = "(Add New Album)";
inline constexpr const char* NoRecords = "0 records included";
inline constexpr const char* Searching = "                          ... Searching ...";
inline constexpr const char* LoadingFileList = " Loading file list";
inline constexpr const char* NameRequired = "An album name must be entered.";
inline constexpr const char* EditTitle = "Album Editing";
inline constexpr const char* ExitTitle = "Exit Album Editing";
inline constexpr const char* DeleteEntriesPrompt = "Are you sure you wish to delete the selected entry/entries?";
inline constexpr const char* DeleteEntriesTitle = "Delete Album List File";
inline constexpr const char* ClearPrompt = "Are you sure you wish to remove all entries?";
inline constexpr const char* ClearTitle = "Delete All Album Files";
inline constexpr const char* DeleteAlbumPrompt = "Are you sure you wish to delete this album?";
inline constexpr const char* DeleteAlbumTitle = "Delete Album";
inline constexpr const char* MailFailed = "A problem has occurred while trying to send an e-mail.";
// The word a drag from the search list carries.
inline constexpr const char* InternalDrag = "internal";

// Message box styles: yes and no with a question (36), the same with No as
// the default (292), yes, no and cancel with a question (35).
inline constexpr int YesNoStyle = 36;
inline constexpr int YesNoNoDefaultStyle = 292;
inline constexpr int YesNoCancelStyle = 35;
inline constexpr int Yes = 6, No = 7, Cancel = 2;

// "Your album selections have changed." and the save question below it.
QString ChangedPrompt();
// "Warning: No files have been added to your album." and its question.
QString EmptyAlbumPrompt();
// The count line below the album: "1,234 record(s) included".
QString CountText(int count);

// An album needs a name; any other text, apostrophes too, is accepted.
bool NameAccepted(const QString& name);

// The name part of a path in lower case: two entries are the same file for
// the duplicate test when these agree, wherever their folders lie.
QString DuplicateKey(const QString& path);
// Whether one of the paths has the same name part as `path`.
bool HoldsName(const QStringList& paths, const QString& path);
// The indices of the entries whose name part was seen at an earlier entry,
// ascending: the first occurrence of each name stays.
QList<int> LaterDuplicates(const QStringList& paths);

// What a drop on the album list carries.
struct DropContents {
  bool Internal = false;  // a drag from the search list
  QStringList Files;      // files from outside, in the order given
};
// Reads a drop: the search list's own word, or a list of addresses of
// which only existing local files other than CD tracks (".cda") count.
// Folders, web addresses and any other data are left out; nothing left
// means the drop is refused.
DropContents ReadDrop(const QMimeData* data);
bool AcceptsDrop(const QMimeData* data);

}  // namespace albumrules
