#include "shell/CommandBar.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>

#include "core/CommonKeys.h"
#include "browser/Thumbnails.h"
#include "catalogue/CdDrives.h"
#include "catalogue/PathParts.h"
#include "catalogue/PathRoutines.h"
#include "controls/BalloonHelp.h"
#include "controls/Button.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/NewSlider.h"
#include "controls/PaintRoutines.h"
#include "controls/SystemColours.h"
#include "fileops/ChooseDirectory.h"
#include "platform/DesktopHandlers.h"
#include "platform/KeyCodes.h"
#include "platform/SiblingPrograms.h"
#include "platform/Twips.h"
#include "core/AppState.h"
#include "shell/BarPictures.h"
#include "shell/CommandBarHelpers.h"
#include "core/HelpTexts.h"
#include "shell/MainForm.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "system/MixerModule.h"

using namespace commandbar;

namespace {

// ---- Layout, in twips ------------------------------------------------------
constexpr int Margin = 90;
// Top row: the folder or album, its buttons, and the volume.
constexpr int Row1Top = 90;
constexpr int Row1Height = 345;
constexpr int DirectoryLabelWidth = 780;
constexpr int SmallButton = 345;
constexpr int VolumeWidth = 600;
constexpr int SliderWidth = 1500;
constexpr int NearGap = 60;
constexpr int GroupGapTop = 240;
constexpr int MinimumNameWidth = 1500;
// Bottom row: the function buttons in groups.
constexpr int Row2Top = 540;
constexpr int BigButton = 480;
constexpr int ButtonGap = 15;
constexpr int GroupGap = 90;

constexpr int TimerInterval = 500;

constexpr int F2 = keys::F1 + 1, F3 = keys::F1 + 2, F4 = keys::F1 + 3, F9 = keys::F1 + 8;

}  // namespace

