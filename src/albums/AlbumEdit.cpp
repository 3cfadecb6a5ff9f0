#include "albums/AlbumEdit.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include "albums/AlbumRules.h"
#include "albums/SearchEngine.h"
#include "catalogue/MediaTypes.h"
#include "catalogue/PathRoutines.h"
#include "controls/MsgBoxEnhanced.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "core/ViewerHost.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "fileops/FolderTreeView.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

using namespace albumrules;

namespace {

// The window's client size at the start, in twips; the lists take what a
// resize adds.
constexpr int StartWidth = 11400;
constexpr int StartHeight = 7200;
constexpr int Margin = 120;
constexpr int ColumnWidth = 5460;
constexpr int RightLeft = Margin + ColumnWidth + 240;
constexpr int RowHeight = 315;
constexpr int ButtonHeight = 375;
// The lists show a path shortened to their width less this room.
constexpr int ListRoom = 300;

// The search list hands the word "internal" to a drag, so that the album
// list knows the drop comes from it.
class SearchListBox : public QListWidget {
 public:
  using QListWidget::QListWidget;

 protected:
  QStringList mimeTypes() const override { return {"text/plain"}; }
  QMimeData* mimeData(const QList<QListWidgetItem*>& items) const override {
    Q_UNUSED(items);
    auto* data = new QMimeData;
    data->setText(InternalDrag);
    return data;
  }
};

QPushButton* MakeButton(QWidget* parent, const char* name, const QString& caption) {
  auto* button = new QPushButton(caption, parent);
  button->setObjectName(name);
  return button;
}

QLabel* MakeLabel(QWidget* parent, const char* name, const QString& caption) {
  auto* label = new QLabel(caption, parent);
  label->setObjectName(name);
  return label;
}

void Place(QWidget* control, int left, int top, int width, int height) {
  control->setGeometry(twips::ToPixels(QRectF(left, top, width, height)));
}

}  // namespace

AlbumEdit::AlbumEdit(QWidget* parent) : QWidget(parent) {
  setObjectName("AlbumEdit");
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(" Album Editing");
  MakeControls();
  resize(twips::ToPixels(StartWidth), twips::ToPixels(StartHeight));
  if (ViewerHost* host = TheViewerHost()) host->AddViewer(this);
  Windows().Loaded(this);
  Form_Load();
}

AlbumEdit::~AlbumEdit() = default;

