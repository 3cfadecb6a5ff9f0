#include "fileops/WindowKeys.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

#include "platform/KeyCodes.h"

bool IsWindowKey(int keyCode, int shift) {
  if (keyCode == keys::Escape) return true;
  if (keyCode >= keys::F1 && keyCode <= keys::F1 + 9) return true;
  return keyCode == keys::KeyA + ('F' - 'A') && shift == keys::CtrlMask;
}

bool EnterPressesButtonOrOk(QObject* watched, const QKeyEvent* key, const std::function<void()>& ok) {
  if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter) return false;
  if (auto* button = qobject_cast<QPushButton*>(watched))
    button->click();
  else
    ok();
  return true;
}

void KeepFileNameCharacters(QLineEdit* box, QString& before, CharacterDropper drop) {
  QObject::connect(box, &QLineEdit::textEdited, box, [box, &before, drop](const QString& edited) {
    int cursor = box->cursorPosition();
    const QString kept = drop(before, edited, cursor);
    if (kept != edited) {
      box->setText(kept);
      box->setCursorPosition(cursor);
    }
    before = kept;
  });
}
