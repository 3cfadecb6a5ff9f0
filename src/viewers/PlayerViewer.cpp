// The audio and video viewers' window: controls and their places, loading
// and playing the current file, the slider, activation, keys and the close.

#include "viewers/PlayerViewer.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiSubWindow>

#include "catalogue/FileInfoText.h"
#include "catalogue/MediaTypes.h"
#include "catalogue/NumberFormat.h"
#include "catalogue/PathParts.h"
#include "catalogue/PathRoutines.h"
#include "controls/BalloonHelp.h"
#include "controls/Button.h"
#include "controls/NewSlider.h"
#include "controls/TransCheck.h"
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
#include "viewers/AudioVideoPlayer.h"
#include "viewers/PlayerRules.h"
#include "viewers/ViewerFrame.h"

namespace {

constexpr int ButtonSize = 360;
constexpr int RowTop = 30;
constexpr int DescriptionTop = 435;
constexpr int SliderTop = 690;
constexpr int TransportTop = 960;

struct ButtonText {
  const char* Name;
  const char* Title;
  const char* Text;  // %1 stands for "audio" or "video"
};

// The walking and file buttons across the top, then the transport buttons.
constexpr ButtonText ButtonTexts[] = {
    {"firstButton", "First", "Click here to play the first %1 file"},
    {"previousButton", "Previous", "Click here to play the previous %1 file"},
    {"nextButton", "Next", "Click here to play the next %1 file"},
    {"lastButton", "Last", "Click here to play the last %1 file"},
    {"playlistButton", "Playlist", "Click here to open the %1 playlist"},
    {"renameButton", "Rename", "Click here to rename the current %1 file"},
    {"copyButton", "Copy", "Click here to copy the current %1 file"},
    {"moveButton", "Move", "Click here to move the current %1 file"},
    {"deleteButton", "Delete", "Click here to delete the current %1 file"},
    {"emailButton", "E-Mail", "Click here to e-mail the current %1 file"},
    {"propertiesButton", "Properties", "Click here to view or change the properties of the current %1 file"},
    {"tagButton", "Tag Data", "Click here to change the tag data of the current %1 file"},
    {"playButton", "Play", "Click here to play the current %1 file"},
    {"pauseButton", "Pause", "Click here to pause the current %1 file"},
    {"stopButton", "Stop", "Click here to stop the current %1 file"},
    {"restartButton", "Restart", "Click here to go to the start of the current %1 file"},
    {"endButton", "End", "Click here to go to the end of the current %1 file"},
    {"fbButton", "Back", "Click here to go back in the current %1 file"},
    {"ffButton", "Forward", "Click here to go forward in the current %1 file"},
};
constexpr int TopButtonCount = 12;

}  // namespace

PlayerViewer::PlayerViewer(const Kind& kind, QWidget* parent)
    : QWidget(parent), kind_(kind), balloons_(new BalloonHelp(this)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(kind.Title);
  MakeControls();
  if (ViewerHost* host = TheViewerHost()) host->AddViewer(this);
}

PlayerViewer::~PlayerViewer() = default;

