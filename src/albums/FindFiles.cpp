#include "albums/FindFiles.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPointer>
#include <QPushButton>

#include "albums/SearchEngine.h"
#include "catalogue/CdDrives.h"
#include "catalogue/MediaTypes.h"
#include "catalogue/PathParts.h"
#include "catalogue/PathRoutines.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/PaintRoutines.h"
#include "controls/TransCheck.h"
#include "browser/CdTitles.h"
#include "core/AppState.h"
#include "core/WindowFrame.h"
#include "core/Settings.h"
#include "core/Trace.h"
#include "core/ViewerHost.h"
#include "core/WindowRegistry.h"
#include "core/WindowShow.h"
#include "fileops/FolderTreeView.h"
#include "platform/KeyCodes.h"
#include "platform/SiblingPrograms.h"
#include "platform/Twips.h"
#include "system/MixerModule.h"

namespace {

// Measures of the window, in twips.
constexpr int Margin = 120;
constexpr int Gap = 120;
constexpr int LeftWidth = 3600;
constexpr int BoxHeight = 315;
constexpr int CheckHeight = 255;
constexpr int ButtonWidth = 1215;
constexpr int ButtonHeight = 375;
constexpr int PictureHeight = 285;
constexpr int StartWidth = 8400;
constexpr int StartHeight = 6000;

QRect PixelsOf(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(std::max(width, 0)),
               twips::ToPixels(std::max(height, 0)));
}

// The folder searched last in this run of the program: the window starts
// there when it opens again.
QString& LastSearchFolder() {
  static QString folder;
  return folder;
}

// The count as "###,### " writes it: digits grouped by three, nothing for
// zero, and a blank behind.
QString CountText(int count) {
  QString digits = count > 0 ? QString::number(count) : QString();
  for (qsizetype i = digits.size() - 3; i > 0; i -= 3) digits.insert(i, ',');
  return digits + ' ';
}

void Say(const QString& text, const QString& title) {
  if (App().MsgBox) App().MsgBox->MsgBox(text, 48, title);
}

}  // namespace

FindFiles::FindFiles(QWidget* parent)
    : QWidget(parent),
      FileName(new QLineEdit(this)),
      FileType(new QComboBox(this)),
      FolderTree(new FolderTreeView(this)),
      Check1(new TransCheck(this)),
      startButton(new QPushButton("&Start", this)),
      stopButton(new QPushButton(this)),
      FileList(new QListWidget(this)),
      HoldList(new QListWidget(this)),
      Count3(new QLabel(this)),
      Picture1(new QLabel(this)) {
  setObjectName("FindFiles");
  setAttribute(Qt::WA_DeleteOnClose);
  FileName->setObjectName("FileName");
  FileType->setObjectName("FileType");
  FolderTree->setObjectName("FolderTree");
  Check1->setObjectName("Check1");
  startButton->setObjectName("startButton");
  stopButton->setObjectName("stopButton");
  stopButton->setText("S&top");
  FileList->setObjectName("FileList");
  HoldList->setObjectName("HoldList");
  HoldList->hide();
  Count3->setObjectName("Count3");
  Count3->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  Count3->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  Picture1->setObjectName("Picture1");
  Picture1->setTextFormat(Qt::PlainText);
  Picture1->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  Picture1->setAutoFillBackground(true);
  FileList->setUniformItemSizes(true);

  FileType->addItems(FindFilesTypeList());
  FileType->setCurrentIndex(0);
  Check1->SetCaption("Search subfolders");
  Check1->SetValue(settings::GetTrueFalse("SearchSubfolders", true) ? 1 : 0);
  stopButton->setEnabled(false);
  startButton->setDefault(true);

  connect(startButton, &QPushButton::clicked, this, &FindFiles::startButton_Click);
  connect(stopButton, &QPushButton::clicked, this, &FindFiles::stopButton_Click);
  connect(FileList, &QListWidget::itemDoubleClicked, this, &FindFiles::FileList_DblClick);
  connect(FileName, &QLineEdit::textEdited, this, &FindFiles::SearchChanged);
  connect(FileType, &QComboBox::activated, this, &FindFiles::SearchChanged);
  connect(FolderTree, &FolderTreeView::PathChanged, this, &FindFiles::SearchChanged);
  connect(Check1, &TransCheck::Click, this, [this] {
    settings::SaveTrueFalse("SearchSubfolders", Check1->Value() == 1);
    SearchChanged();
  });
  FileList->installEventFilter(this);

  // The tree opens where the last search looked, else at the default folder.
  SearchFolder = LastSearchFolder();
  if (SearchFolder.isEmpty()) SearchFolder = settings::GetSetting("DefaultFolder", settings::DefaultOf("DefaultFolder"));
  FolderTree->SetPath(SearchFolder);
  App().FindFilesTreeLive = true;

  // The window's caption is the name of the command that opens it.
  setWindowTitle(" File Search");
  resize(twips::ToPixels(StartWidth), twips::ToPixels(StartHeight));
  if (ViewerHost* host = TheViewerHost()) host->AddViewer(this);
}