void AlbumEdit::MakeControls() {
  Label1 = MakeLabel(this, "Label1", "File name:");
  FileName = new QLineEdit(this);
  FileName->setObjectName("FileName");
  Label2 = MakeLabel(this, "Label2", "File type:");
  FileType = new QComboBox(this);
  FileType->setObjectName("FileType");
  FileType->addItems(AlbumEditTypeList());
  Check1 = new QCheckBox("Search subfolders", this);
  Check1->setObjectName("Check1");
  Check2 = new QCheckBox("Select all", this);
  Check2->setObjectName("Check2");
  startButton = MakeButton(this, "startButton", "&Start");
  stopButton = MakeButton(this, "stopButton", "S&top");
  Count3 = MakeLabel(this, "Count3", "0 ");
  Count3->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  Label4 = MakeLabel(this, "Label4", "files found");
  FolderTree = new FolderTreeView(this);
  FolderTree->setObjectName("FolderTree");
  Picture2 = MakeLabel(this, "Picture2", QString());
  Picture2->setFrameShape(QFrame::Panel);
  Picture2->setFrameShadow(QFrame::Sunken);
  FileList = new SearchListBox(this);
  FileList->setObjectName("FileList");
  FileList->setSelectionMode(QAbstractItemView::ExtendedSelection);
  FileList->setDragEnabled(true);
  FileList->setDragDropMode(QAbstractItemView::DragOnly);
  FileList->setContextMenuPolicy(Qt::CustomContextMenu);

  Label3 = MakeLabel(this, "Label3", "Album name:");
  AlbumName = new QComboBox(this);
  AlbumName->setObjectName("AlbumName");
  AlbumName->setEditable(true);
  AlbumName->setInsertPolicy(QComboBox::NoInsert);
  Check3 = new QCheckBox("Prevent duplicate entries", this);
  Check3->setObjectName("Check3");
  copyButton = MakeButton(this, "copyButton", "&Add >>");
  upButton = MakeButton(this, "upButton", "&Up");
  downButton = MakeButton(this, "downButton", "&Down");
  deleteButton = MakeButton(this, "deleteButton", "&Remove");
  clearButton = MakeButton(this, "clearButton", "C&lear");
  replaceButton = MakeButton(this, "replaceButton", "Sa&ve");
  AlbumList = new QListWidget(this);
  AlbumList->setObjectName("AlbumList");
  AlbumList->setSelectionMode(QAbstractItemView::ExtendedSelection);
  AlbumList->setAcceptDrops(true);
  AlbumList->viewport()->setAcceptDrops(true);
  AlbumList->viewport()->installEventFilter(this);
  AlbumList->setContextMenuPolicy(Qt::CustomContextMenu);
  Label5 = MakeLabel(this, "Label5", "Album entries:");
  Label12 = MakeLabel(this, "Label12", NoRecords);

  MenuFile = new QMenu(this);
  MenuFile->setObjectName("MenuFile");
  mnuCopy = MenuFile->addAction("&Copy to album");
  mnuCopy->setObjectName("mnuCopy");
  mnuDelete = MenuFile->addAction("&Delete");
  mnuDelete->setObjectName("mnuDelete");

  connect(AlbumName, &QComboBox::activated, this, [this] { AlbumName_Click(); });
  connect(startButton, &QPushButton::clicked, this, &AlbumEdit::startButton_Click);
  connect(stopButton, &QPushButton::clicked, this, &AlbumEdit::stopButton_Click);
  connect(copyButton, &QPushButton::clicked, this, &AlbumEdit::copyButton_Click);
  connect(upButton, &QPushButton::clicked, this, &AlbumEdit::upButton_Click);
  connect(downButton, &QPushButton::clicked, this, &AlbumEdit::downButton_Click);
  connect(deleteButton, &QPushButton::clicked, this, &AlbumEdit::deleteButton_Click);
  connect(clearButton, &QPushButton::clicked, this, &AlbumEdit::clearButton_Click);
  connect(replaceButton, &QPushButton::clicked, this, [this] { replaceButton_Click(); });
  connect(Check3, &QCheckBox::clicked, this, &AlbumEdit::Check3_Click);
  connect(Check1, &QCheckBox::clicked, this,
          [](bool on) { settings::SaveTrueFalse("SearchSubfolders", on); });
  connect(Check2, &QCheckBox::clicked, this, [](bool on) { settings::SaveTrueFalse("SelectAll", on); });
  connect(AlbumList, &QListWidget::itemSelectionChanged, this, &AlbumEdit::SetMoveButtons);
  connect(FileList, &QListWidget::itemSelectionChanged, this, [this] {
    copyButton->setEnabled(!FileList->selectedItems().isEmpty());
  });
  connect(FileList, &QListWidget::itemDoubleClicked, this, [this] { copyButton_Click(); });
  connect(FileList, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& at) { ShowPopup(FileList, 'F', at); });
  connect(AlbumList, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& at) { ShowPopup(AlbumList, 'P', at); });
  connect(mnuCopy, &QAction::triggered, this, &AlbumEdit::mnuCopy_Click);
  connect(mnuDelete, &QAction::triggered, this, &AlbumEdit::mnuDelete_Click);
  // A name typed by the user is a change to save; a name picked from the
  // list loads that album instead.
  connect(AlbumName->lineEdit(), &QLineEdit::textEdited, this, [this] { replaceButton->setEnabled(true); });
}

void AlbumEdit::PlaceControls() {
  const int width = std::max(twips::FromPixels(this->width()), StartWidth);
  const int height = std::max(twips::FromPixels(this->height()), StartHeight);
  const int column = (width - 2 * Margin - 240) / 2;
  const int right = Margin + column + 240;

  // Search side.
  Place(Label1, Margin, 120, 1200, RowHeight);
  Place(FileName, Margin + 1200, 90, column - 1200, RowHeight);
  Place(Label2, Margin, 480, 1200, RowHeight);
  Place(FileType, Margin + 1200, 450, column - 1200, RowHeight);
  Place(Check1, Margin, 840, 2400, RowHeight);
  Place(Check2, Margin + 2520, 840, 1800, RowHeight);
  Place(startButton, Margin, 1200, 1200, ButtonHeight);
  Place(stopButton, Margin + 1320, 1200, 1200, ButtonHeight);
  Place(Count3, Margin + 2640, 1230, 1200, RowHeight);
  Place(Label4, Margin + 3900, 1230, column - 3900, RowHeight);
  const int treeTop = 1680;
  const int treeHeight = (height - treeTop - 600) * 2 / 5;
  Place(FolderTree, Margin, treeTop, column, treeHeight);
  const int statusTop = treeTop + treeHeight + 60;
  Place(Picture2, Margin, statusTop, column, RowHeight);
  const int listTop = statusTop + RowHeight + 60;
  Place(FileList, Margin, listTop, column, height - listTop - Margin);

  // Album side.
  Place(Label3, right, 120, 1300, RowHeight);
  Place(AlbumName, right + 1320, 90, column - 1320, RowHeight);
  Place(Check3, right, 480, column, RowHeight);
  const int buttonWidth = (column - 5 * 60) / 6;
  QPushButton* const buttons[] = {copyButton, upButton, downButton, deleteButton, clearButton, replaceButton};
  for (int i = 0; i < 6; ++i) Place(buttons[i], right + i * (buttonWidth + 60), 840, buttonWidth, ButtonHeight);
  Place(Label5, right, 1320, column, RowHeight);
  const int albumTop = 1680;
  Place(AlbumList, right, albumTop, column, height - albumTop - 480);
  Place(Label12, right, height - 420, column, RowHeight);
}