void PlayerViewer::MakeControls() {
  const qreal ratio = devicePixelRatioF();
  for (const ButtonText& b : ButtonTexts) {
    auto* button = new Button(this);
    button->setObjectName(b.Name);
    button->SetPicture(ViewerButtonPicture(b.Name, ratio));
    buttons_.append(button);
  }
  Button** fields[] = {&firstButton, &previousButton, &nextButton,   &lastButton,    &playlistButton,
                       &renameButton, &copyButton,    &moveButton,   &deleteButton,  &emailButton,
                       &propertiesButton, &tagButton, &playButton,   &pauseButton,   &stopButton,
                       &restartButton, &endButton,    &fbButton,     &ffButton};
  void (PlayerViewer::*routines[])() = {
      &PlayerViewer::firstButton_Click,    &PlayerViewer::previousButton_Click,
      &PlayerViewer::nextButton_Click,     &PlayerViewer::lastButton_Click,
      &PlayerViewer::playlistButton_Click, &PlayerViewer::renameButton_Click,
      &PlayerViewer::copyButton_Click,     &PlayerViewer::moveButton_Click,
      &PlayerViewer::deleteButton_Click,   &PlayerViewer::emailButton_Click,
      &PlayerViewer::propertiesButton_Click, &PlayerViewer::tagButton_Click,
      &PlayerViewer::playButton_Click,     &PlayerViewer::pauseButton_Click,
      &PlayerViewer::stopButton_Click,     &PlayerViewer::restartButton_Click,
      &PlayerViewer::endButton_Click,      &PlayerViewer::fbButton_Click,
      &PlayerViewer::ffButton_Click};
  for (int i = 0; i < buttons_.size(); ++i) {
    *fields[i] = buttons_[i];
    connect(buttons_[i], &Button::Click, this, routines[i]);
  }
  if (kind_.PlayerType != 0) tagButton->hide();

  DescriptionLabel = new QLabel(this);
  DescriptionLabel->setObjectName("DescriptionLabel");
  Player = new AudioVideoPlayer(this);
  Player->setObjectName(kind_.PlayerType == 0 ? "AudioPlayer1" : "VideoPlayer1");
  Player->SetPlayerType(kind_.PlayerType);
  Slider1 = new NewSlider(this);
  Slider1->setObjectName("Slider1");
  Check1 = new TransCheck(this);
  Check1->setObjectName("Check1");
  Check1->SetCaption("Continuous play");

  Timer1.setInterval(10);
  connect(&Timer1, &QTimer::timeout, this, &PlayerViewer::Timer1_Timer);
  connect(Slider1, &NewSlider::Change, this, &PlayerViewer::Slider1_Change);
  connect(Slider1, &NewSlider::Scroll, this, &PlayerViewer::Slider1_Scroll);
  connect(Check1, &TransCheck::Click, this, &PlayerViewer::Check1_Click);
  connect(Player, &AudioVideoPlayer::PlayStateChange, this, &PlayerViewer::Player_PlayStateChange);
  connect(Player, &AudioVideoPlayer::OnPlayFinish, this, &PlayerViewer::PlayFinished);
  // A click on the slider gives the focus to the button that fits the state.
  connect(Slider1, &NewSlider::MouseDown, this, [this](int, int, int, int) {
    if (IsMinimised()) return;
    (Player->PlayState() == 2 ? pauseButton : playButton)->setFocus();
  });
  for (QWidget* child : findChildren<QWidget*>()) child->installEventFilter(this);
}

void PlayerViewer::Form_Load() {
  AppState& app = App();
  Pending = app.PendingFile;
  Index = Pending.isEmpty() ? app.Current(kind_.Tab) : 0;
  Count = Pending.isEmpty() ? 0 : 1;
  for (qint32 i = 0; Pending.isEmpty() && i < app.Count(kind_.Tab); ++i)
    if (!app.List(kind_.Tab).at(i).isEmpty()) ++Count;
  Direction = '+';
  Windows().Unload(WindowId::RenameFile);
  ContinuousPlay = settings::GetSetting(kind_.ContinuousKey, "0") == "1";
  Check1->SetValue(ContinuousPlay ? 1 : 0);
  Player->SetRepeat(ContinuousPlay);
  ResetButtons();
  if (app.OpenedFromSearch || !Pending.isEmpty())
    for (Button* b : {firstButton, previousButton, nextButton, lastButton}) b->SetEnabled(false);
  if (app.AlbumMode && !app.OpenedFromSearch)
    for (Button* b : {renameButton, copyButton, moveButton, deleteButton}) b->SetEnabled(false);
  app.OpenedFromSearch = false;
  // The window stands at the browser's top left.
  const int height = PlayerTop + Player->HeightTwips() + 30 + App().TitleBarHeight;
  SetViewerFrameTwips(this, QRect(0, 0, std::max(Player->WidthTwips() + 90, 6300), height));
  LayOut();
}

// ---- Loading and playing -------------------------------------------------------

QString PlayerViewer::EntryPath(qint32 index) const {
  const AppState& app = App();
  if (!Pending.isEmpty()) return Pending;
  const QString entry = app.Entry(kind_.Tab, index);
  if (entry.isEmpty()) return QString();
  return app.AlbumMode ? entry : JoinPath(app.CurrentFolder, entry);
}

bool PlayerViewer::EntryPasses() const {
  if (!Pending.isEmpty()) return QFileInfo::exists(Pending) && GetMediaType(Pending) == kind_.MediaType;
  const QString entry = App().Entry(kind_.Tab, Index);
  return !entry.isEmpty() && GetMediaType(entry) == kind_.MediaType;
}

