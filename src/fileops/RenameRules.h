#pragma once
// The rules of the rename window without its widgets: how a name splits
// into the part the user edits and the extension beside it, what the box
// does not take, what the list entry becomes, where the window fits, and
// the rename itself, which never replaces another file.

#include <QString>

// The extension label's text until a name gives it another one.
inline constexpr char InitialRenameExtension[] = ".JPEG";

struct RenameSplit {
  QString NewFile;    // the text of the name box
  QString Extension;  // the label beside it, with its dot
};

// Splits a file name by the place of its last dot among the last five
// characters: a dot fourth, third or second from the end makes an
// extension of four, three or two letters. Any other name, and every name
// of fewer than four characters, leaves the box empty and the label at
// ".JPEG".
RenameSplit SplitRenameName(const QString& name);

// True for a character that the name box drops: the double quote, "*",
// "/", ":", "<", ">", "?", "\" and "|". The dot is allowed.
bool IsDroppedRenameCharacter(QChar c);
// The box's text after one edit, with the dropped characters taken out of
// what the edit put in (see DropInsertedCharacters).
QString DropInsertedRenameCharacters(const QString& before, const QString& after, int& cursor);

// The browser's list entry after a rename: the box's text without the
// blanks at either end, then the extension. The file itself takes the box's
// text as it stands.
QString RenamedListEntry(const QString& newFileText, const QString& extension);

// Where the rename window stands and how wide its name box is, in twips of
// the main window's client area.
struct RenamePlacement {
  int Left = 0;
  int Top = 0;
  int BoxWidth = 0;
};
// The narrowest the name box becomes to keep the window inside.
inline constexpr int SmallestRenameBox = 900;
// The window wants its top left at (left, top) and its box `boxWidth`
// wide; the rest of the window is `otherWidth` wide and the window
// `height` high. It keeps inside the client area less 60 twips at the
// right and bottom: first the box narrows (down to SmallestRenameBox),
// then the window moves left, and up, never past 0. A client size of 0 or
// less sets no bound that way.
RenamePlacement FitRenameWindow(int left, int top, int boxWidth, int otherWidth, int height,
                                int clientWidth, int clientHeight);

// Renames a file, refusing to replace an existing target: the program's
// error number, 0 when renamed, 58 when the target exists (both files stay
// as they were), 75 when refused, 53 when the source is missing.
int RenameWithoutReplacing(const QString& source, const QString& target);

// After a rename that took place: the album entries and the caption of the
// file follow it in the data file, when that is open. Relative paths are
// taken from the working folder, as the rename took them.
void FollowRenameInDataFile(const QString& source, const QString& target);
