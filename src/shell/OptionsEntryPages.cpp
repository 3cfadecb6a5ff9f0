// The options window's pages and their controls, where each one stands,
// and what its events run.

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>

#include "controls/BalloonHelp.h"
#include "controls/NumberBox.h"
#include "controls/UpDown.h"
#include "core/AppState.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"
#include "shell/OptionsEntry.h"
#include "shell/OptionsRules.h"

using namespace optionsrules;

namespace {

// Measures of the window's inside, in twips.
constexpr int Margin = 120;
constexpr int TabWidth = 7200;
constexpr int TabHeight = 5280;
constexpr int ButtonWidth = 1215;
constexpr int ButtonHeight = 375;
constexpr int ButtonGap = 120;
constexpr int ButtonTop = Margin + TabHeight + 120;
constexpr int InsideWidth = Margin + TabWidth + Margin;
constexpr int InsideHeight = ButtonTop + ButtonHeight + 150;
// On the pages: rows of boxes, fields and their labels.
constexpr int Column = 240;
constexpr int FirstRow = 180;
constexpr int BoxHeight = 285;
constexpr int RowStep = 300;
constexpr int GroupGap = 150;
constexpr int Indent = 300;
constexpr int BoxWidth = TabWidth - 2 * Column - 120;
constexpr int FieldHeight = 315;
constexpr int FieldStep = 420;
constexpr int LabelDrop = 15;
// The alarm's numbers.
constexpr int NumberLeft = 3000;
constexpr int NumberWidth = 600;
constexpr int ArrowsWidth = 255;
constexpr int UnitLeft = NumberLeft + NumberWidth + ArrowsWidth + 90;
constexpr int UnitWidth = 1200;
// The default folder.
constexpr int FolderLeft = 1560;
constexpr int FolderButtonWidth = 1095;
constexpr int FolderWidth = Column + BoxWidth - FolderLeft - ButtonGap - FolderButtonWidth;
// The two frames of the CD page, and the fields inside them.
constexpr int FrameWidth = BoxWidth;
constexpr int FrameHeight = 1140;
constexpr int Frame1Top = FirstRow + RowStep + 60;
constexpr int Frame2Top = Frame1Top + FrameHeight + GroupGap + RowStep + 60;
constexpr int FrameRow1 = 360;
constexpr int FrameRow2 = 780;
constexpr int FieldLeft = 1440;
constexpr int AddressWidth = 3060;
constexpr int PortLabelLeft = FieldLeft + AddressWidth + 180;
constexpr int PortLeft = PortLabelLeft + 600;
constexpr int PortWidth = 900;
constexpr int UserWidth = 1860;
constexpr int PasswordLabelLeft = FieldLeft + UserWidth + 180;
constexpr int PasswordLeft = PasswordLabelLeft + 960;
constexpr int ResetWidth = 1800;
// The page buttons, in the page's bottom right corner.
constexpr int PageButtonWidth = 600;
constexpr int PageButtonHeight = 345;
constexpr int PageButtonGap = 90;

QRect PixelsOf(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(width),
               twips::ToPixels(height));
}

QCheckBox* MakeBox(QWidget* parent, const QString& name, const QString& caption, int left,
                   int top, int width) {
  auto* box = new QCheckBox(caption, parent);
  box->setObjectName(name);
  box->setGeometry(PixelsOf(left, top, width, BoxHeight));
  return box;
}

QLabel* MakeLabel(QWidget* parent, const QString& name, const QString& caption, int left,
                  int top, int width) {
  auto* label = new QLabel(caption, parent);
  label->setObjectName(name);
  label->setGeometry(PixelsOf(left, top + LabelDrop, width, BoxHeight));
  return label;
}

QLineEdit* MakeField(QWidget* parent, const QString& name, int left, int top, int width) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  field->setGeometry(PixelsOf(left, top, width, FieldHeight));
  return field;
}

