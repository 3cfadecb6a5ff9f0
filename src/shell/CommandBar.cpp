#include "shell/CommandBar.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <algorithm>

#include "browser/Thumbnails.h"
#include "catalogue/PathRoutines.h"
#include "controls/BalloonHelp.h"
#include "controls/Button.h"
#include "controls/NewSlider.h"
#include "controls/PaintRoutines.h"
#include "controls/SystemColours.h"
#include "catalogue/CdDrives.h"
#include "core/AppState.h"
#include "core/CommonKeys.h"
#include "core/HelpTexts.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"
#include "shell/CommandBarHelpers.h"
#include "shell/CommandTable.h"
#include "shell/VolumeStrip.h"
#include "system/MixerModule.h"

using namespace commandbar;

namespace {

// ---- Layout, in twips ------------------------------------------------------
constexpr int Margin = 90;
// Top row: the folder or album, its buttons, and the volume.
constexpr int Row1Top = 90;
constexpr int Row1Height = 345;
constexpr int DirectoryLabelWidth = 780;
constexpr int NearGap = 60;
constexpr int GroupGapTop = 240;
constexpr int MinimumNameWidth = 1500;
// Bottom row: the function buttons in groups.
constexpr int Row2Top = 540;
constexpr int ButtonGap = 15;
constexpr int GroupGap = 90;

constexpr int F2 = keys::F1 + 1, F3 = keys::F1 + 2, F4 = keys::F1 + 3, F9 = keys::F1 + 8;

}  // namespace

CommandBar::CommandBar(QWidget* parent)
    : QWidget(parent), volume_(new VolumeStrip(this)), Timer1(volume_->Timer1) {
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

  MakeButtons();

  Slider1 = volume_->Slider1;
  Volume = volume_->Volume;
  Picture1 = volume_->Picture1;
  Picture2 = volume_->Picture2;
  // While the thumb is dragged and when it is let go (or moved by a click
  // or a key) the volume follows.
  connect(Slider1, &NewSlider::Scroll, this, &CommandBar::ChangeVolume);
  connect(Slider1, &NewSlider::Change, this, &CommandBar::ChangeVolume);
  Slider2 = new NewSlider(this);
  Slider2->setObjectName("Slider2");
  Slider2->hide();

  // The focus rests here, out of sight, whenever a button has been used.
  focusButton = new QPushButton(this);
  focusButton->setObjectName("focusButton");
  focusButton->setFocusPolicy(Qt::StrongFocus);
  focusButton->setFlat(true);
  focusButton->setGeometry(-20, -20, 1, 1);

  // Tab visits the volume after the function buttons.
  setTabOrder(HelpButton, muteButton);
  setTabOrder(muteButton, Slider1);

  // The bar looks at every key before its controls do.
  for (QWidget* child : findChildren<QWidget*>()) child->installEventFilter(this);

  resize(twips::ToPixels(9600), twips::ToPixels(1230));
  PlaceControls();
  Form_Load();
}

CommandBar::~CommandBar() {
  if (!unloaded_) Form_QueryUnload();
}

void CommandBar::MakeButtons() {
  for (const CommandRow& row : CommandTable()) {
    Button* button =
        row.Place == BarPlace::VolumeStrip ? volume_->muteButton : MakeBarButton(row, this);
    this->*row.Member = button;
    if (row.Click) connect(button, &Button::Click, this, row.Click);
    NameForReader(button, row.Name());
  }
  NameForReader(volume_->Slider1, "Slider1");
}

void CommandBar::NameForReader(QWidget* control, const QString& name) {
  // A screen reader says the title of the control's help popup, and its
  // text as the description, whether the popups are on or not.
  if (const HelpEntry* help = FindHelp(name)) {
    control->setAccessibleName(help->Title);
    control->setAccessibleDescription(help->Lines.join(' '));
  }
}

Button* CommandBar::ButtonOf(BarButton button) const { return this->*CommandRowOf(button).Member; }

// ---- Loading and closing -----------------------------------------------------

