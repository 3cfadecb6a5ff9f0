// The picture viewer's window: its controls, its load, where it stands,
// activation, keys and the close.

#include "viewers/SingleImage.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionTitleBar>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QTimer>
#include <QPointer>
#include <QMovie>
#include <QScreen>

#include "catalogue/FileInfoText.h"
#include "catalogue/MediaPicture.h"
#include "catalogue/MediaTypes.h"
#include "catalogue/NumberFormat.h"
#include "catalogue/PathParts.h"
#include "catalogue/PathRoutines.h"
#include "controls/BalloonHelp.h"
#include "controls/Button.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/BrowserCommands.h"
#include "core/CommonKeys.h"
#include "core/Settings.h"
#include "core/ViewerHost.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"
#include "system/AgentModule.h"
#include "viewers/AniGif.h"
#include "viewers/PictureHolder.h"
#include "viewers/SingleImageLayout.h"
#include "viewers/ViewerFrame.h"
#include "viewers/PictureWalk.h"

namespace {

struct ButtonText {
  const char* Name;
  const char* Title;
  const char* Text;
};

// The buttons in their order across the window, with their popup help.
constexpr ButtonText ButtonTexts[] = {
    {"firstButton", "First", "Click here to display the first image file"},
    {"previousButton", "Previous", "Click here to display the previous image file"},
    {"nextButton", "Next", "Click here to display the next image file"},
    {"lastButton", "Last", "Click here to display the last image file"},
    {"slideshowButton", "Slideshow", "Click here to start a slideshow with the current image file"},
    {"renameButton", "Rename", "Click here to rename the current image file"},
    {"copyButton", "Copy", "Click here to copy the current image file"},
    {"moveButton", "Move", "Click here to move the current image file"},
    {"deleteButton", "Delete", "Click here to delete the current image file"},
    {"clipboardButton", "Clipboard", "Click here to copy the current image file to the clipboard"},
    {"printButton", "Print", "Click here to print the current image file"},
    {"emailButton", "E-Mail", "Click here to e-mail the current image file"},
    {"shootButton", "Target Practice", "Click here to use the current image file for target practice"},
    {"paintButton", "Paint", "Click here to edit the current image file in a paint program"},
    {"propertiesButton", "Properties", "Click here to view or change the properties of the current image file"},
};

}  // namespace

using namespace singleimage;

SingleImage::SingleImage(QWidget* parent) : QWidget(parent), balloons_(new BalloonHelp(this)) {
  setObjectName("SingleImage");
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(" Picture Viewer");
  MakeControls();
  if (ViewerHost* host = TheViewerHost()) host->AddViewer(this);
  Form_Load();
}

SingleImage::~SingleImage() = default;

