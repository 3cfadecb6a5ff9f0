// The album side of the album editor: adding from the search list or a
// drop, moving, removing, the duplicate rule, and the save.

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

#include "albums/AlbumEdit.h"
#include "albums/AlbumRules.h"
#include "albums/SearchEngine.h"
#include "core/AppState.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "fileops/MessageWindows.h"

using namespace albumrules;

namespace {

// Above these counts of selected entries the "Updating List" message shows
// while they are added: the duplicate test makes each addition slower.
constexpr int CopyMessageWithDuplicateTest = 750;
constexpr int CopyMessageWithout = 2000;

}  // namespace

bool AlbumEdit::AddToAlbum(int index) {
  if (index < 0 || index >= SearchPaths.size()) return false;
  const QString path = SearchPaths[index];
  if (Check3->isChecked() && HoldsName(AlbumPaths, path)) return false;
  if (Check2->isChecked())
    if (QListWidgetItem* item = FileList->item(index)) item->setSelected(false);
  AlbumPaths << path;
  AlbumList->addItem(Shortened(AlbumList, path));
  ListsChanged = true;
  ShowCount();
  return true;
}

void AlbumEdit::copyButton_Click() {
  QList<int> rows;
  for (int i = 0; i < FileList->count() && i < SearchPaths.size(); ++i)
    if (FileList->item(i)->isSelected()) rows << i;
  if (rows.isEmpty()) return;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const int limit = Check3->isChecked() ? CopyMessageWithDuplicateTest : CopyMessageWithout;
  const bool message = rows.size() > limit;
  if (message) ShowCopyMessage();
  bool added = false;
  {
    const QSignalBlocker quiet(FileList);
    for (int row : rows) added = AddToAlbum(row) || added;
  }
  copyButton->setEnabled(!FileList->selectedItems().isEmpty());
  if (added) EntriesAdded();
  if (message) HideCopyMessage();
  QApplication::restoreOverrideCursor();
}

bool AlbumEdit::AlbumList_Drop(const QMimeData* data) {
  const DropContents contents = ReadDrop(data);
  if (contents.Internal) {
    copyButton_Click();
    return true;
  }
  if (contents.Files.isEmpty()) return false;
  bool added = false;
  for (const QString& path : contents.Files) {
    if (Check3->isChecked() && HoldsName(AlbumPaths, path)) continue;
    AlbumPaths << path;
    AlbumList->addItem(Shortened(AlbumList, path));
    added = true;
  }
  if (added) {
    ListsChanged = true;
    ShowCount();
    EntriesAdded();
  }
  return true;
}

void AlbumEdit::EntriesAdded() {
  clearButton->setEnabled(true);
  deleteButton->setEnabled(true);
  replaceButton->setEnabled(true);
  SetMoveButtons();
}

void AlbumEdit::SetEditButtons() {
  const bool any = AlbumCount() > 0;
  deleteButton->setEnabled(any);
  clearButton->setEnabled(any);
  SetMoveButtons();
}

void AlbumEdit::SetMoveButtons() {
  const int row = AlbumList->currentRow();
  const bool selected = row >= 0 && AlbumList->item(row) && AlbumList->item(row)->isSelected();
  const bool several = AlbumCount() > 1;
  upButton->setEnabled(several && selected && row > 0);
  downButton->setEnabled(several && selected && row < AlbumCount() - 1);
}

void AlbumEdit::upButton_Click() {
  const int row = AlbumList->currentRow();
  if (row < 1 || row >= AlbumCount()) return;
  AlbumPaths.swapItemsAt(row, row - 1);
  AlbumList->clearSelection();
  RefillAlbumList();
  AlbumList->setCurrentRow(row - 1);
  ListsChanged = true;
  replaceButton->setEnabled(true);
  SetMoveButtons();
}

void AlbumEdit::downButton_Click() {
  const int row = AlbumList->currentRow();
  if (row < 0 || row >= AlbumCount() - 1) return;
  AlbumPaths.swapItemsAt(row, row + 1);
  AlbumList->clearSelection();
  RefillAlbumList();
  AlbumList->setCurrentRow(row + 1);
  ListsChanged = true;
  replaceButton->setEnabled(true);
  SetMoveButtons();
}

void AlbumEdit::RemoveAlbumEntries(const QList<int>& ascending) {
  const QSignalBlocker quiet(AlbumList);
  for (auto it = ascending.crbegin(); it != ascending.crend(); ++it) {
    if (*it < 0 || *it >= AlbumPaths.size()) continue;
    AlbumPaths.removeAt(*it);
    delete AlbumList->takeItem(*it);
  }
  ListsChanged = true;
  ShowCount();
}

void AlbumEdit::deleteButton_Click() {
  QList<int> rows;
  for (int i = 0; i < AlbumList->count(); ++i)
    if (AlbumList->item(i)->isSelected()) rows << i;
  if (rows.isEmpty()) return;
  const QPointer<AlbumEdit> self(this);
  const int answer = Ask(DeleteEntriesPrompt, YesNoStyle, DeleteEntriesTitle);
  if (!self || answer != Yes) return;
  RemoveAlbumEntries(rows);
  replaceButton->setEnabled(true);
  if (AlbumCount() > 0) {
    AlbumList->setCurrentRow(std::min(rows.first(), AlbumCount() - 1));
  } else {
    deleteButton->setEnabled(false);
    clearButton->setEnabled(false);
  }
  SetMoveButtons();
}

void AlbumEdit::clearButton_Click() {
  const QPointer<AlbumEdit> self(this);
  const int answer = Ask(ClearPrompt, YesNoNoDefaultStyle, ClearTitle);
  if (!self || answer != Yes) return;
  AlbumPaths.clear();
  AlbumList->clear();
  Label12->setText(NoRecords);
  ListsChanged = true;
  replaceButton->setEnabled(true);
  deleteButton->setEnabled(false);
  clearButton->setEnabled(false);
  SetMoveButtons();
}

void AlbumEdit::Check3_Click() {
  replaceButton->setEnabled(true);
  if (!Check3->isChecked()) return;
  if (AlbumCount() >= 2) {
    const QList<int> later = LaterDuplicates(AlbumPaths);
    if (!later.isEmpty()) {
      RemoveAlbumEntries(later);
      SetEditButtons();
    }
  }
  // The search list is gathered again under the new rule.
  if (SearchCount() > 0 && !SearchRunning()) startButton_Click();
}

bool AlbumEdit::replaceButton_Click() {
  AppState& app = App();
  const QString name = AlbumName->currentText();
  if (!NameAccepted(name)) {
    Tell(NameRequired);
    AlbumName->setFocus();
    return false;
  }
  if (AlbumCount() == 0) {
    const QPointer<AlbumEdit> self(this);
    const int answer = Ask(EmptyAlbumPrompt(), YesNoStyle, EditTitle);
    if (!self || answer != Yes) return false;
  }
  if (!app.DatabaseConnection) return false;
  // Header and entries go in one transaction: a failure keeps the album as
  // it was, and the window keeps its changes to save again.
  const qint32 id = SaveAlbum(*app.DatabaseConnection, app.SelectedAlbumId < 1 ? 0 : app.SelectedAlbumId,
                              name, Check3->isChecked(), AlbumPaths);
  if (id == 0) return false;
  app.SelectedAlbumId = id;
  settings::SaveSetting("AlbumSelected", QString::number(id));
  FillAlbumNames();
  ListsChanged = false;
  replaceButton->setEnabled(false);
  return true;
}