CommandBar::CommandBar(QWidget* parent) : QWidget(parent) {
  setObjectName("CommandBar");
  setFocusPolicy(Qt::ClickFocus);
  balloons_ = new BalloonHelp(this);

  DirectoryLabel = new QLabel("Folder:", this);
  DirectoryLabel->setObjectName("DirectoryLabel");
  DirectoryLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  QFont bold = DirectoryLabel->font();
  bold.setBold(true);
  DirectoryLabel->setFont(bold);

  DirectoryName = new QLabel(this);
  DirectoryName->setObjectName("DirectoryName");
  DirectoryName->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  DirectoryName->setAutoFillBackground(true);
  DirectoryName->setBackgroundRole(QPalette::Base);
  DirectoryName->setContentsMargins(3, 0, 3, 0);
  DirectoryName->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  DirectoryName->setTextFormat(Qt::PlainText);

  const int small = twips::ToPixels(SmallButton);
  const int big = twips::ToPixels(BigButton);
  DirectoryButton = MakeButton("DirectoryButton", small);
  refreshButton = MakeButton("refreshButton", small);
  cdButton = MakeButton("cdButton", big);
  ejectButton = MakeButton("ejectButton", big);
  closeButton = MakeButton("closeButton", big);
  dvdButton = MakeButton("dvdButton", big);
  audioButton = MakeButton("audioButton", big);
  videoButton = MakeButton("videoButton", big);
  albumButton = MakeButton("albumButton", big);
  searchButton = MakeButton("searchButton", big);
  sortButton = MakeButton("sortButton", big);
  sleepButton = MakeButton("sleepButton", big);
  alarmButton = MakeButton("alarmButton", big);
  paintButton = MakeButton("paintButton", big);
  magnifierButton = MakeButton("magnifierButton", big);
  internetButton = MakeButton("internetButton", big);
  optionsButton = MakeButton("optionsButton", big);
  multimediaButton = MakeButton("multimediaButton", big);
  mixerButton = MakeButton("mixerButton", big);
  aboutButton = MakeButton("aboutButton", big);
  HelpButton = MakeButton("HelpButton", big);
  muteButton = MakeButton("muteButton", small);

  // The windows behind these buttons are not part of the program yet: the
  // album selection, the file search, the selection and sort options, the
  // options, the magnifier and the tutorial, and the CD tray through the CD
  // access. Their buttons show disabled until they come. The tutorial's
  // button is enabled by the main window's first-run watch once the
  // tutorial can run.
  for (Button* later : {albumButton, searchButton, sortButton, optionsButton, magnifierButton,
                        HelpButton, ejectButton, closeButton})
    later->SetEnabled(false);

  const auto connectClick = [this](Button* button, void (CommandBar::*click)()) {
    connect(button, &Button::Click, this, click);
  };
  connectClick(DirectoryButton, &CommandBar::DirectoryButton_Click);
  connectClick(refreshButton, &CommandBar::refreshButton_Click);
  connectClick(cdButton, &CommandBar::cdButton_Click);
  connectClick(ejectButton, &CommandBar::ejectButton_Click);
  connectClick(closeButton, &CommandBar::closeButton_Click);
  connectClick(dvdButton, &CommandBar::dvdButton_Click);
  connectClick(audioButton, &CommandBar::audioButton_Click);
  connectClick(videoButton, &CommandBar::videoButton_Click);
  connectClick(albumButton, &CommandBar::albumButton_Click);
  connectClick(searchButton, &CommandBar::searchButton_Click);
  connectClick(sortButton, &CommandBar::sortButton_Click);
  connectClick(sleepButton, &CommandBar::sleepButton_Click);
  connectClick(alarmButton, &CommandBar::alarmButton_Click);
  connectClick(paintButton, &CommandBar::paintButton_Click);
  connectClick(magnifierButton, &CommandBar::magnifierButton_Click);
  connectClick(optionsButton, &CommandBar::optionsButton_Click);
  connectClick(multimediaButton, &CommandBar::multimediaButton_Click);
  connectClick(mixerButton, &CommandBar::mixerButton_Click);
  connectClick(aboutButton, &CommandBar::aboutButton_Click);
  connectClick(HelpButton, &CommandBar::HelpButton_Click);
  connectClick(muteButton, &CommandBar::muteButton_Click);

  Picture1 = new QLabel(this);
  Picture1->setObjectName("Picture1");
  Picture1->setPixmap(BarPicture("Picture1", small - 7));
  Picture1->hide();
  Picture2 = new QLabel(this);
  Picture2->setObjectName("Picture2");
  Picture2->setPixmap(BarPicture("Picture2", small - 7));
  Picture2->hide();
  muteButton->SetPicture(Picture1->pixmap());

  Slider1 = new NewSlider(this);
  Slider1->setObjectName("Slider1");
  Slider1->SetMax(100);
  Slider1->SetLargeChange(10);
  Slider1->SetSliderShape(1);
  Slider1->SetBackColor(ToOleColor(App().ColorLightGrey));
  // While the thumb is dragged and when it is let go (or moved by a click
  // or a key) the volume follows.
  connect(Slider1, &NewSlider::Scroll, this, &CommandBar::ChangeVolume);
  connect(Slider1, &NewSlider::Change, this, &CommandBar::ChangeVolume);
  Slider2 = new NewSlider(this);
  Slider2->setObjectName("Slider2");
  Slider2->hide();

  Volume = new QLabel(this);
  Volume->setObjectName("Volume");
  Volume->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  Volume->setFont(bold);

  // The focus rests here, out of sight, whenever a button has been used.
  focusButton = new QPushButton(this);
  focusButton->setObjectName("focusButton");
  focusButton->setFocusPolicy(Qt::StrongFocus);
  focusButton->setFlat(true);
  focusButton->setGeometry(-20, -20, 1, 1);

  Timer1.setInterval(TimerInterval);
  connect(&Timer1, &QTimer::timeout, this, &CommandBar::Timer1_Timer);

  // The bar looks at every key before its controls do.
  for (QWidget* child : findChildren<QWidget*>()) child->installEventFilter(this);

  resize(twips::ToPixels(9600), twips::ToPixels(1230));
  PlaceControls();
  Form_Load();
}

CommandBar::~CommandBar() {
  if (!unloaded_) Form_QueryUnload();
}

Button* CommandBar::MakeButton(const QString& name, int sizePixels) {
  auto* button = new Button(this);
  button->setObjectName(name);
  button->SetBackColor(ToOleColor(App().ColorLightGrey));
  // The picture leaves room for the raised edge.
  button->SetPicture(BarPicture(name, sizePixels - (sizePixels > 28 ? 9 : 7)));
  button->setFixedSize(sizePixels, sizePixels);
  return button;
}

// ---- Loading and closing -----------------------------------------------------

void CommandBar::Form_Load() {
  unloaded_ = false;
  const quint32 buttonColour = ToOleColor(App().ColorLightGrey);
  for (Button* button : findChildren<Button*>()) button->SetBackColor(buttonColour);
  internetButton->SetEnabled(false);
  internetButton->hide();

  OpenMixer(0);
  const int volume = GetVolume(0);
  {
    const QSignalBlocker quiet(Slider1);
    Slider1->SetValue(volume);
  }
  Volume->setText(VolumeText(volume));
  Timer1_Timer();
  Timer1.start();
  ApplyHelp();
}

void CommandBar::Form_QueryUnload() {
  Timer1.stop();
  CloseMixer();
  unloaded_ = true;
}

