#include "fileops/ChooseDirectory.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

#include "core/CommonKeys.h"
#include "core/BrowserCommands.h"
#include "catalogue/CdDrives.h"
#include "catalogue/PathParts.h"
#include "catalogue/PathRoutines.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/PaintRoutines.h"
#include "fileops/DirectoryPlacement.h"
#include "fileops/FolderTreeView.h"
#include "fileops/NameCharacters.h"
#include "fileops/WindowKeys.h"
#include "platform/KeyCodes.h"
#include "system/AgentModule.h"
#include "platform/SystemMessage.h"
#include "platform/Twips.h"
#include "core/AppState.h"
#include "core/WindowRegistry.h"

namespace {

// Measures of the window's contents, in twips.
constexpr int Margin = 120;
constexpr int Gap = 120;
constexpr int FolderNameHeight = 285;
constexpr int LabelHeight = 255;
constexpr int NameBoxHeight = 315;
constexpr int ExtensionWidth = 1200;
constexpr int ButtonWidth = 1215;
constexpr int ButtonHeight = 375;

QRect PixelsOf(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(std::max(width, 0)),
               twips::ToPixels(std::max(height, 0)));
}

QRect TwipsOf(const QRect& pixels) {
  return QRect(twips::FromPixels(pixels.left()), twips::FromPixels(pixels.top()),
               twips::FromPixels(pixels.width()), twips::FromPixels(pixels.height()));
}

// The area the chooser keeps to: the main window while it is on the
// screen, else the work area of the screen.
QRect MainAreaTwips() {
  if (QWidget* main = Windows().Find(WindowId::MainForm); main && main->isVisible() && !main->isMinimized())
    return TwipsOf(main->frameGeometry());
  const QScreen* screen = QGuiApplication::primaryScreen();
  return TwipsOf(screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768));
}

// The browser's size, when it is on the screen, for the chooser's first place.
QSize BrowserSizeTwips() {
  QWidget* browser = Windows().Find(WindowId::Thumbnails);
  if (!browser || !browser->isVisible()) return QSize();
  return QSize(twips::FromPixels(browser->width()), twips::FromPixels(browser->height()));
}

}  // namespace

ChooseDirectory::ChooseDirectory(QWidget* parent)
    : QWidget(parent, Qt::Window),
      FolderTree(new FolderTreeView(this)),
      dName2(new QLabel(this)),
      NewFile(new QLineEdit(this)),
      Extension(new QLabel(this)),
      Label1(new QLabel(this)),
      OKButton(new QPushButton("&OK", this)),
      cancelButton(new QPushButton("Cancel", this)) {
  setObjectName(WindowName(Id));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(" Choose Directory");
  // The inside may shrink a little below the smallest outer size, by the
  // room of a frame.
  setMinimumSize(twips::ToPixels(DirectoryMinimumWidth - 600),
                 twips::ToPixels(DirectoryMinimumHeight - 600));

  FolderTree->setObjectName("FolderTree");
  dName2->setObjectName("dName2");
  dName2->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  dName2->setTextFormat(Qt::PlainText);
  NewFile->setObjectName("NewFile");
  Extension->setObjectName("Extension");
  Extension->setTextFormat(Qt::PlainText);
  Label1->setObjectName("Label1");
  OKButton->setObjectName("OKButton");
  cancelButton->setObjectName("cancelButton");

  // Form_Load: buttons in the light grey of the program's command buttons.
  for (QPushButton* button : {OKButton, cancelButton}) {
    QPalette palette = button->palette();
    palette.setColor(QPalette::Button, App().ColorLightGrey);
    button->setPalette(palette);
  }

  connect(FolderTree, &FolderTreeView::PathChanged, this, &ChooseDirectory::FolderTree_Change);
  connect(FolderTree, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
    if (index.isValid()) OKButton_Click();
  });
  connect(OKButton, &QPushButton::clicked, this, &ChooseDirectory::OKButton_Click);
  connect(cancelButton, &QPushButton::clicked, this, &ChooseDirectory::cancelButton_Click);
  // What the user types or pastes into the name box loses the characters
  // that a file name may not hold; a name put there by the program stays.
  KeepFileNameCharacters(NewFile, nameBefore_, DropInsertedNameCharacters);

  for (QWidget* control :
       std::initializer_list<QWidget*>{FolderTree, NewFile, OKButton, cancelButton})
    control->installEventFilter(this);

  // Where the settings put the window, kept on the main window's area.
  const QRect area = MainAreaTwips();
  loadedOuter_ = KeepWithinArea(ReadDirectoryRect(area, BrowserSizeTwips()), area);
  SetOuterTwips(loadedOuter_);

  Windows().Loaded(this);
}