void SingleImage::MakeControls() {
  const qreal ratio = devicePixelRatioF();
  for (const ButtonText& b : ButtonTexts) {
    auto* button = new Button(this);
    button->setObjectName(b.Name);
    button->SetPicture(ViewerButtonPicture(b.Name, ratio));
    buttons_.append(button);
  }
  firstButton = buttons_[0];
  previousButton = buttons_[1];
  nextButton = buttons_[2];
  lastButton = buttons_[3];
  slideshowButton = buttons_[4];
  renameButton = buttons_[5];
  copyButton = buttons_[6];
  moveButton = buttons_[7];
  deleteButton = buttons_[8];
  clipboardButton = buttons_[9];
  printButton = buttons_[10];
  emailButton = buttons_[11];
  shootButton = buttons_[12];
  paintButton = buttons_[13];
  propertiesButton = buttons_[14];
  const std::array<void (SingleImage::*)(), 15> routines{
      &SingleImage::firstButton_Click,     &SingleImage::previousButton_Click,
      &SingleImage::nextButton_Click,      &SingleImage::lastButton_Click,
      &SingleImage::slideshowButton_Click, &SingleImage::renameButton_Click,
      &SingleImage::copyButton_Click,      &SingleImage::moveButton_Click,
      &SingleImage::deleteButton_Click,    &SingleImage::clipboardButton_Click,
      &SingleImage::printButton_Click,     &SingleImage::emailButton_Click,
      &SingleImage::shootButton_Click,     &SingleImage::paintButton_Click,
      &SingleImage::propertiesButton_Click};
  for (int i = 0; i < buttons_.size(); ++i)
    connect(buttons_[i], &Button::Click, this, routines[size_t(i)]);

  DescriptionLabel = new QLabel(this);
  DescriptionLabel->setObjectName("DescriptionLabel");
  Picture1 = new PictureHolder(this);
  Picture1->setObjectName("Picture1");
  Picture1->hide();
  Picture2 = new QLabel(this);
  Picture2->setObjectName("Picture2");
  Picture2->setScaledContents(true);
  Picture2->hide();
  Picture3 = new AniGif(this);
  Picture3->setObjectName("Picture3");
  Picture3->hide();
  CaptionLabel = new QLabel("Caption:", this);
  CaptionLabel->setObjectName("CaptionLabel");
  CaptionText = new QLineEdit(this);
  CaptionText->setObjectName("CaptionText");
  CaptionText->setMaxLength(255);

  ResizeTimer.setInterval(300);
  ResizeTimer.setSingleShot(true);
  connect(&ResizeTimer, &QTimer::timeout, this, &SingleImage::ResizeTimer_Timer);

  // The window sees every key first, as its table of keys asks.
  for (QWidget* child : findChildren<QWidget*>()) child->installEventFilter(this);
  CaptionText->installEventFilter(this);
}

void SingleImage::Form_Load() {
  AppState& app = App();
  ShowCaptions = settings::GetSetting("ShowCaptions", "0") != "0";
  TopMargin = app.TitleBarHeight + (ShowCaptions ? 1005 : 705);
  MinimumHeight = ShowCaptions ? 1560 : 1260;
  if (!ShowCaptions) {
    CaptionLabel->hide();
    CaptionText->hide();
    CaptionLabel->setEnabled(false);
    CaptionText->setEnabled(false);
  }
  if (ViewerHost* host = TheViewerHost(); host && app.MainClientHeight > 0) {
    // The viewer is placed from the browser's corner: its room ends 60
    // above the main window's lower edge, which is the browser's.
    MaximumHeight = host->BrowserHeightTwips() - 60;
    MaximumWidth = host->BrowserWidthTwips();
  } else {
    // On its own the viewer has the screen's work area.
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
    MaximumHeight = twips::FromPixels(area.height()) - 60;
    MaximumWidth = twips::FromPixels(area.width());
  }
  // The window stands at the browser's top left.
  SetFrameTwips(QRect(0, 0, MinimumWidth, MinimumHeight + 1500));
  Direction = '+';
  Pending = app.PendingFile;
  PictureIndex = Pending.isEmpty() ? app.CurrentPicture() : 0;
  // The files of the list that are still there.
  PictureCount = Pending.isEmpty() ? 0 : 1;
  for (qint32 i = 0; Pending.isEmpty() && i < app.Count(PicturesTab); ++i)
    if (!app.PictureFiles().at(i).isEmpty()) ++PictureCount;
  Windows().Unload(WindowId::RenameFile);
  SetWalkButtons();
  if (app.OpenedFromSearch || !Pending.isEmpty()) {
    for (Button* b : {firstButton, previousButton, nextButton, lastButton}) b->SetEnabled(false);
  }
  if (app.AlbumMode && !app.OpenedFromSearch) {
    for (Button* b : {renameButton, copyButton, moveButton, deleteButton}) b->SetEnabled(false);
  }
  app.OpenedFromSearch = false;
  LayOut();
  LoadImage();
  // During the guided tour the viewer only shows itself, and goes again
  // after five seconds or when the tutorial's character has left.
  if (Agent().TourRunning) {
    QTimer::singleShot(0, this, [self = QPointer<SingleImage>(this)] {
      WaitForMerlin(5);
      if (self) self->CloseViewer();
    });
  }
}