NumberBox* MakeNumber(QWidget* parent, const QString& name, int left, int top, int width,
                      int minimum, int maximum) {
  auto* box = new NumberBox(parent);
  box->setObjectName(name);
  box->SetFormat("#0");
  box->SetPositiveOnly(true);
  box->SetMinValue(minimum);
  box->SetMaxValue(maximum);
  box->SetUseMaxMinValues(true);
  box->setGeometry(PixelsOf(left, top, width, FieldHeight));
  return box;
}

QPushButton* MakeButton(QWidget* parent, const QString& name, const QString& caption) {
  auto* button = new QPushButton(caption, parent);
  button->setObjectName(name);
  return button;
}

}  // namespace

QWidget* OptionsEntry::MakePage(int page) {
  auto* widget = new QWidget;
  widget->setObjectName(QString("Page%1").arg(page));
  TabControl->addTab(widget, PageCaptions()[page]);
  // The page buttons keep to the page's bottom right corner.
  widget->installEventFilter(this);
  return widget;
}

void OptionsEntry::MakeControls() {
  setFixedSize(twips::ToPixels(InsideWidth), twips::ToPixels(InsideHeight));
  TabControl->setObjectName("TabControl");
  TabControl->setGeometry(PixelsOf(Margin, Margin, TabWidth, TabHeight));
  MakeFileTypesPages();
  MakeGeneralPage();
  MakeCdTitlesPage();
  MakePageButtons();

  saveButton->setObjectName("saveButton");
  exitButton->setObjectName("exitButton");
  saveButton->setGeometry(PixelsOf(InsideWidth - Margin - 2 * ButtonWidth - ButtonGap, ButtonTop,
                                   ButtonWidth, ButtonHeight));
  exitButton->setGeometry(
      PixelsOf(InsideWidth - Margin - ButtonWidth, ButtonTop, ButtonWidth, ButtonHeight));
  // The Tab key goes through a page, its page buttons, then Save and Close.
  setTabOrder(Tab4B, saveButton);
  setTabOrder(saveButton, exitButton);
  ConnectControls();
}

void OptionsEntry::MakeFileTypesPages() {
  // One page for each kind: its "All" box, then its boxes below it. The
  // DVD box stands last among the videos.
  const auto makeGroup = [this](int page, const QString& allName, const QString& allCaption,
                                const QString& boxName, const QStringList& captions, int first,
                                QList<QCheckBox*>& boxes) {
    QWidget* widget = MakePage(page);
    QCheckBox* all = MakeBox(widget, allName, allCaption, Column, FirstRow, BoxWidth);
    QList<int> order;
    for (int i = 0; i < captions.size(); ++i) order << first + i;
    if (first == 0) order.move(0, order.size() - 1);
    boxes.resize(captions.size());
    int top = FirstRow + RowStep + GroupGap;
    for (int index : order) {
      boxes[index - first] = MakeBox(widget, QString("%1(%2)").arg(boxName).arg(index),
                                     captions[index - first], Column + Indent, top,
                                     BoxWidth - Indent);
      top += RowStep;
    }
    return all;
  };
  AllPictures = makeGroup(PicturesPage, "AllPictures", "All picture files:", "picSelection",
                          PictureCaptions(), 1, pictures_);
  AllVideos = makeGroup(VideosPage, "AllVideos", "All video files:", "VidSelection",
                        VideoCaptions(), 0, videos_);
  AllAudios = makeGroup(AudiosPage, "AllAudios", "All audio files:", "AudSelection",
                        AudioCaptions(), 1, audios_);
  pictureGroup_ = {AllPictures, pictures_};
  videoGroup_ = {AllVideos, videos_};
  audioGroup_ = {AllAudios, audios_};
}

