#pragma once
// The characters that the folder chooser's name box does not take: the
// double quote, "*", ".", "/", ":", "<", ">", "?", "\" and "|". The dot is
// among them, so that the extension shown beside the box stays the one the
// file ends in. Only what the user types or pastes is filtered: a name put
// into the box by the program keeps its dots ("my file.tar").

#include <QString>

// True for a character that the name box drops.
bool IsDroppedNameCharacter(QChar c);
// The text without the dropped characters.
QString DropNameCharacters(const QString& text);

// The text of a box after one edit, with the dropped characters taken out
// of what the edit put in; what stood before and after it stays as it was.
// `cursor` comes in where the edit left it and goes out behind the kept
// part of the insertion.
QString DropInsertedNameCharacters(const QString& before, const QString& after, int& cursor);
// The same for another set of dropped characters (the rename window keeps
// the dot, for one).
QString DropInsertedCharacters(const QString& before, const QString& after, int& cursor,
                               bool (*isDropped)(QChar));