void CommandBar::Form_Load() {
  unloaded_ = false;
  const quint32 buttonColour = ToOleColor(App().ColorLightGrey);
  for (Button* button : findChildren<Button*>()) button->SetBackColor(buttonColour);
  for (const CommandRow& row : CommandTable()) {
    if (row.Start != ButtonStart::Hidden) continue;
    ButtonOf(row.Id)->SetEnabled(false);
    ButtonOf(row.Id)->hide();
  }
  volume_->Open();
  // The tray buttons serve the one CD drive present.
  FillCdDrives();
  ejectButton->SetEnabled(App().CdDriveCount > 0);
  closeButton->SetEnabled(App().CdDriveCount > 0);
  ApplyHelp();
}

void CommandBar::Form_QueryUnload() {
  volume_->Close();
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

  // Top row, from the right: the volume strip; from the left: the label and
  // the name, with the folder and refresh buttons after the name.
  const int volumeLeft = width - Margin - VolumeStrip::WidthTwips();
  const int refreshLeft = volumeLeft - GroupGapTop - SmallButtonTwips;
  const int folderLeft = refreshLeft - ButtonGap * 2 - SmallButtonTwips;
  const int nameLeft = Margin + DirectoryLabelWidth;
  const int nameWidth = std::max(folderLeft - NearGap - nameLeft, MinimumNameWidth);

  DirectoryLabel->setGeometry(px(Margin), px(Row1Top), px(DirectoryLabelWidth), px(Row1Height));
  DirectoryName->setGeometry(px(nameLeft), px(Row1Top), px(nameWidth), px(Row1Height));
  const int buttonsLeft = nameLeft + nameWidth + NearGap;
  DirectoryButton->move(px(buttonsLeft), px(Row1Top));
  refreshButton->move(px(buttonsLeft + SmallButtonTwips + ButtonGap * 2), px(Row1Top));
  volume_->Place(volumeLeft, Row1Top);

  // Bottom row: the function buttons in their groups, from the left.
  int left = Margin;
  for (int group = 1; group <= LastBottomGroup(); ++group) {
    for (const CommandRow& row : CommandTable()) {
      if (row.Place != BarPlace::BottomRow || row.Group != group) continue;
      ButtonOf(row.Id)->move(px(left), px(Row2Top));
      left += BigButtonTwips + ButtonGap;
    }
    left += GroupGap - ButtonGap;
  }
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
  // Slider2 and the hidden buttons stay hidden; so do the mute button's
  // pictures, inside the volume strip.
  const auto hiddenButton = [this](QWidget* child) {
    const auto rows = CommandTable();
    return std::any_of(rows.begin(), rows.end(), [this, child](const CommandRow& row) {
      return row.Start == ButtonStart::Hidden && ButtonOf(row.Id) == child;
    });
  };
  for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
    if (child != Slider2 && !hiddenButton(child)) child->show();
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

QString CommandBar::VolumeText(int percent) { return VolumeStrip::VolumeText(percent); }

void CommandBar::ChangeVolume(int percent) {
  ReleaseFocus();
  volume_->ChangeVolume(percent);
}

void CommandBar::Timer1_Timer() { volume_->Timer1_Timer(); }

// ---- Keys and focus ----------------------------------------------------------

void CommandBar::GoHome() {
  AppState& app = App();
  const QString old = app.CurrentFolder;
  QString folder = settings::GetSetting("DefaultFolder", settings::MyMediaFolder());
  while (folder.size() > 1 && folder.endsWith('/')) folder.chop(1);
  if (!IsBrowsableFolder(folder)) folder = settings::MyMediaFolder();
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
    auto* control = findChild<QWidget*>(entry.Control);
    if (control) balloons_->SetBalloon(control, HelpText(entry.Control), entry.Title);
  }
}

// ---- What the keys of every window reach ---------------------------------------

void CommandBar::StepVolume(int direction) { ::StepVolume(direction); }
void CommandBar::ToggleMute() { ::ToggleMute(); }