FindFiles::~FindFiles() = default;

void FindFiles::Display() {
  if (searching_) StopSearch();
  FileList->clear();
  HoldList->clear();
  pending_.clear();
  Count3->clear();
  Picture1->clear();
  SetStartCaption("&Start");
  startButton->setEnabled(true);
  stopButton->setEnabled(false);
  show();
  FileName->setFocus();
}

void FindFiles::FolderTreeRefresh() { FolderTree->Refresh(); }

void FindFiles::startButton_Click() {
  if (startButton->text() == "&Show")
    ShowFile();
  else
    RunSearch();
}

void FindFiles::stopButton_Click() {
  StopSearch();
  stopButton->setEnabled(false);
}

void FindFiles::FileList_DblClick() { ShowFile(); }

void FindFiles::RunSearch() {
  if (searching_ || SearchRunning()) return;
  AppState& app = App();
  QApplication::setOverrideCursor(Qt::WaitCursor);
  FileList->clear();
  for (int i = 0; i < 4; ++i) FileList->addItem(" ");
  FileList->addItem("                               ... Searching ...");
  Count3->clear();
  app.PendingFile.clear();
  app.SearchResultFile.clear();
  app.SearchResultFolder.clear();
  HoldList->clear();
  pending_.clear();

  const QString name = FileName->text().isEmpty() ? QString("*") : FileName->text();
  stopButton->setEnabled(true);
  stopButton->setDefault(true);
  startButton->setDefault(false);
  stopButton->setFocus();
  startButton->setEnabled(false);

  SearchPatternList = ::SearchPatternList(name, FileType->currentIndex());
  CdTrackSearch = SearchPatternList.contains(".cda;");
  SearchFolder = FolderTree->Path();
  LastSearchFolder() = SearchFolder;

  // The window may close while the search lets events run: every step
  // after one asks whether it is still there.
  QPointer<FindFiles> self(this);
  auto flush = [self] {
    if (!self || self->pending_.isEmpty()) return;
    self->HoldList->addItems(self->pending_);
    self->pending_.clear();
  };
  SearchSink sink;
  sink.Found = [self](const QString& path) {
    if (self) self->pending_.append(path);
  };
  sink.Count = [self, flush](int count) {
    if (!self) return;
    flush();
    self->Count3->setText(CountText(count));
  };
  sink.Folder = [self](const QString& folder) {
    if (self) self->Picture1->setText(folder.isEmpty() ? QString() : folder + ' ');
  };
  searching_ = true;
  QString root = SearchFolder;
  if (!root.endsWith('/')) root += '/';
  SearchFiles(root, SearchPatternList, Check1->Value() != 1, sink);
  QApplication::restoreOverrideCursor();
  if (!self) return;
  flush();
  searching_ = false;

  FillResultList();
  Trace(QStringLiteral("search found %1").arg(HoldList->count()));
  startButton->setEnabled(true);
  startButton->setDefault(true);
  stopButton->setDefault(false);
  stopButton->setEnabled(false);
  if (FileList->hasFocus() && FileList->count() > 0) SetStartCaption("&Show");
}

void FindFiles::FillResultList() {
  FileList->clear();
  QString drive;
  QStringList tracks;
  if (CdTrackSearch) {
    for (const QString& d : App().CdDrives) {
      tracks = AudioTrackFileNames(d);
      if (!tracks.isEmpty()) {
        drive = d;
        break;
      }
    }
  }
  if (!tracks.isEmpty()) {
    // The tracks of the audio CD, by title where the title lookup knows it;
    // the disc is looked at with every media device closed.
    QStringList titles;
    LookUpCdTitles(drive, titles);
    HoldList->clear();
    for (int i = 0; i < tracks.size(); ++i) {
      HoldList->addItem(JoinPath(drive, tracks[i]));
      FileList->addItem(i < titles.size() && !titles[i].isEmpty() ? titles[i]
                                                                 : QString("Track%1").arg(i + 1, 2, 10, QChar('0')));
    }
  } else if (HoldList->count() == 0) {
    FileName->setFocus();
    return;
  } else {
    const int widthTwips = twips::FromPixels(FileList->viewport()->width());
    QStringList shown;
    shown.reserve(HoldList->count());
    for (int i = 0; i < HoldList->count(); ++i)
      shown.append(ShortenAlbumPath(FileList, HoldList->item(i)->text(), widthTwips, 1));
    FileList->addItems(shown);
  }
  FileList->setCurrentRow(0);
  FileList->setFocus();
}