ChooseDirectory::~ChooseDirectory() {
  // A window deleted without a close (the program's end) still lets go.
  if (wheelSuspended_) ResumeMouseWheel();
}

void ChooseDirectory::Display(const QString& folder, const QString& mode) {
  if (!wheelSuspended_) {
    SuspendMouseWheel();
    wheelSuspended_ = true;
  }
  AppState& app = App();
  app.DirectoryCancelled = true;

  const bool copy = mode == "Copy";
  const bool move = mode == "Move";
  if (copy || move) {
    setWindowTitle(copy ? " Select Directory (Copy)" : " Select Directory (Move)");
    Label1->setText(copy ? "File name after copy:" : "File name after move:");
    const QString name = !app.SearchResultFile.isEmpty() ? app.SearchResultFile : app.SourceFile;
    app.OperationFileName = GetBaseName(name);
    NewFile->setText(GetNameWithoutExtension(app.OperationFileName));
    Extension->setText("." + GetFileExtension(GetBaseName(name)));
    sizeMode_ = "Large";
  } else {
    setWindowTitle(" Choose Directory");
    // The hidden box and label are empty, and so is the name they give.
    NewFile->clear();
    Extension->clear();
    sizeMode_ = "Small";
  }
  nameBefore_ = NewFile->text();
  const bool large = sizeMode_ == "Large";
  Label1->setVisible(large);
  NewFile->setVisible(large);
  Extension->setVisible(large);
  Form_Resize();

  show();
  if (isMinimized()) showNormal();
  raise();
  activateWindow();
  (large ? static_cast<QWidget*>(NewFile) : FolderTree)->setFocus();

  app.ChosenFolder = folder;
  FolderTreeRefresh();
  // During the guided tour the window only shows itself, and goes again
  // after three seconds or when the tutorial's character has left.
  if (Agent().TourRunning) {
    QTimer::singleShot(0, this, [self = QPointer<ChooseDirectory>(this)] {
      WaitForMerlin(3);
      if (self && !self->closed_) self->cancelButton_Click();
    });
  }
}

void ChooseDirectory::FolderTreeRefresh() {
  QPointer<ChooseDirectory> self(this);
  QCoreApplication::processEvents();
  if (!self || closed_) return;
  FolderTree->SetPath(App().ChosenFolder);
}

void ChooseDirectory::RefreshFolderTree() { FolderTree->Refresh(); }

void ChooseDirectory::FolderTree_Change(const QString& path) {
  folderName_ = path;
  ShowFolderName();
}

void ChooseDirectory::ShowFolderName() {
  const int room = twips::FromPixels(dName2->contentsRect().width());
  dName2->setText(folderName_.isEmpty() ? QString()
                                        : ShortenPath(dName2, folderName_ + " ", room, 1));
}

void ChooseDirectory::OKButton_Click() {
  AppState& app = App();
  app.ChosenFolder = FolderTree->Path();
  // A CD drive is a folder while it holds a disc, and only for looking at:
  // nothing can be copied or moved onto it.
  const bool drive = FolderTree->IsDriveSelected();
  const bool valid = drive ? sizeMode_ != "Large" && CdDiscReady(app.ChosenFolder)
                           : QFileInfo(app.ChosenFolder).isDir();
  if (!app.ChosenFolder.isEmpty() && valid) {
    app.OperationFileName = NewFile->text() + Extension->text();
    app.DirectoryCancelled = false;
    if (Windows().Find(Id) == this)
      Windows().Unload(Id);
    else
      close();
    return;
  }
  const QString text = "The selected folder is missing or invalid";
  if (app.MsgBox)
    app.MsgBox->MsgBox(text, 48, "Vistrel");
  else
    platform::ShowSystemMessage(text, "Vistrel", platform::MessageIcon::Exclamation);
}

void ChooseDirectory::cancelButton_Click() {
  App().DirectoryCancelled = true;
  if (Windows().Find(Id) == this)
    Windows().Unload(Id);
  else
    close();
}

bool ChooseDirectory::HandleWindowKey(QKeyEvent* event) {
  const int keyCode = keys::KeyCode(event);
  const int shift = keys::ShiftOf(event);
  if (!IsWindowKey(keyCode, shift)) return false;
  HandleCommonKey(this, keyCode, shift, true, true);
  return true;
}

bool ChooseDirectory::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (HandleWindowKey(key)) return true;
    // Enter takes the folder from the tree and the name box; on a button
    // it presses that button.
    if (EnterPressesButtonOrOk(watched, key, [this] { OKButton_Click(); })) return true;
  }
  return QWidget::eventFilter(watched, event);
}