void CommandBar::closeEvent(QCloseEvent* event) {
  Form_QueryUnload();
  event->accept();
}

// ---- Layout and painting -----------------------------------------------------

void CommandBar::PlaceControls() {
  const auto px = [](int t) { return twips::ToPixels(t); };
  const int width = std::max(twips::FromPixels(this->width()), 9000);

  // Top row, from the right: the volume, its slider and the mute button;
  // from the left: the label and the name, with the folder and refresh
  // buttons after the name.
  const int volumeLeft = width - Margin - VolumeWidth;
  const int sliderLeft = volumeLeft - NearGap - SliderWidth;
  const int muteLeft = sliderLeft - NearGap - SmallButton;
  const int refreshLeft = muteLeft - GroupGapTop - SmallButton;
  const int folderLeft = refreshLeft - ButtonGap * 2 - SmallButton;
  const int nameLeft = Margin + DirectoryLabelWidth;
  const int nameWidth = std::max(folderLeft - NearGap - nameLeft, MinimumNameWidth);

  DirectoryLabel->setGeometry(px(Margin), px(Row1Top), px(DirectoryLabelWidth), px(Row1Height));
  DirectoryName->setGeometry(px(nameLeft), px(Row1Top), px(nameWidth), px(Row1Height));
  const int buttonsLeft = nameLeft + nameWidth + NearGap;
  DirectoryButton->move(px(buttonsLeft), px(Row1Top));
  refreshButton->move(px(buttonsLeft + SmallButton + ButtonGap * 2), px(Row1Top));
  muteButton->move(px(muteLeft), px(Row1Top));
  Slider1->setGeometry(px(sliderLeft), px(Row1Top), px(SliderWidth), px(Row1Height));
  Volume->setGeometry(px(volumeLeft), px(Row1Top), px(VolumeWidth), px(Row1Height));

  // Bottom row: the function buttons in groups.
  const std::initializer_list<std::initializer_list<Button*>> groups = {
      {cdButton, ejectButton, closeButton, dvdButton},
      {audioButton, videoButton},
      {albumButton, searchButton, sortButton},
      {sleepButton, alarmButton},
      {paintButton, magnifierButton},
      {optionsButton, multimediaButton, mixerButton},
      {aboutButton, HelpButton},
  };
  int left = Margin;
  for (const auto& group : groups) {
    for (Button* button : group) {
      button->move(px(left), px(Row2Top));
      left += BigButton + ButtonGap;
    }
    left += GroupGap - ButtonGap;
  }
  // Hidden: it would stand with the other programs.
  internetButton->move(px(left), px(Row2Top));
  FitDirectoryName();
}

void CommandBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintFormGradient(painter, size(), 238, 238, 238, 1);
}

void CommandBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  PlaceControls();
}

// ---- The folder or album on display --------------------------------------------

void CommandBar::ShowDirectoryName(const QString& folderOrAlbum) {
  fullName_ = folderOrAlbum + ' ';
  FitDirectoryName();
}

QString CommandBar::DirectoryCaption() const {
  QString caption = DirectoryName->text();
  if (caption.endsWith(' ')) caption.chop(1);
  return caption;
}

void CommandBar::SetDirectoryLabel(bool album) {
  DirectoryLabel->setText(album ? "Album:" : "Folder:");
}

void CommandBar::ShowControls() {
  for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (child == internetButton || child == Slider2 || child == Picture1 || child == Picture2)
      continue;
    child->show();
  }
}

void CommandBar::FitDirectoryName() {
  if (fullName_.isEmpty()) return;
  // The root "/" is kept whole; the folders behind it give way first.
  const int room = std::max(DirectoryName->contentsRect().width(), 1);
  DirectoryName->setText(ShortenPath(DirectoryName, fullName_, twips::FromPixels(room), 1));
}

void CommandBar::Follow(Thumbnails* browser) {
  connect(browser, &Thumbnails::Showing, this, [this](const QString& folderOrAlbum, bool album) {
    SetDirectoryLabel(album);
    ShowDirectoryName(folderOrAlbum);
  });
  connect(browser, &Thumbnails::Listed, this, &CommandBar::ShowControls);
  connect(browser, &Thumbnails::PopupHelpChanged, this, &CommandBar::ApplyHelp);
}

// ---- Volume ----------------------------------------------------------------

QString CommandBar::VolumeText(int percent) { return QString::number(percent) + "% "; }

void CommandBar::ShowMutePicture(bool muted) {
  muteButton->SetPicture(muted ? Picture2->pixmap() : Picture1->pixmap());
}

void CommandBar::ChangeVolume(int percent) {
  Timer1.stop();
  ReleaseFocus();
  Volume->setText(VolumeText(percent));
  SetVolume(0, percent);
  SetVolume(4, percent);
  SetVolume(5, percent);
  Timer1.start();
}