void FindFiles::ShowFile() {
  const int index = FileList->currentRow();
  if (searching_ || index < 0 || index >= HoldList->count()) return;
  AppState& app = App();
  const QString path = HoldList->item(index)->text();
  app.PendingFile = path;
  app.SearchResultFile = GetBaseName(path);
  app.SearchResultFolder = GetFolderPart(path);
  const QString extension = GetFileExtension(path);
  // A CD track is no file of the file system; it plays in the viewer program.
  if (extension != "cda" && !QFileInfo(path).isFile()) {
    Say("The selected file is missing or invalid", "Vistrel");
    return;
  }
  const QString type = GetMediaType(path);
  if (type == "I" || type == "C" || type == "P") {
    app.OpenedFromSearch = true;
    ShowWindow(WindowId::SingleImage);
  } else if (type == "V") {
    app.OpenedFromSearch = true;
    ShowWindow(WindowId::SingleVideo);
  } else if (type == "A") {
    if (extension == "cda") {
      platform::StartViewerProgram(app.ProgramFolder, path);
    } else if (AudioAbilities() & 1) {
      app.OpenedFromSearch = true;
      ShowWindow(WindowId::SingleAudio);
    } else {
      Say("Your computer is not configured to play audio files", "Windows Setup");
    }
  }
}

void FindFiles::SearchChanged() {
  SetStartCaption("&Start");
  startButton->setDefault(true);
}

void FindFiles::SetStartCaption(const QString& caption) { startButton->setText(caption); }

bool FindFiles::eventFilter(QObject* watched, QEvent* event) {
  if (watched == FileList && event->type() == QEvent::FocusIn && !searching_ && FileList->count() > 0 &&
      HoldList->count() > 0)
    SetStartCaption("&Show");
  return QWidget::eventFilter(watched, event);
}

void FindFiles::keyPressEvent(QKeyEvent* event) {
  // Enter presses the default button, as in a dialog; the keys every
  // window shares do the rest.
  const int code = keys::KeyCode(event);
  if (code == 13) {
    QPushButton* button = stopButton->isDefault() ? stopButton : startButton;
    if (button->isEnabled()) button->click();
    return;
  }
  HandleCommonKey(this, code, keys::ShiftOf(event), false, true);
}

void FindFiles::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintFormGradient(painter, size(), 255, 255, 255, 1);
}

void FindFiles::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  PlaceControls();
}

void FindFiles::PlaceControls() {
  const int width = twips::FromPixels(this->width());
  const int height = twips::FromPixels(this->height());
  int top = Margin;
  FileName->setGeometry(PixelsOf(Margin, top, LeftWidth, BoxHeight));
  top += BoxHeight + Gap;
  FileType->setGeometry(PixelsOf(Margin, top, LeftWidth, BoxHeight));
  top += BoxHeight + Gap;
  Check1->setGeometry(PixelsOf(Margin, top, LeftWidth, CheckHeight));
  top += CheckHeight + Gap;
  FolderTree->setGeometry(PixelsOf(Margin, top, LeftWidth, height - top - Margin));

  const int right = Margin + LeftWidth + Gap;
  const int rightWidth = width - right - Margin;
  startButton->setGeometry(PixelsOf(right, Margin, ButtonWidth, ButtonHeight));
  stopButton->setGeometry(PixelsOf(right + ButtonWidth + Gap, Margin, ButtonWidth, ButtonHeight));
  const int countLeft = right + 2 * (ButtonWidth + Gap);
  Count3->setGeometry(PixelsOf(countLeft, Margin + (ButtonHeight - PictureHeight) / 2,
                               width - countLeft - Margin, PictureHeight));
  top = Margin + ButtonHeight + Gap;
  Picture1->setGeometry(PixelsOf(right, top, rightWidth, PictureHeight));
  top += PictureHeight + Gap;
  FileList->setGeometry(PixelsOf(right, top, rightWidth, height - top - Margin));
}

void FindFiles::closeEvent(QCloseEvent* event) {
  // A running search ends first; the start button offers a new one.
  if (searching_) StopSearch();
  SetStartCaption("&Start");
  if (App().ShuttingDown) App().FindFilesTreeLive = false;
  Windows().Closed(this);
  event->accept();
  // The frame in the main window goes with the window.
  if (QWidget* frame = FrameOf(this); frame != this) frame->close();
}
