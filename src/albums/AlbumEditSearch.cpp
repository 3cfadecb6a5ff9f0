// The search side of the album editor: the media files under the folder of
// the tree that match the name and the file type, found by the shared file
// search and listed for adding to the album.

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

#include "albums/AlbumEdit.h"
#include "albums/AlbumRules.h"
#include "albums/SearchEngine.h"
#include "catalogue/NumberFormat.h"
#include "catalogue/PathRoutines.h"
#include "core/Trace.h"
#include "fileops/FolderTreeView.h"
#include "platform/Twips.h"

using namespace albumrules;

namespace {

QString CountOf(int count) { return Format(count, "###,##0") + " "; }

}  // namespace

void AlbumEdit::startButton_Click() {
  if (SearchRunning()) return;
  FileList->clear();
  for (int i = 0; i < 3; ++i) FileList->addItem(QString());
  FileList->addItem(Searching);
  Count3->setText("0 ");
  HoldList.clear();
  SearchPaths.clear();
  copyButton->setEnabled(false);

  const QString name = FileName->text().isEmpty() ? QStringLiteral("*") : FileName->text();
  const QString patterns = AlbumSearchPatternList(name, FileType->currentIndex());
  stopButton->setEnabled(true);
  stopButton->setDefault(true);
  startButton->setEnabled(false);

  const QPointer<AlbumEdit> self(this);
  SearchSink sink;
  sink.Found = [self](const QString& path) {
    if (self) self->HoldList << path;
  };
  sink.Folder = [self](const QString& folder) {
    if (!self) return;
    const int room = twips::FromPixels(self->Picture2->contentsRect().width()) - 120;
    self->Picture2->setText(" " + ShortenPath(self->Picture2, folder, std::max(room, 600), 1));
  };
  sink.Count = [self](int count) {
    if (self) self->Count3->setText(CountOf(count));
  };
  searching_ = true;
  SearchFiles(FolderTree->Path(), patterns, !Check1->isChecked(), sink);
  if (!self) return;
  searching_ = false;

  Picture2->setText(LoadingFileList);
  Picture2->repaint();
  FileList->clear();
  SearchPaths = HoldList;
  HoldList.clear();
  {
    const QSignalBlocker quiet(FileList);
    for (const QString& path : SearchPaths) FileList->addItem(Shortened(FileList, path));
    if (Check2->isChecked() && !SearchPaths.isEmpty()) FileList->selectAll();
  }
  Count3->setText(CountOf(SearchCount()));
  Trace(QStringLiteral("album search found %1").arg(SearchCount()));
  Picture2->clear();
  copyButton->setEnabled(!FileList->selectedItems().isEmpty());
  stopButton->setEnabled(false);
  startButton->setEnabled(true);
  startButton->setDefault(true);
  if (SearchPaths.isEmpty()) FileName->setFocus();
}

void AlbumEdit::stopButton_Click() {
  if (searching_) StopSearch();
}