QRect SingleImage::FrameTwips() const { return ViewerFrameTwips(this); }

void SingleImage::SetFrameTwips(const QRect& t) { SetViewerFrameTwips(this, t); }

bool SingleImage::IsMaximised() const { return IsViewerMaximised(this); }

bool SingleImage::IsMinimised() const { return IsViewerMinimised(this); }

PictureRoom SingleImage::Room() const {
  const QRect frame = FrameTwips();
  PictureRoom room;
  room.Left = frame.left();
  room.Top = frame.top();
  room.MaximumWidth = MaximumWidth;
  room.MaximumHeight = MaximumHeight;
  room.TopMargin = TopMargin;
  room.SideMargin = SideMargin;
  room.MinimumWidth = MinimumWidth;
  return room;
}

QString SingleImage::RoomKey() const {
  const PictureRoom r = Room();
  return QString("%1 %2 %3 %4 %5 %6 %7")
      .arg(r.Left).arg(r.Top).arg(r.MaximumWidth).arg(r.MaximumHeight).arg(r.TopMargin)
      .arg(IsMaximised() || FullSizeShow()).arg(devicePixelRatioF());
}

bool SingleImage::FullSizeShow() const {
  return App().SlideshowRunning && settings::GetSetting("SlideshowFullSize", "0") == "1";
}

QSize SingleImage::ShownBoxFor(QSize natural) const {
  return BoxFor(natural, Room(), IsMaximised() || FullSizeShow(), devicePixelRatioF());
}

// ---- Activation, keys, close ----------------------------------------------------

void SingleImage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (auto* sub = qobject_cast<QMdiSubWindow*>(FrameOf(this)); sub) {
    connect(sub, &QMdiSubWindow::windowStateChanged, this, &SingleImage::FrameStateChanged,
            Qt::UniqueConnection);
  }
  Form_Activate();
}

void SingleImage::FrameStateChanged(Qt::WindowStates was, Qt::WindowStates now) {
  // Minimised, the window shows the file's name.
  if ((now ^ was) & Qt::WindowMinimized)
    FrameOf(this)->setWindowTitle(now & Qt::WindowMinimized ? GetBaseName(CurrentFile) : " Picture Viewer");
  if ((now & Qt::WindowActive) && !(was & Qt::WindowActive)) Form_Activate();
}

void SingleImage::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow() && FrameOf(this) == this) Form_Activate();
}

void SingleImage::Form_Activate() {
  if (nextButton->isEnabled() && nextButton->isVisible())
    nextButton->setFocus();
  else if (previousButton->isEnabled() && previousButton->isVisible())
    previousButton->setFocus();
  App().CurrentForm = this;
  LoadTips();
}

void SingleImage::LoadTips() {
  const AppState& app = App();
  if (app.ShowPopupHelp != HelpTipsShown || balloons_->Count() == 0) {
    balloons_->Clear();
    if (app.ShowPopupHelp)
      for (int i = 0; i < buttons_.size(); ++i)
        balloons_->SetBalloon(buttons_[i], ButtonTexts[i].Text, ButtonTexts[i].Title);
    HelpTipsShown = app.ShowPopupHelp;
  }
  if (app.ShowPopupData != DataTipsShown) {
    Picture1->setToolTip(app.ShowPopupData && PictureValid ? FileInfoText(GetBaseName(CurrentFile), CurrentFile)
                                                           : QString());
    DataTipsShown = app.ShowPopupData;
  }
}