void OptionsEntry::MakeGeneralPage() {
  QWidget* page = MakePage(GeneralPage);
  // The alarm's two numbers, each with its arrows and its unit.
  MakeLabel(page, "Label1", "Alarm clock 'snooze' time:", Column, FirstRow, NumberLeft - Column);
  SnoozeMinutes = MakeNumber(page, "SnoozeMinutes", NumberLeft, FirstRow, NumberWidth,
                             SnoozeMinimum, SnoozeMaximum);
  UpDown1 = new UpDown(page);
  UpDown1->setObjectName("UpDown1");
  UpDown1->SetRange(SnoozeMinimum, SnoozeMaximum);
  UpDown1->setGeometry(PixelsOf(NumberLeft + NumberWidth, FirstRow, ArrowsWidth, FieldHeight));
  // The arrow keys step the number: the arrows need no place in the Tab order.
  UpDown1->UpButton()->setFocusPolicy(Qt::NoFocus);
  UpDown1->DownButton()->setFocusPolicy(Qt::NoFocus);
  MakeLabel(page, "Label2", "minutes", UnitLeft, FirstRow, UnitWidth);
  const int volumeTop = FirstRow + FieldStep;
  MakeLabel(page, "Label3", "Alarm clock volume level:", Column, volumeTop, NumberLeft - Column);
  AlarmVolume = MakeNumber(page, "AlarmVolume", NumberLeft, volumeTop, NumberWidth,
                           VolumeMinimum, VolumeMaximum);
  UpDown2 = new UpDown(page);
  UpDown2->setObjectName("UpDown2");
  UpDown2->SetRange(VolumeMinimum, VolumeMaximum);
  UpDown2->setGeometry(PixelsOf(NumberLeft + NumberWidth, volumeTop, ArrowsWidth, FieldHeight));
  UpDown2->UpButton()->setFocusPolicy(Qt::NoFocus);
  UpDown2->DownButton()->setFocusPolicy(Qt::NoFocus);
  MakeLabel(page, "Label4", "percent", UnitLeft, volumeTop, UnitWidth);

  // The boxes: the viewer's first, then what the program shows.
  general_.resize(GeneralBoxes);
  int top = volumeTop + FieldStep + GroupGap;
  const auto box = [&](int index) {
    general_[index - 1] = MakeBox(page, QString("GenSelection(%1)").arg(index),
                                  GeneralCaptions()[index - 1], Column, top, BoxWidth);
    top += RowStep;
  };
  box(1);
  QuickLaunch = MakeBox(page, "QuickLaunch", "Place a link to the viewer in Quick Launch bar?",
                        Column, top, BoxWidth);
  top += RowStep;
  DefaultBrowser = MakeBox(page, "DefaultBrowser", "Make Vistrel your default web browser?",
                           Column, top, BoxWidth);
  top += RowStep;
  for (int index : {3, 2, 4, 5}) box(index);

  // The default folder: its name, shortened to the label, and the button
  // that chooses another.
  top += GroupGap;
  MakeLabel(page, "Label5", "Default folder:", Column, top, FolderLeft - Column);
  DefaultFolder = new QLabel(page);
  DefaultFolder->setObjectName("DefaultFolder");
  DefaultFolder->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  DefaultFolder->setGeometry(PixelsOf(FolderLeft, top, FolderWidth, FieldHeight));
  DirectoryButton = MakeButton(page, "DirectoryButton", "Browse...");
  DirectoryButton->setGeometry(PixelsOf(FolderLeft + FolderWidth + ButtonGap, top - 15,
                                        FolderButtonWidth, FieldHeight + 30));
}