void PlayerViewer::LoadMedia() {
  AppState& app = App();
  if (!EntryPasses()) {
    // The walk has found a valid entry before; nothing skips here.
    Player->StopPlay();
    return;
  }
  QApplication::setOverrideCursor(Qt::WaitCursor);
  Timer1.stop();
  Check1->show();
  if (SliderBusy) SetSlider(0);

  const QString entry = app.Entry(kind_.Tab, Index);
  if (!Pending.isEmpty()) {
    description_ = " File: " + Pending;
  } else {
    description_ = " " + Format(Index + 1, "##,##0") + " of " + Format(app.Count(kind_.Tab), "##,##0") +
                   " files    Name: ";
    DescriptionWidth = twips::FromPixels(DescriptionLabel->fontMetrics().horizontalAdvance(description_));
    description_ += app.AlbumMode ? GetBaseName(entry) : entry;
    if (BrowserCommands* browser = TheBrowserCommands()) browser->HighlightItem(kind_.Tab, Index);
  }
  CurrentFile = EntryPath(Index);

  BeforeLoad();
  // The file that plays stops first, so that the new one starts from the top.
  if (Player->PlayState() == 1 || Player->PlayState() == 2) Player->StopPlay();
  Player->SetFileName(CurrentFile);
  QCoreApplication::processEvents();
  if (closing_) {
    QApplication::restoreOverrideCursor();
    return;
  }
  if (!QFileInfo::exists(CurrentFile)) {
    // Gone from the disk between the listing and now.
    for (Button* b : {firstButton, previousButton, nextButton, lastButton}) b->SetEnabled(false);
    QApplication::restoreOverrideCursor();
    CloseViewer();
    return;
  }
  if (!IsMinimised()) ResizeEverything();
  ShowDescription();

  if (Count >= 1) {
    ffButton->SetEnabled(!CurrentFile.endsWith("wma", Qt::CaseInsensitive));
    const QString extension = GetFileExtension(CurrentFile).toLower();
    const bool tags = kind_.PlayerType == 0 && (extension == "mp1" || extension == "mp2" || extension == "mp3");
    tagButton->SetEnabled(tags);
    tagButton->setVisible(tags);
    if (app.ShowPopupData) Player->setToolTip(FileInfoText(GetBaseName(CurrentFile), CurrentFile));
  } else {
    for (Button* b : {firstButton, previousButton, nextButton, lastButton}) b->SetEnabled(false);
    QApplication::restoreOverrideCursor();
    CloseViewer();
    return;
  }
  const int max = Player->Duration() * kind_.SliderScale;
  Slider1->SetMax(max);
  Slider1->SetLargeChange(SliderStep(max, kind_.SliderScale));
  Player->Play();
  QCoreApplication::processEvents();
  if (!closing_) Timer1.start();
  QApplication::restoreOverrideCursor();
}

void PlayerViewer::ShowDescription() {
  const int width = twips::FromPixels(DescriptionLabel->width()) - 60;
  DescriptionLabel->setText(ShortenPath(DescriptionLabel, description_, width, 1));
}

void PlayerViewer::LoadCurrentItem() {
  Pending = App().PendingFile;
  Index = Pending.isEmpty() ? App().Current(kind_.Tab) : 0;
  Direction = '+';
  ResetButtons();
  LoadMedia();
}

void PlayerViewer::ResetButtons() {
  if (!Pending.isEmpty()) return;
  const qint32 last = App().Count(kind_.Tab) - 1;
  firstButton->SetEnabled(Index > 0);
  previousButton->SetEnabled(Index > 0);
  nextButton->SetEnabled(Index < last);
  lastButton->SetEnabled(Index < last);
}

// ---- The slider ------------------------------------------------------------------

void PlayerViewer::SetSlider(int value) {
  SliderBusy = true;
  Slider1->SetValue(value);
  SliderBusy = false;
}

void PlayerViewer::SeekToSlider() {
  Player->SetCurrentPosition(Slider1->Value() / kind_.SliderScale);
  QCoreApplication::processEvents();
}

void PlayerViewer::Timer1_Timer() {
  const bool dragging = Slider1->Scrolling();
  Player->SetScrolling(dragging);
  if (dragging)
    Player->SetCurrentPosition2(Slider1->Value() / kind_.SliderScale);
  else
    SetSlider(Player->CurrentPosition() * kind_.SliderScale);
}

void PlayerViewer::Slider1_Change(int) {
  if (!SliderBusy) SeekToSlider();
}

void PlayerViewer::Slider1_Scroll(int) {
  // The film seeks as the thumb is dragged; a sound file only when let go.
  if (kind_.PlayerType != 0 || !SliderBusy) SeekToSlider();
}

void PlayerViewer::Player_PlayStateChange(int state) {
  if (state == 3) SetSlider(0);
}

void PlayerViewer::PlayFinished() {
  Timer1.stop();
  SetSlider(Slider1->Max());
}

// ---- Layout ----------------------------------------------------------------------