void AlbumEdit::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  PlaceControls();
  RefillAlbumList();
  RefillFileList();
}

void AlbumEdit::Form_Load() {
  Check1->setChecked(settings::GetTrueFalse("SearchSubfolders", true));
  Check2->setChecked(settings::GetTrueFalse("SelectAll", true));
  FolderTree->SetPath(settings::GetSetting("LastAlbumFolder"));
  stopButton->setEnabled(false);
  copyButton->setEnabled(false);
  startButton->setDefault(true);
  FillAlbumNames();
  if (App().SelectedAlbumId < 1) {
    ClearAlbum();
    QTimer::singleShot(0, AlbumName, [name = QPointer<QComboBox>(AlbumName)] {
      if (name) name->setFocus();
    });
  } else {
    LoadAlbum();
  }
  PlaceControls();
}

void AlbumEdit::FillAlbumNames() {
  const QSignalBlocker quiet(AlbumName);
  AlbumName->clear();
  AlbumIds.clear();
  AppState& app = App();
  int selected = -1;
  if (app.DatabaseConnection) {
    for (const AlbumHeader& album : SelectAlbumHeaders(*app.DatabaseConnection)) {
      if (album.PlaylistName.isEmpty()) continue;
      if (album.PlaylistID == app.SelectedAlbumId) selected = int(AlbumIds.size());
      AlbumName->addItem(album.PlaylistName);
      AlbumIds << album.PlaylistID;
    }
  }
  AlbumName->addItem(AddNewAlbum);
  if (selected >= 0)
    AlbumName->setCurrentIndex(selected);
  else
    AlbumName->setEditText(QString());
  replaceButton->setEnabled(false);
}

void AlbumEdit::AlbumName_Click() {
  const QPointer<AlbumEdit> self(this);
  const int index = AlbumName->currentIndex();
  if (replaceButton->isEnabled()) {
    if (Ask(ChangedPrompt(), YesNoStyle, EditTitle) == Yes) {
      // The save refills the names: take the picked one again by its id.
      const qint32 picked = index >= 0 && index < AlbumIds.size() ? AlbumIds[index] : -1;
      replaceButton_Click();
      if (!self) return;
      const int again = int(AlbumIds.indexOf(picked));
      const QSignalBlocker quiet(AlbumName);
      AlbumName->setCurrentIndex(again >= 0 ? again : AlbumName->count() - 1);
    }
    if (!self) return;
  }
  const int current = AlbumName->currentIndex();
  if (current < 0 || current >= AlbumIds.size()) {
    ClearAlbum();
    const QSignalBlocker quiet(AlbumName);
    AlbumName->setEditText(QString());
    AlbumName->setFocus();
  } else {
    App().SelectedAlbumId = AlbumIds[current];
    settings::SaveSetting("AlbumSelected", QString::number(App().SelectedAlbumId));
    LoadAlbum();
  }
}

void AlbumEdit::LoadAlbum() {
  AppState& app = App();
  AlbumPaths.clear();
  AlbumList->clear();
  Label12->setText(NoRecords);
  if (app.DatabaseConnection) {
    if (const auto properties = SelectAlbumProperties(*app.DatabaseConnection, app.SelectedAlbumId))
      Check3->setChecked(properties->PlaylistPreventDuplicates);
    for (const QString& path : SelectPlaylistFiles(*app.DatabaseConnection, app.SelectedAlbumId))
      if (!path.isEmpty()) AlbumPaths << path;
  }
  RefillAlbumList();
  if (!AlbumPaths.isEmpty()) ShowCount();
  ListsChanged = false;
  SetEditButtons();
  replaceButton->setEnabled(false);
}

void AlbumEdit::ClearAlbum() {
  AlbumPaths.clear();
  AlbumList->clear();
  Label12->setText(NoRecords);
  App().SelectedAlbumId = 0;
  SetEditButtons();
}

QString AlbumEdit::Shortened(const QListWidget* list, const QString& path) const {
  const int room = twips::FromPixels(list->viewport()->width()) - ListRoom;
  return ShortenPath(list->fontMetrics(), path, std::max(room, 600), 1);
}