void ChooseDirectory::keyPressEvent(QKeyEvent* event) {
  // Keys that no control used.
  HandleCommonKey(this, keys::KeyCode(event), keys::ShiftOf(event), true, true);
}

void ChooseDirectory::closeEvent(QCloseEvent* event) {
  event->accept();
  if (closed_) return;
  closed_ = true;
  Windows().Closed(this);
  AppState& app = App();
  if (!app.ShuttingDown) SaveDirectoryRect(OuterTwips(), isMinimized());
  if (wheelSuspended_) {
    wheelSuspended_ = false;
    ResumeMouseWheel();
  }
  emit Unloaded();
}

void ChooseDirectory::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Form_Resize();
}

void ChooseDirectory::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // The window system gives the frame once the window is up: if it is not
  // the one allowed for, the outer size is put right once.
  QTimer::singleShot(0, this, [this] {
    const QSize frame = FrameExtra();
    if (frame == appliedFrame_ || isMinimized() || isMaximized()) return;
    appliedFrame_ = frame;
    resize(std::max(twips::ToPixels(loadedOuter_.width()) - frame.width(), minimumWidth()),
           std::max(twips::ToPixels(loadedOuter_.height()) - frame.height(), minimumHeight()));
  });
}

void ChooseDirectory::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintFormGradient(painter, size(), 255, 255, 255, 1);
}

void ChooseDirectory::Form_Resize() {
  const int width = twips::FromPixels(this->width());
  const int height = twips::FromPixels(this->height());
  const int inner = width - 2 * Margin;

  dName2->setGeometry(PixelsOf(Margin, Margin, inner, FolderNameHeight));

  const int buttonTop = height - Margin - ButtonHeight;
  const int cancelLeft = width - Margin - ButtonWidth;
  cancelButton->setGeometry(PixelsOf(cancelLeft, buttonTop, ButtonWidth, ButtonHeight));
  OKButton->setGeometry(PixelsOf(cancelLeft - Gap - ButtonWidth, buttonTop, ButtonWidth, ButtonHeight));

  int treeBottom = buttonTop - Gap;
  if (sizeMode_ == "Large") {
    const int nameTop = buttonTop - Gap - NameBoxHeight;
    const int labelTop = nameTop - 30 - LabelHeight;
    const int extensionLeft = width - Margin - ExtensionWidth;
    Label1->setGeometry(PixelsOf(Margin, labelTop, inner, LabelHeight));
    NewFile->setGeometry(PixelsOf(Margin, nameTop, extensionLeft - 60 - Margin, NameBoxHeight));
    Extension->setGeometry(PixelsOf(extensionLeft, nameTop, ExtensionWidth, NameBoxHeight));
    treeBottom = labelTop - 90;
  }
  const int treeTop = Margin + FolderNameHeight + 60;
  FolderTree->setGeometry(PixelsOf(Margin, treeTop, inner, treeBottom - treeTop));
  ShowFolderName();
}

QSize ChooseDirectory::FrameExtra() const {
  if (isVisible()) {
    const QSize own = frameGeometry().size() - size();
    if (!own.isEmpty()) return own;
  }
  if (QWidget* main = Windows().Find(WindowId::MainForm); main && main->isVisible()) {
    const QSize theirs = main->frameGeometry().size() - main->size();
    if (!theirs.isEmpty()) return theirs;
  }
  return QSize(0, 0);
}

// The outer size is the inner one and the frame it was sized with: the
// frame the window system reports may come later or differ by a border, and
// saving that would grow the window a little at every opening.
QRect ChooseDirectory::OuterTwips() const {
  return TwipsOf(QRect(frameGeometry().topLeft(), size() + appliedFrame_));
}

void ChooseDirectory::SetOuterTwips(const QRect& outer) {
  appliedFrame_ = FrameExtra();
  resize(std::max(twips::ToPixels(outer.width()) - appliedFrame_.width(), minimumWidth()),
         std::max(twips::ToPixels(outer.height()) - appliedFrame_.height(), minimumHeight()));
  // The position of a window is that of its frame.
  move(twips::ToPixels(outer.left()), twips::ToPixels(outer.top()));
}

void ChooseDirectoryWait(const QString& folder, const QString& mode) {
  auto* window = Windows().Get<ChooseDirectory>();
  if (!window) window = new ChooseDirectory(Windows().Find(WindowId::MainForm));
  QPointer<ChooseDirectory> guard(window);
  QEventLoop loop;
  QObject::connect(window, &ChooseDirectory::Unloaded, &loop, &QEventLoop::quit);
  QObject::connect(window, &QObject::destroyed, &loop, &QEventLoop::quit);
  window->Display(folder, mode);
  if (guard && guard->isVisible()) loop.exec();
}
