#pragma once
// What the file windows share in their keys and name boxes: the keys that
// belong to the window whatever control has the focus, Enter pressing the
// focused button or OK, and a name box that drops what a file name may not
// hold.

#include <QString>
#include <functional>

class QKeyEvent;
class QLineEdit;
class QObject;

// Esc, F1 to F10 and Ctrl+F: the keys of the shared key routine, which the
// window takes before the control with the focus sees them.
bool IsWindowKey(int keyCode, int shift);

// Enter or Return on `watched`: presses it when it is a button, else runs
// ok. True when the key was Enter and was used.
bool EnterPressesButtonOrOk(QObject* watched, const QKeyEvent* key, const std::function<void()>& ok);

// What the user types or pastes into the box loses the characters that
// drop(before, after, cursor) takes out; a text put there by the program
// stays as it is. `before` holds the box's text before the user's last
// edit and lives as long as the box.
using CharacterDropper = QString (*)(const QString& before, const QString& after, int& cursor);
void KeepFileNameCharacters(QLineEdit* box, QString& before, CharacterDropper drop);
