#include "albums/SelectionSort.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "albums/SelectionRules.h"
#include "controls/MsgBoxEnhanced.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/CommonKeys.h"
#include "core/SettingsClose.h"
#include "core/Settings.h"
#include "core/ViewerHost.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

using namespace selectionrules;

namespace {

// Measures of the window's inside, in twips.
constexpr int Margin = 120;
constexpr int TabWidth = 10560;
constexpr int TabHeight = 5280;
// The frames on the pages of the tab control.
constexpr int FrameLeft = 120;
constexpr int FrameTop = 120;
constexpr int FrameWidth = TabWidth - 360;
constexpr int FrameHeight = 4560;
// The boxes on the frames, relative to the frame.
constexpr int BoxHeight = 285;
constexpr int BoxStep = 285;
constexpr int GroupGap = 150;
constexpr int FirstColumn = 240;
constexpr int SecondColumn = 4920;
constexpr int Indent = 300;
constexpr int AllTypesTop = 330;
constexpr int GroupsTop = AllTypesTop + BoxStep + GroupGap;
constexpr int OptionsTop = 420;
constexpr int OptionStep = 360;
constexpr int ButtonWidth = 1215;
constexpr int ButtonHeight = 375;
constexpr int ButtonTop = Margin + TabHeight + 120;
constexpr int InsideWidth = Margin + TabWidth + Margin;
constexpr int InsideHeight = ButtonTop + ButtonHeight + 150;

const QColor ButtonColour(220, 230, 240);

constexpr const char* MessageTitle = "File Selection and Sort Options";

QRect PixelsOf(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(width),
               twips::ToPixels(height));
}

// A box reaches to the next column, or to the frame's right edge.
QCheckBox* MakeBox(QWidget* parent, const QString& name, const QString& caption, int left,
                   int top) {
  auto* box = new QCheckBox(caption, parent);
  box->setObjectName(name);
  const int right = left < SecondColumn ? SecondColumn - 60 : FrameWidth - 120;
  box->setGeometry(PixelsOf(left, top, right - left, BoxHeight));
  return box;
}

bool AllTicked(const QList<QCheckBox*>& boxes) {
  for (const QCheckBox* box : boxes)
    if (!box->isChecked()) return false;
  return true;
}

bool AnyTicked(const QList<QCheckBox*>& boxes) {
  for (const QCheckBox* box : boxes)
    if (box->isChecked()) return true;
  return false;
}

template <size_t N>
std::array<bool, N> TicksOf(const QList<QCheckBox*>& boxes) {
  std::array<bool, N> ticks{};
  for (size_t i = 0; i < N; ++i) ticks[i] = boxes[int(i)]->isChecked();
  return ticks;
}

template <size_t N>
void Tick(const QList<QCheckBox*>& boxes, const std::array<bool, N>& ticks) {
  for (size_t i = 0; i < N; ++i) boxes[int(i)]->setChecked(ticks[i]);
}

}  // namespace

SelectionSort::SelectionSort(QWidget* parent)
    : QWidget(parent),
      TabControl(new QTabWidget(this)),
      Frame1(new QGroupBox("File-Type Selection (for display on the screen)")),
      Frame2(new QGroupBox("Sort-Order Selection")),
      AllTypes(nullptr),
      AllPictures(nullptr),
      AllVideos(nullptr),
      AllAudios(nullptr),
      SortDescending(nullptr),
      saveButton(new QPushButton("&Save", this)),
      exitButton(new QPushButton("Close", this)) {
  setObjectName(WindowName(Id));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(" File Selection and Sort");
  MakeControls();
  setFixedSize(twips::ToPixels(InsideWidth), twips::ToPixels(InsideHeight));
  Windows().Loaded(this);
  if (ViewerHost* host = TheViewerHost()) {
    host->AddViewer(this);
    if (QWidget* frame = FrameOf(this); frame != this) {
      frame->installEventFilter(this);
      frame->adjustSize();
    }
  }
  Form_Load();
}

QCheckBox* SelectionSort::SelectPic(int index) const { return pictures_.value(index - 1); }
QCheckBox* SelectionSort::SelectVid(int index) const { return videos_.value(index - 1); }
QCheckBox* SelectionSort::SelectAud(int index) const { return audios_.value(index - 1); }
QRadioButton* SelectionSort::SortOrder(int index) const { return sortOrders_.value(index - 1); }