void PlayerViewer::LayOut() {
  const int width = twips::FromPixels(this->width());
  for (int i = 0; i < TopButtonCount; ++i)
    buttons_[i]->setGeometry(TwipsRect(45 + i * ButtonSize, RowTop, ButtonSize, ButtonSize));
  DescriptionLabel->setGeometry(TwipsRect(60, DescriptionTop, std::max(width - 120, 300), 225));
  Slider1->setGeometry(TwipsRect(45, SliderTop, std::max(width - 90, 600), 255));
  for (int i = TopButtonCount; i < buttons_.size(); ++i)
    buttons_[i]->setGeometry(TwipsRect(45 + (i - TopButtonCount) * ButtonSize, TransportTop, ButtonSize, ButtonSize));
  const int checkLeft = 45 + (buttons_.size() - TopButtonCount) * ButtonSize + 120;
  Check1->setGeometry(TwipsRect(checkLeft, TransportTop + 45, std::max(width - checkLeft - 45, 600), 285));
  if (!description_.isEmpty()) ShowDescription();
}

void PlayerViewer::ResizeEverything() {
  LayOut();
  if (kind_.PlayerType == 0) {
    const int width = twips::FromPixels(this->width()) - 90;
    Player->setGeometry(TwipsRect(45, PlayerTop, width, Player->HeightTwips()));
  } else {
    Player->move(twips::ToPixels(45), twips::ToPixels(PlayerTop));
  }
}

void PlayerViewer::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (IsMinimised()) return;
  if (kind_.PlayerType == 0) {
    ResizeEverything();
    return;
  }
  LayOut();
  if (!WindowSizing && !App().RefitInProgress) UserResized();
}

// ---- Window --------------------------------------------------------------------------

bool PlayerViewer::IsMaximised() const { return IsViewerMaximised(this); }

bool PlayerViewer::IsMinimised() const { return IsViewerMinimised(this); }

void PlayerViewer::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (auto* sub = qobject_cast<QMdiSubWindow*>(FrameOf(this)))
    connect(sub, &QMdiSubWindow::windowStateChanged, this, &PlayerViewer::FrameStateChanged,
            Qt::UniqueConnection);
  Form_Activate();
}

void PlayerViewer::FrameStateChanged(Qt::WindowStates was, Qt::WindowStates now) {
  if ((now ^ was) & Qt::WindowMinimized) {
    const bool minimised = now & Qt::WindowMinimized;
    FrameOf(this)->setWindowTitle(minimised ? GetBaseName(CurrentFile) + " " + Player->Title()
                                            : QString(kind_.Title));
    // Minimised, the viewer plays on behind the browser.
    if (minimised && Pending.isEmpty())
      if (BrowserCommands* browser = TheBrowserCommands()) browser->FocusCurrentItem();
  }
  if ((now & Qt::WindowActive) && !(was & Qt::WindowActive)) Form_Activate();
}

void PlayerViewer::Form_Activate() {
  AppState& app = App();
  app.CurrentForm = this;
  // The keys come to the viewer: the button that fits the state has the focus.
  if (!focusWidget() || !isAncestorOf(focusWidget()) || !focusWidget()->hasFocus())
    (Player->PlayState() == 2 ? pauseButton : playButton)->setFocus();
  balloons_->Clear();
  if (app.ShowPopupHelp)
    for (int i = 0; i < buttons_.size(); ++i)
      balloons_->SetBalloon(buttons_[i], QString(ButtonTexts[i].Text).arg(kind_.Noun), ButtonTexts[i].Title);
  if (fileLent_) {
    // Back from the tag or properties window: the file plays again as it did.
    fileLent_ = false;
    LoadMedia();
    if (lentState_ == 0) {
      stopButton_Click();
    } else {
      SetSlider(lentSlider_);
      SeekToSlider();
      if (lentState_ == 1) pauseButton_Click();
    }
  }
}

void PlayerViewer::CloseViewer() { CloseViewerFrame(this); }

void PlayerViewer::closeEvent(QCloseEvent* event) {
  if (closing_) {
    event->accept();
    return;
  }
  closing_ = true;
  AppState& app = App();
  Timer1.stop();
  Player->StopPlay();
  Player->ClosePlayer();
  balloons_->Clear();
  Windows().Unload(WindowId::RenameFile);
  if (Pending.isEmpty() && !app.ShuttingDown)
    if (BrowserCommands* browser = TheBrowserCommands()) browser->FocusCurrentItem();
  Windows().Closed(this);
  event->accept();
  if (QWidget* frame = FrameOf(this); frame != this) frame->close();
}