void AlbumEdit::RefillAlbumList() {
  const QSignalBlocker quiet(AlbumList);
  const QList<QListWidgetItem*> selected = AlbumList->selectedItems();
  QList<int> rows;
  for (QListWidgetItem* item : selected) rows << AlbumList->row(item);
  AlbumList->clear();
  for (const QString& path : AlbumPaths) AlbumList->addItem(Shortened(AlbumList, path));
  for (int row : rows)
    if (QListWidgetItem* item = AlbumList->item(row)) item->setSelected(true);
}

void AlbumEdit::RefillFileList() {
  if (FileList->count() != SearchPaths.size()) return;  // the search's status lines
  for (int i = 0; i < SearchPaths.size(); ++i) FileList->item(i)->setText(Shortened(FileList, SearchPaths[i]));
}

void AlbumEdit::ShowCount() { Label12->setText(CountText(AlbumCount())); }

void AlbumEdit::ShowPopup(QListWidget* list, QChar source, const QPoint& at) {
  DragSource = source;
  mnuCopy->setEnabled(source == 'F');
  mnuDelete->setEnabled(!list->selectedItems().isEmpty());
  MenuFile->popup(list->viewport()->mapToGlobal(at));
}

void AlbumEdit::mnuCopy_Click() {
  if (DragSource == 'F') copyButton_Click();
}

void AlbumEdit::mnuDelete_Click() {
  if (DragSource == 'P') {
    deleteButton_Click();
    return;
  }
  for (int i = FileList->count() - 1; i >= 0; --i) {
    if (!FileList->item(i)->isSelected()) continue;
    delete FileList->takeItem(i);
    if (i < SearchPaths.size()) SearchPaths.removeAt(i);
  }
  Count3->setText(QString::number(SearchCount()) + " ");
}

int AlbumEdit::Ask(const QString& prompt, int style, const QString& title) const {
  MsgBoxEnhanced* box = App().MsgBox;
  return box ? box->MsgBox(prompt, qint16(style), title) : 0;
}

void AlbumEdit::Tell(const QString& text) const {
  if (MsgBoxEnhanced* box = App().MsgBox) box->MsgBox(text, 48, EditTitle);
}

bool AlbumEdit::eventFilter(QObject* watched, QEvent* event) {
  if (watched == AlbumList->viewport()) {
    switch (event->type()) {
      case QEvent::DragEnter:
      case QEvent::DragMove: {
        auto* drag = static_cast<QDragMoveEvent*>(event);
        if (AcceptsDrop(drag->mimeData()))
          drag->acceptProposedAction();
        else
          drag->ignore();
        return true;
      }
      case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        if (AlbumList_Drop(drop->mimeData()))
          drop->acceptProposedAction();
        else
          drop->ignore();
        return true;
      }
      default:
        break;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void AlbumEdit::keyPressEvent(QKeyEvent* event) {
  const int code = keys::KeyCode(event);
  const int shift = keys::ShiftOf(event);
  if ((code == keys::Return) && stopButton->isEnabled()) {
    stopButton_Click();
    return;
  }
  if (code == keys::Return && FileName->hasFocus()) {
    startButton_Click();
    return;
  }
  HandleCommonKey(this, code, shift, false, true);
}

void AlbumEdit::FolderTree_Refresh() { FolderTree->Refresh(); }

void AlbumEdit::closeEvent(QCloseEvent* event) {
  AppState& app = App();
  if (closing_) {
    event->accept();
    return;
  }
  if (SearchRunning() && searching_) StopSearch();
  if (replaceButton->isEnabled() && !app.ShuttingDown) {
    const QPointer<AlbumEdit> self(this);
    const int answer = Ask(ChangedPrompt(), YesNoCancelStyle, ExitTitle);
    if (!self) return;
    if (answer == Cancel) {
      app.CloseRefused = true;
      event->ignore();
      return;
    }
    if (answer == Yes && !replaceButton_Click()) {
      // A failed save keeps the window and its changes.
      app.CloseRefused = true;
      event->ignore();
      return;
    }
  }
  closing_ = true;
  const QString folder = FolderTree->Path();
  if (!folder.isEmpty()) settings::SaveSetting("LastAlbumFolder", folder);
  Windows().Closed(this);
  event->accept();
  if (QWidget* frame = FrameOf(this); frame != this) frame->close();
  // The album selection comes back, as its button brings it.
  if (!app.ShuttingDown)
    QTimer::singleShot(0, qApp, [] {
      if (App().ShuttingDown) return;
      if (BarCommands* bar = CommandBarCommands()) bar->Click(BarButton::albumButton);
    });
}