void SelectionSort::MakeControls() {
  TabControl->setObjectName("TabControl");
  TabControl->setGeometry(PixelsOf(Margin, Margin, TabWidth, TabHeight));
  auto* typesPage = new QWidget;
  auto* sortPage = new QWidget;
  TabControl->addTab(typesPage, "File Types");
  TabControl->addTab(sortPage, "Sort Order");
  Frame1->setObjectName("Frame1");
  Frame2->setObjectName("Frame2");
  Frame1->setParent(typesPage);
  Frame2->setParent(sortPage);
  for (QGroupBox* frame : {Frame1, Frame2})
    frame->setGeometry(PixelsOf(FrameLeft, FrameTop, FrameWidth, FrameHeight));

  // The file types: pictures down the first column, videos then audios
  // down the second, each group under its "All ..." box.
  AllTypes = MakeBox(Frame1, "AllTypes", "All supported file types:", FirstColumn, AllTypesTop);
  AllPictures = MakeBox(Frame1, "AllPictures", "All picture files:", FirstColumn, GroupsTop);
  int top = GroupsTop + BoxStep;
  for (int i = 0; i < PictureBoxes; ++i, top += BoxStep)
    pictures_ << MakeBox(Frame1, QString("SelectPic%1").arg(i + 1), PictureCaptions()[i],
                         FirstColumn + Indent, top);
  AllVideos = MakeBox(Frame1, "AllVideos", "All video files:", SecondColumn, GroupsTop);
  top = GroupsTop + BoxStep;
  for (int i = 0; i < VideoBoxes; ++i, top += BoxStep)
    videos_ << MakeBox(Frame1, QString("SelectVid%1").arg(i + 1), VideoCaptions()[i],
                       SecondColumn + Indent, top);
  top += GroupGap;
  AllAudios = MakeBox(Frame1, "AllAudios", "All audio files:", SecondColumn, top);
  top += BoxStep;
  for (int i = 0; i < AudioBoxes; ++i, top += BoxStep)
    audios_ << MakeBox(Frame1, QString("SelectAud%1").arg(i + 1), AudioCaptions()[i],
                       SecondColumn + Indent, top);
  pictureGroup_ = {AllPictures, pictures_};
  videoGroup_ = {AllVideos, videos_};
  audioGroup_ = {AllAudios, audios_};

  // The sort options; option buttons of one parent exclude one another.
  top = OptionsTop;
  for (int i = 0; i < SortOrderCaptions().size(); ++i, top += OptionStep) {
    auto* option = new QRadioButton(SortOrderCaptions()[i], Frame2);
    option->setObjectName(QString("SortOrder%1").arg(i + 1));
    option->setGeometry(PixelsOf(FirstColumn, top, SecondColumn - 60 - FirstColumn, BoxHeight));
    sortOrders_ << option;
  }
  SortDescending =
      MakeBox(Frame2, "SortDescending", "Sort in descending order?", FirstColumn, top + 180);

  saveButton->setObjectName("saveButton");
  exitButton->setObjectName("exitButton");
  saveButton->setGeometry(
      PixelsOf(InsideWidth - Margin - 2 * ButtonWidth - 120, ButtonTop, ButtonWidth, ButtonHeight));
  exitButton->setGeometry(
      PixelsOf(InsideWidth - Margin - ButtonWidth, ButtonTop, ButtonWidth, ButtonHeight));

  connect(AllTypes, &QCheckBox::clicked, this, &SelectionSort::AllTypes_Click);
  for (Group* group : {&pictureGroup_, &videoGroup_, &audioGroup_}) {
    connect(group->All, &QCheckBox::clicked, this, [this, group] { All_Click(*group); });
    for (QCheckBox* box : group->Boxes)
      connect(box, &QCheckBox::clicked, this, [this, group, box] { Box_Click(*group, box); });
  }
  for (QRadioButton* option : sortOrders_)
    connect(option, &QRadioButton::clicked, this, [this] {
      if (!Populating) MarkChanged();
    });
  connect(SortDescending, &QCheckBox::clicked, this, [this] {
    if (!Populating) MarkChanged();
  });
  connect(saveButton, &QPushButton::clicked, this, &SelectionSort::saveButton_Click);
  connect(exitButton, &QPushButton::clicked, this, &SelectionSort::exitButton_Click);
}

