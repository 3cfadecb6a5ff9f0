#include "fileops/RenameFile.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QPushButton>

#include "catalogue/PathParts.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/PaintRoutines.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/BrowserCommands.h"
#include "core/CommonKeys.h"
#include "core/WindowRegistry.h"
#include "core/WindowShow.h"
#include "fileops/PopupPlacement.h"
#include "fileops/RenameRules.h"
#include "fileops/WindowKeys.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

namespace {

// Measures of the strip, in twips.
constexpr int Margin = 90;
constexpr int Gap = 60;
constexpr int RowTop = 60;
constexpr int RowHeight = 345;
constexpr int BoxHeight = 315;
constexpr int ButtonWidth = 810;
constexpr int WindowHeight = RowTop + RowHeight + RowTop;
// Room for the box's frame and the cursor beside the name's own width.
constexpr int BoxPadding = 240;
// The box of an empty or short name.
constexpr int BoxWidthAtLeast = 1200;

constexpr int F2 = keys::F1 + 1, F9 = keys::F1 + 8, F10 = keys::F1 + 9;

QRect PixelsOf(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(width),
               twips::ToPixels(height));
}

int TextTwips(const QWidget* widget, const QString& text) {
  return twips::FromPixels(widget->fontMetrics().horizontalAdvance(text));
}

}  // namespace

RenameFile::RenameFile(QWidget* parent)
    : PassingWindow(Id, parent, Qt::Dialog | Qt::FramelessWindowHint),
      Label1(new QLabel("New file name:", this)),
      NewFile(new QLineEdit(this)),
      Extension(new QLabel(QString::fromLatin1(InitialRenameExtension), this)),
      OKButton(new QPushButton("&OK", this)),
      cancelButton(new QPushButton("Cancel", this)) {
  setObjectName(WindowName(Id));
  setAttribute(Qt::WA_DeleteOnClose);
  Label1->setObjectName("Label1");
  NewFile->setObjectName("NewFile");
  Extension->setObjectName("Extension");
  Extension->setTextFormat(Qt::PlainText);
  OKButton->setObjectName("OKButton");
  cancelButton->setObjectName("cancelButton");
  for (QPushButton* button : {OKButton, cancelButton}) {
    QPalette palette = button->palette();
    palette.setColor(QPalette::Button, App().ColorLightGrey);
    button->setPalette(palette);
  }

  connect(OKButton, &QPushButton::clicked, this, &RenameFile::OKButton_Click);
  connect(cancelButton, &QPushButton::clicked, this, &RenameFile::cancelButton_Click);
  // What the user types or pastes loses the characters that a file name
  // may not hold; the name put there by the window stays as it is.
  KeepFileNameCharacters(NewFile, nameBefore_, DropInsertedRenameCharacters);
  for (QWidget* control : std::initializer_list<QWidget*>{NewFile, OKButton, cancelButton})
    control->installEventFilter(this);

  Form_Load();
  Windows().Loaded(this);
}

void RenameFile::Form_Load() {
  const AppState& app = App();
  const QString name = !app.PendingFile.isEmpty() ? GetBaseName(app.PendingFile) : app.SourceFile;
  const RenameSplit split = SplitRenameName(name);
  NewFile->setText(split.NewFile);
  Extension->setText(split.Extension);
  nameBefore_ = split.NewFile;
  Layout();
}

void RenameFile::Display(int tab, int leftTwips, int topTwips) {
  tab_ = tab;
  wantedLeft_ = leftTwips;
  wantedTop_ = topTwips;
  Layout();
  show();
  raise();
  activateWindow();
  NewFile->setFocus();
  NewFile->selectAll();
}

void RenameFile::Layout() {
  const int labelWidth = TextTwips(Label1, Label1->text()) + 30;
  const int extensionWidth = TextTwips(Extension, Extension->text()) + 60;
  const int boxWanted = std::max(BoxWidthAtLeast, TextTwips(NewFile, NewFile->text()) + BoxPadding);
  const int otherWidth = Margin + labelWidth + Gap + 15 + extensionWidth + Gap + ButtonWidth + Gap +
                         ButtonWidth + Margin;
  const AppState& app = App();
  const RenamePlacement placed = FitRenameWindow(wantedLeft_, wantedTop_, boxWanted, otherWidth,
                                                 WindowHeight, app.MainClientWidth,
                                                 app.MainClientHeight);

  int x = Margin;
  Label1->setGeometry(PixelsOf(x, RowTop, labelWidth, RowHeight));
  x += labelWidth + Gap;
  NewFile->setGeometry(PixelsOf(x, RowTop + (RowHeight - BoxHeight) / 2, placed.BoxWidth, BoxHeight));
  x += placed.BoxWidth + 15;
  Extension->setGeometry(PixelsOf(x, RowTop, extensionWidth, RowHeight));
  x += extensionWidth + Gap;
  OKButton->setGeometry(PixelsOf(x, RowTop, ButtonWidth, RowHeight));
  x += ButtonWidth + Gap;
  cancelButton->setGeometry(PixelsOf(x, RowTop, ButtonWidth, RowHeight));
  x += ButtonWidth + Margin;

  setFixedSize(twips::ToPixels(x), twips::ToPixels(WindowHeight));
  MoveToClientTwips(this, placed.Left, placed.Top);
}