void OptionsEntry::MakeCdTitlesPage() {
  QWidget* page = MakePage(CdTitlesPage);
  general_[5] = MakeBox(page, "GenSelection(6)", GeneralCaptions()[5], Column, FirstRow, BoxWidth);
  Frame1 = new QGroupBox("Server Settings", page);
  Frame1->setObjectName("Frame1");
  Frame1->setGeometry(PixelsOf(Column, Frame1Top, FrameWidth, FrameHeight));
  MakeLabel(Frame1, "Label6", "Address:", Column, FrameRow1, FieldLeft - Column);
  Address1 = MakeField(Frame1, "Address1", FieldLeft, FrameRow1, AddressWidth);
  MakeLabel(Frame1, "Label7", "Port:", PortLabelLeft, FrameRow1, PortLeft - PortLabelLeft);
  Port1 = MakeNumber(Frame1, "Port1", PortLeft, FrameRow1, PortWidth, 0, PortMaximum);
  resetButton = MakeButton(Frame1, "resetButton", "&Restore Defaults");
  resetButton->setGeometry(PixelsOf(FieldLeft, FrameRow2 - 15, ResetWidth, FieldHeight + 30));

  general_[6] = MakeBox(page, "GenSelection(7)", GeneralCaptions()[6], Column,
                        Frame1Top + FrameHeight + GroupGap, BoxWidth);
  Frame2 = new QGroupBox("Proxy Server Settings", page);
  Frame2->setObjectName("Frame2");
  Frame2->setGeometry(PixelsOf(Column, Frame2Top, FrameWidth, FrameHeight));
  Label8 = MakeLabel(Frame2, "Label8", "Address:", Column, FrameRow1, FieldLeft - Column);
  Address2 = MakeField(Frame2, "Address2", FieldLeft, FrameRow1, AddressWidth);
  Label9 = MakeLabel(Frame2, "Label9", "Port:", PortLabelLeft, FrameRow1, PortLeft - PortLabelLeft);
  Port2 = MakeNumber(Frame2, "Port2", PortLeft, FrameRow1, PortWidth, 0, PortMaximum);
  Label10 = MakeLabel(Frame2, "Label10", "User name:", Column, FrameRow2, FieldLeft - Column);
  UserName = MakeField(Frame2, "UserName", FieldLeft, FrameRow2, UserWidth);
  Label11 = MakeLabel(Frame2, "Label11", "Password:", PasswordLabelLeft, FrameRow2,
                      PasswordLeft - PasswordLabelLeft);
  Password = MakeField(Frame2, "Password", PasswordLeft, FrameRow2,
                       PortLeft + PortWidth - PasswordLeft);
  Password->setEchoMode(QLineEdit::Password);
}

void OptionsEntry::MakePageButtons() {
  // ">>" on every page but the last, "<<" on every page but the first.
  QPushButton** forward[] = {&Tab0F, &Tab1F, &Tab2F, &Tab3F};
  QPushButton** back[] = {&Tab1B, &Tab2B, &Tab3B, &Tab4B};
  for (int page = 0; page < PageCount; ++page) {
    QWidget* widget = TabControl->widget(page);
    if (page > 0) *back[page - 1] = MakeButton(widget, QString("Tab%1B").arg(page), "<<");
    if (page < PageCount - 1) *forward[page] = MakeButton(widget, QString("Tab%1F").arg(page), ">>");
  }
}

void OptionsEntry::PlacePageButtons(QWidget* page) {
  const int index = TabControl->indexOf(page);
  if (index < 0) return;
  const int right = twips::FromPixels(page->width()) - Column;
  const int top = twips::FromPixels(page->height()) - 120 - PageButtonHeight;
  const int forwardLeft = right - PageButtonWidth;
  const int backLeft = forwardLeft - PageButtonGap - PageButtonWidth;
  if (auto* back = page->findChild<QPushButton*>(QString("Tab%1B").arg(index)))
    back->setGeometry(PixelsOf(backLeft, top, PageButtonWidth, PageButtonHeight));
  if (auto* forward = page->findChild<QPushButton*>(QString("Tab%1F").arg(index)))
    forward->setGeometry(PixelsOf(forwardLeft, top, PageButtonWidth, PageButtonHeight));
}