void SelectionSort::Form_Load() {
  const AppState& app = App();
  // The form and its controls stand on the program's dark grey; the two
  // buttons on a light blue grey.
  setAutoFillBackground(true);
  QPalette palette = this->palette();
  palette.setColor(QPalette::Window, app.ColorDarkGrey);
  setPalette(palette);
  for (QWidget* page : {TabControl->widget(0), TabControl->widget(1)}) {
    page->setAutoFillBackground(true);
    page->setPalette(palette);
  }
  for (QPushButton* button : {saveButton, exitButton}) {
    QPalette colours = button->palette();
    colours.setColor(QPalette::Button, ButtonColour);
    button->setPalette(colours);
  }

  Populating = true;
  Tick(pictures_, PictureTicksOf(app.SelectPicturesMask));
  Tick(videos_, VideoTicksOf(app.SelectVideosMask));
  Tick(audios_, AudioTicksOf(app.SelectAudiosMask));
  for (Group* group : {&pictureGroup_, &videoGroup_, &audioGroup_})
    group->All->setChecked(AllTicked(group->Boxes));
  FollowAllTypes();
  // An order outside 1 to 4 leaves every option clear.
  if (QRadioButton* option = SortOrder(app.SortOrderCode)) option->setChecked(true);
  SortDescending->setChecked(app.SortDescendingFlag);
  Populating = false;

  TabControl->setCurrentIndex(0);
  saveButton->setEnabled(false);
  saveButton->setDefault(false);
  exitButton->setText("Close");
  exitButton->setDefault(true);
  PlaceWindow();
}

void SelectionSort::PlaceWindow() {
  QWidget* frame = FrameOf(this);
  ViewerHost* host = TheViewerHost();
  if (!host || frame == this) return;
  if (frame->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized))
    frame->setWindowState(frame->windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized));
  // In the main window's client area: half its height less half the
  // window's, 15 twips higher; half the main window's width less half the
  // window's.
  const int width = twips::FromPixels(frame->width());
  const int height = twips::FromPixels(frame->height());
  const int top = (App().MainClientHeight - height) / 2 - 15;
  const int left = (host->MainOuterTwips().width() - width) / 2;
  frame->move(twips::ToPixels(left), twips::ToPixels(top));
}

void SelectionSort::MarkChanged() {
  saveButton->setEnabled(true);
  saveButton->setDefault(true);
  exitButton->setDefault(false);
  exitButton->setText("Cancel");
}

void SelectionSort::AllTypes_Click() {
  if (Populating) return;
  const bool ticked = AllTypes->isChecked();
  for (Group* group : {&pictureGroup_, &videoGroup_, &audioGroup_}) {
    group->All->setChecked(ticked);
    for (QCheckBox* box : group->Boxes) box->setChecked(ticked);
  }
  MarkChanged();
}

void SelectionSort::All_Click(Group& group) {
  if (Populating) return;
  for (QCheckBox* box : group.Boxes) box->setChecked(group.All->isChecked());
  FollowAllTypes();
  MarkChanged();
}

void SelectionSort::Box_Click(Group& group, QCheckBox* box) {
  if (Populating) return;
  if (!box->isChecked()) {
    group.All->setChecked(false);
    AllTypes->setChecked(false);
  } else if (AllTicked(group.Boxes)) {
    group.All->setChecked(true);
    FollowAllTypes();
  }
  MarkChanged();
}

void SelectionSort::FollowAllTypes() {
  AllTypes->setChecked(AllPictures->isChecked() && AllVideos->isChecked() &&
                       AllAudios->isChecked());
}