bool SingleImage::Form_KeyDown(int keyCode, int shift) {
  const auto press = [](Button* button, void (SingleImage::*routine)(), SingleImage* self) {
    if (button->isEnabled()) (self->*routine)();
    return true;
  };
  if (shift == keys::NoShift) {
    switch (keyCode) {
      case keys::F1:
        FrameOf(this)->showMinimized();
        if (BarCommands* bar = CommandBarCommands()) bar->ClickIfEnabled(BarButton::HelpButton);
        return true;
      case keys::Prior: return press(previousButton, &SingleImage::previousButton_Click, this);
      case keys::Next: return press(nextButton, &SingleImage::nextButton_Click, this);
      case keys::Home:
        if (CaptionFocused) return false;
        return press(firstButton, &SingleImage::firstButton_Click, this);
      case keys::End:
        if (CaptionFocused) return false;
        return press(lastButton, &SingleImage::lastButton_Click, this);
      case keys::Delete:
        if (CaptionFocused) return false;
        return press(deleteButton, &SingleImage::deleteButton_Click, this);
      default: return false;
    }
  }
  if (shift == keys::CtrlMask) {
    switch (keyCode) {
      case 'B': return press(clipboardButton, &SingleImage::clipboardButton_Click, this);
      case 'C': return press(copyButton, &SingleImage::copyButton_Click, this);
      case 'D': return press(deleteButton, &SingleImage::deleteButton_Click, this);
      case 'E': return press(emailButton, &SingleImage::emailButton_Click, this);
      case 'L': return press(slideshowButton, &SingleImage::slideshowButton_Click, this);
      case 'M': return press(moveButton, &SingleImage::moveButton_Click, this);
      case 'P': return press(printButton, &SingleImage::printButton_Click, this);
      case 'R': return press(renameButton, &SingleImage::renameButton_Click, this);
      case 'T': return press(shootButton, &SingleImage::shootButton_Click, this);
      default: return false;
    }
  }
  return false;
}

bool SingleImage::eventFilter(QObject* watched, QEvent* event) {
  if (watched == CaptionText) {
    if (event->type() == QEvent::FocusIn) CaptionFocused = true;
    if (event->type() == QEvent::FocusOut) CaptionFocused = false;
  }
  if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    const int code = keys::KeyCode(key), shift = keys::ShiftOf(key);
    // The caption box would take Ctrl+C and the like for its text: the
    // window's keys come first.
    if (event->type() == QEvent::ShortcutOverride) {
      if (watched == CaptionText && shift == keys::CtrlMask && QString("BCDELMPRT").contains(QChar(code))) {
        event->accept();
        return true;
      }
      return false;
    }
    if (Form_KeyDown(code, shift)) return true;
  }
  return QWidget::eventFilter(watched, event);
}

void SingleImage::keyPressEvent(QKeyEvent* event) {
  const int code = keys::KeyCode(event), shift = keys::ShiftOf(event);
  if (Form_KeyDown(code, shift)) return;
  HandleCommonKey(this, code, shift, false, false);
}

void SingleImage::CloseViewer() { CloseViewerFrame(this); }

void SingleImage::closeEvent(QCloseEvent* event) {
  if (closing_) {
    event->accept();
    return;
  }
  closing_ = true;
  AppState& app = App();
  ResizeTimer.stop();
  ahead_.Forget();
  Picture3->StopAnimate(false, false);
  balloons_->Clear();
  Windows().Unload(WindowId::RenameFile);
  SaveCaption();
  if (!app.SlideshowRunning && Pending.isEmpty() && !app.ShuttingDown)
    if (BrowserCommands* browser = TheBrowserCommands()) browser->FocusCurrentItem();
  Windows().Closed(this);
  event->accept();
  emit Closed();
  if (QWidget* frame = FrameOf(this); frame != this) frame->close();
}

void SingleImage::LoadCurrentItem() {
  SaveCaption();
  Pending = App().PendingFile;
  PictureIndex = Pending.isEmpty() ? App().CurrentPicture() : 0;
  Direction = '+';
  SetWalkButtons();
  LoadImage();
}