void RenameFile::OKButton_Click() {
  AppState& app = App();
  const QString newName = NewFile->text() + Extension->text();
  if (!app.PendingFile.isEmpty()) {
    app.SourceFile = app.PendingFile;
    app.TargetFile = JoinPath(GetFolderPart(app.PendingFile), newName);
  } else {
    // On the Documents tab the source stays the bare entry, so that only a
    // file of that name in the program's working folder is found.
    if (tab_ != DocumentsTab)
      app.SourceFile = JoinPath(app.CurrentFolder, app.Entry(tab_, app.Current(tab_)));
    app.TargetFile = JoinPath(app.CurrentFolder, newName);
  }

  if (app.SourceFile != app.TargetFile) {
    const int error = RenameWithoutReplacing(app.SourceFile, app.TargetFile);
    if (error == 58) {
      if (!Tell("A file by that name already exists.")) return;
      activateWindow();
      NewFile->setFocus();
      return;
    }
    if (error == 75) {
      QPointer<RenameFile> self(this);
      Tell("The file is write protected.");
      if (self) Unload();
      UnloadViewersIfPending();
      return;
    }
    if (error == 0) FollowRenameInDataFile(app.SourceFile, app.TargetFile);
    // Any other failure leaves the file as it was, and the list shows the
    // new name all the same until the next listing puts it right.
    if (app.PendingFile.isEmpty()) {
      if (BrowserCommands* browser = TheBrowserCommands())
        browser->CurrentEntryRenamed(RenamedListEntry(NewFile->text(), Extension->text()));
      // An open picture viewer of the renamed item takes the new path, the
      // name in its title, its description and tooltip.
      if (tab_ == PicturesTab && error == 0)
        if (auto* viewer = dynamic_cast<RenamedFileViewer*>(Windows().Find(WindowId::SingleImage)))
          viewer->FileRenamed(app.TargetFile);
    }
  }

  app.SkipNextEnter = true;
  Unload();
  UnloadViewersIfPending();
}

void RenameFile::cancelButton_Click() {
  App().SkipNextEnter = true;
  Unload();
}

bool RenameFile::Tell(const QString& text) {
  MsgBoxEnhanced* box = App().MsgBox;
  if (!box) return true;
  QPointer<RenameFile> self(this);
  SetAskingUser(true);
  box->MsgBox(text);
  if (!self) return false;
  SetAskingUser(false);
  return !Closed();
}

void RenameFile::UnloadViewersIfPending() {
  if (App().PendingFile.isEmpty()) return;
  for (WindowId viewer : {WindowId::SingleImage, WindowId::SingleAudio, WindowId::SingleVideo})
    Windows().Unload(viewer);
}

bool RenameFile::HandleWindowKey(int keyCode, int shift) {
  if (!IsWindowKey(keyCode, shift)) return false;
  if (keyCode == keys::F1) {
    // Help comes up only while the command bar offers it; then the window
    // makes way for it.
    QPointer<RenameFile> self(this);
    BarCommands* bar = CommandBarCommands();
    if (bar && bar->ClickIfEnabled(BarButton::HelpButton) && self) Unload();
    return true;
  }
  if (keyCode == F2 || keyCode == F9) {
    Unload();
    QCoreApplication::processEvents();
    if (QWidget* viewer = Windows().Find(WindowId::SingleImage)) viewer->hide();
    if (QWidget* main = Windows().Find(WindowId::MainForm)) main->showMinimized();
    return true;
  }
  HandleCommonKey(this, keyCode, shift, false, false);
  return true;
}

bool RenameFile::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (HandleWindowKey(keys::KeyCode(key), keys::ShiftOf(key))) return true;
    // Enter renames; on a button it presses that button.
    if (EnterPressesButtonOrOk(watched, key, [this] { OKButton_Click(); })) return true;
  }
  return QWidget::eventFilter(watched, event);
}

void RenameFile::keyPressEvent(QKeyEvent* event) {
  HandleWindowKey(keys::KeyCode(event), keys::ShiftOf(event));
}

void RenameFile::paintEvent(QPaintEvent* event) {
  PassingWindow::paintEvent(event);
  QPainter painter(this);
  // Without a frame of its own the strip needs an edge to stand out from
  // the cells beneath it.
  painter.setPen(App().ColorDarkGrey);
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

RenameFile* ShowRenameFile(int tab, int leftTwips, int topTwips) {
  Windows().Unload(RenameFile::Id);
  auto* window = new RenameFile(Windows().Find(WindowId::MainForm));
  window->Display(tab, leftTwips, topTwips);
  return window;
}