bool SelectionSort::SaveSelection() {
  AppState& app = App();
  if (!AnyTicked(pictures_) && !AnyTicked(videos_) && !AnyTicked(audios_)) {
    if (app.MsgBox)
      app.MsgBox->MsgBox("At least one file type must be selected for display.", 48,
                         MessageTitle);
    TabControl->setCurrentIndex(0);
    AllTypes->setFocus();
    return false;
  }
  int order = 0;
  for (int i = 0; i < sortOrders_.size() && order == 0; ++i)
    if (sortOrders_[i]->isChecked()) order = i + 1;
  if (order == 0) {
    if (app.MsgBox) app.MsgBox->MsgBox("A file sort order must be selected.", 48, MessageTitle);
    TabControl->setCurrentIndex(1);
    sortOrders_.first()->setFocus();
    return false;
  }

  app.SelectPicturesMask = PicturesMaskOf(TicksOf<PictureBoxes>(pictures_));
  settings::SaveSetting("SelectPictures", app.SelectPicturesMask);
  app.SelectVideosMask = VideosMaskOf(TicksOf<VideoBoxes>(videos_));
  settings::SaveSetting("SelectVideos", app.SelectVideosMask);
  app.SelectAudiosMask = AudiosMaskOf(TicksOf<AudioBoxes>(audios_));
  settings::SaveSetting("SelectAudios", app.SelectAudiosMask);
  app.SortOrderCode = qint16(order);
  settings::SaveSetting("SortOrder", QString::number(order));
  app.SortDescendingFlag = SortDescending->isChecked();
  settings::SaveTrueFalse("SortDescending", app.SortDescendingFlag);

  app.ListingStale = true;
  saveButton->setEnabled(false);
  return true;
}

void SelectionSort::RefreshListing() {
  // In an album the list stays as it is until it is next built.
  if (App().AlbumMode) return;
  if (BarCommands* bar = CommandBarCommands()) bar->Click(BarButton::refreshButton);
}

void SelectionSort::saveButton_Click() {
  if (!SaveSelection()) return;
  Unload();
  RefreshListing();
}

void SelectionSort::exitButton_Click() { Unload(); }

void SelectionSort::Unload() {
  if (Windows().IdOf(this)) {
    Windows().Unload(Id);
    return;
  }
  close();
}

void SelectionSort::closeEvent(QCloseEvent* event) {
  if (closing_) {
    event->accept();
    return;
  }
  const SettingsCloseOutcome outcome = AskBeforeSettingsClose(
      saveButton->isEnabled(), asking_,
      "The Vistrel selection/sort options have changed.\r\nDo you wish to save the changes?",
      "Exit Sort/Selection Entry", [this] { return SaveSelection(); });
  if (outcome == SettingsCloseOutcome::Refused) {
    event->ignore();
    return;
  }
  const bool saved = outcome == SettingsCloseOutcome::ClosesSaved;
  closing_ = true;
  Windows().Closed(this);
  event->accept();
  if (QWidget* frame = FrameOf(this); frame != this) frame->close();
  if (saved) RefreshListing();
}

void SelectionSort::keyPressEvent(QKeyEvent* event) {
  const int code = keys::KeyCode(event), shift = keys::ShiftOf(event);
  if (Form_KeyDown(code, shift)) return;
  HandleCommonKey(this, code, shift, false, false);
}

bool SelectionSort::Form_KeyDown(int keyCode, int shift) {
  if (HandleSettingsWindowKey(this, keyCode, shift, [this] { Unload(); })) return true;
  // Enter presses the button that has the focus, else the default one:
  // Save once something changed, Close before.
  if (keyCode == keys::Return && shift == keys::NoShift) {
    if (auto* focused = qobject_cast<QPushButton*>(focusWidget()); focused && focused->isEnabled())
      focused->click();
    else
      (saveButton->isDefault() && saveButton->isEnabled() ? saveButton : exitButton)->click();
    return true;
  }
  return false;
}

bool SelectionSort::eventFilter(QObject* watched, QEvent* event) {
  // Brought back from the minimised state, the window stands in the middle
  // of the main window's area again.
  if (watched == FrameOf(this) && event->type() == QEvent::WindowStateChange) {
    auto* change = static_cast<QWindowStateChangeEvent*>(event);
    const Qt::WindowStates now = FrameOf(this)->windowState();
    if ((change->oldState() & Qt::WindowMinimized) && !(now & Qt::WindowMinimized))
      PlaceWindow();
  }
  return QWidget::eventFilter(watched, event);
}