void CommandBar::Timer1_Timer() {
  ShowMutePicture(GetMute(7));
  const int volume = GetVolume(0);
  // The user's drag has the last word while it lasts.
  if (!Slider1->Scrolling()) {
    const QSignalBlocker quiet(Slider1);
    Slider1->SetValue(volume);
  }
  Volume->setText(VolumeText(volume));
  SetVolume(4, volume);
  SetVolume(5, volume);
}

// ---- Keys and focus ----------------------------------------------------------

void CommandBar::GoHome() {
  AppState& app = App();
  const QString old = app.CurrentFolder;
  QString folder = settings::GetSetting("DefaultFolder", settings::MyMediaFolder());
  while (folder.size() > 1 && folder.endsWith('/')) folder.chop(1);
  if (!QFileInfo(folder).isDir()) folder = settings::MyMediaFolder();
  app.AlbumMode = false;
  app.CurrentFolder = folder;
  if (old.toLower() == folder.toLower()) return;
  SetDirectoryLabel(false);
  ShowDirectoryName(folder);
  if (Thumbnails* browser = Browser()) browser->ChangePattern();
}

void CommandBar::Form_KeyDown(int keyCode, int shift) {
  const bool ctrl = shift == keys::CtrlMask;
  Thumbnails* browser = Browser();
  const auto selectTab = [browser](int tab) {
    if (browser) browser->SetCurrentTab(tab);
  };
  const auto minimiseMain = [] {
    if (QWidget* main = Windows().Find(WindowId::MainForm)) main->showMinimized();
  };

  switch (keyCode) {
    case keys::Up:
    case keys::Down:
    case keys::Left:
    case keys::Right:
      if (browser) browser->Form_KeyDown(keyCode, shift);
      return;
    case keys::Prior:
      if (browser) browser->PagePrevious();
      return;
    case keys::Next:
      if (browser) browser->PageNext();
      return;
    case keys::Home:
      GoHome();
      return;
    case keys::End:
      if (browser) browser->PageLast();
      return;
    case keys::Escape:
      Windows().Unload(WindowId::MainForm);
      return;
    case keys::F1:
      if (ctrl)
        selectTab(1);
      else
        ClickIfEnabled(BarButton::HelpButton);
      return;
    case F2:
      if (ctrl)
        selectTab(2);
      else
        minimiseMain();
      return;
    case F3:
      if (ctrl) {
        selectTab(3);
        return;
      }
      break;
    case F4:
      if (ctrl) {
        selectTab(4);
        return;
      }
      break;
    case F9:
      minimiseMain();
      return;
    case keys::Pause:
      if (browser) browser->FocusCurrentCell();
      return;
    default:
      break;
  }
  HandleCommonKey(this, keyCode, shift, false, false);
}

void CommandBar::keyPressEvent(QKeyEvent* event) {
  Form_KeyDown(keys::KeyCode(event), keys::ShiftOf(event));
  event->accept();
}

bool CommandBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
      // The controls' own keys: moving between them, and pressing a button.
      case Qt::Key_Tab:
      case Qt::Key_Backtab:
      case Qt::Key_Space:
      case Qt::Key_Return:
      case Qt::Key_Enter:
        break;
      default:
        Form_KeyDown(keys::KeyCode(key), keys::ShiftOf(key));
        return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void CommandBar::ReleaseFocus() {
  focusButton->setFocus(Qt::OtherFocusReason);
  for (WindowId id : WindowsWith({}, RoleOrder::Forward)) {
    QWidget* window = Windows().Find(id);
    if (!window) continue;
    QWidget* frame = FrameOf(window);
    if (frame->isMinimized() || !frame->isVisible()) continue;
    frame->raise();
  }
  Thumbnails* browser = Browser();
  if (browser && App().CurrentForm == browser) {
    const int tab = browser->CurrentTab();
    if (tab >= 1 && tab <= 3) browser->ShowHighlight(tab);
  }
}

// ---- Help popups -------------------------------------------------------------

void CommandBar::ApplyHelp() {
  if (!App().ShowPopupHelp) {
    balloons_->Clear();
    return;
  }
  for (const HelpEntry& entry : HelpTable()) {
    auto* control = findChild<QWidget*>(entry.Control, Qt::FindDirectChildrenOnly);
    if (control) balloons_->SetBalloon(control, HelpText(entry.Control), entry.Title);
  }
}

// ---- What the keys of every window reach ---------------------------------------

void CommandBar::StepVolume(int direction) { ::StepVolume(direction); }
void CommandBar::ToggleMute() { ::ToggleMute(); }