void OptionsEntry::ConnectControls() {
  for (Group* group : {&pictureGroup_, &audioGroup_}) {
    connect(group->All, &QCheckBox::clicked, this, [this, group] { All_Click(*group); });
  }
  connect(AllVideos, &QCheckBox::clicked, this, &OptionsEntry::AllVideos_Click);
  for (Group* group : {&pictureGroup_, &videoGroup_, &audioGroup_})
    for (QCheckBox* box : group->Boxes)
      connect(box, &QCheckBox::clicked, this, [this, group, box] { Box_Click(*group, box); });

  const auto changed = [this] {
    if (!Populating) MarkChanged();
  };
  for (QCheckBox* box : general_) connect(box, &QCheckBox::toggled, this, changed);
  for (QCheckBox* box : {QuickLaunch, DefaultBrowser})
    connect(box, &QCheckBox::toggled, this, changed);
  connect(GenSelection(6), &QCheckBox::toggled, this, &OptionsEntry::FollowCddbBoxes);
  connect(GenSelection(7), &QCheckBox::toggled, this, &OptionsEntry::FollowCddbBoxes);
  for (QLineEdit* field : {Address1, Address2, UserName, Password})
    connect(field, &QLineEdit::textChanged, this, changed);
  for (NumberBox* number : {SnoozeMinutes, AlarmVolume, Port1, Port2})
    connect(number, &NumberBox::Change, this, changed);

  // The alarm's numbers and their arrows follow one another.
  const auto pair = [this](NumberBox* number, UpDown* arrows) {
    connect(arrows, &UpDown::Change, this, [number, arrows] { arrows->CopyToNumberBox(number); });
    connect(number, &NumberBox::KeyDown, this, [number, arrows](int keyCode, int shift) {
      if (shift == keys::NoShift) arrows->StepNumberBox(number, keyCode);
    });
    connect(number, &NumberBox::Change, this, [number, arrows] {
      arrows->SetValue(int(number->Value().toDouble()));
    });
  };
  pair(SnoozeMinutes, UpDown1);
  pair(AlarmVolume, UpDown2);

  // The page buttons.
  const auto goTo = [this](QPushButton* button, int page) {
    connect(button, &QPushButton::clicked, this, [this, page] { TabControl->setCurrentIndex(page); });
  };
  goTo(Tab0F, 1);
  goTo(Tab1B, 0);
  goTo(Tab1F, 2);
  goTo(Tab2B, 1);
  goTo(Tab2F, 3);
  goTo(Tab3B, 2);
  goTo(Tab3F, 4);
  goTo(Tab4B, 3);

  connect(DirectoryButton, &QPushButton::clicked, this, &OptionsEntry::DirectoryButton_Click);
  connect(resetButton, &QPushButton::clicked, this, &OptionsEntry::resetButton_Click);
  connect(saveButton, &QPushButton::clicked, this, &OptionsEntry::saveButton_Click);
  connect(exitButton, &QPushButton::clicked, this, &OptionsEntry::exitButton_Click);
}

void OptionsEntry::LoadHelp() {
  balloons_->Clear();
  if (!App().ShowPopupHelp) return;
  const auto give = [this](QWidget* control, const QString& name) {
    if (const OptionHelp* help = FindOptionHelp(name))
      balloons_->SetBalloon(control, help->Lines.join("\r\n"), help->Heading);
  };
  give(AllPictures, "AllPictures");
  for (QCheckBox* box : pictures_) give(box, "picSelection");
  give(AllVideos, "AllVideos");
  for (QCheckBox* box : videos_) give(box, "VidSelection");
  give(AllAudios, "AllAudios");
  for (QCheckBox* box : audios_) give(box, "AudSelection");
  give(SnoozeMinutes, "SnoozeMinutes");
  give(UpDown1, "SnoozeMinutes");
  give(AlarmVolume, "AlarmVolume");
  give(UpDown2, "AlarmVolume");
  for (int index = 1; index <= GeneralBoxes; ++index)
    give(GenSelection(index), QString("GenSelection(%1)").arg(index));
  give(QuickLaunch, "QuickLaunch");
  give(DefaultFolder, "DefaultFolder");
  give(DirectoryButton, "DefaultFolder");
  for (QWidget* control : {static_cast<QWidget*>(Address1), static_cast<QWidget*>(Port1),
                           static_cast<QWidget*>(resetButton), static_cast<QWidget*>(Address2),
                           static_cast<QWidget*>(Port2)})
    give(control, control->objectName());
}
