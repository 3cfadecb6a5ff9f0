#include "fileops/ChangeProperties.h"

#include <QCloseEvent>
#include <QDateEdit>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPushButton>
#include <QTimeEdit>

#include "catalogue/PathParts.h"
#include "controls/PaintRoutines.h"
#include "controls/TransCheck.h"
#include "core/AppState.h"
#include "core/BrowserCommands.h"
#include "core/CommonKeys.h"
#include "core/WindowRegistry.h"
#include "fileops/PopupPlacement.h"
#include "fileops/PropertyRules.h"
#include "fileops/RenameRules.h"
#include "platform/FileTimes.h"
#include "fileops/WindowKeys.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

namespace {

// Measures of the window's inside, in twips.
constexpr int Margin = 240;
constexpr int CheckColumnWidth = 2160;
constexpr int CheckTop = 180;
constexpr int CheckStep = 300;
constexpr int CheckHeight = 285;
constexpr int TimesTop = 1260;
constexpr int TimesStep = 420;
constexpr int CaptionWidth = 1020;
constexpr int DateWidth = 1500;
constexpr int TimeWidth = 1560;
constexpr int PickerHeight = 315;
constexpr int ButtonWidth = 1215;
constexpr int ButtonHeight = 375;
constexpr int InsideWidth = Margin + CaptionWidth + 60 + DateWidth + 120 + TimeWidth + Margin;
constexpr int ButtonTop = TimesTop + 3 * TimesStep + 120;
constexpr int InsideHeight = ButtonTop + ButtonHeight + 180;

QRect PixelsOf(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(width),
               twips::ToPixels(height));
}

// Whole seconds: the pickers show no more, and that is what is set.
QTime WholeSeconds(const QTime& time) { return QTime(time.hour(), time.minute(), time.second()); }

}  // namespace

ChangeProperties::ChangeProperties(QWidget* parent)
    : PassingWindow(Id, parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      chkReadOnly(new TransCheck(this)),
      chkArchive(new TransCheck(this)),
      chkHidden(new TransCheck(this)),
      chkSystem(new TransCheck(this)),
      chkCompressed(new TransCheck(this)),
      chkTemporary(new TransCheck(this)),
      DateCreated(new QDateEdit(this)),
      TimeCreated(new QTimeEdit(this)),
      DateModified(new QDateEdit(this)),
      TimeModified(new QTimeEdit(this)),
      DateAccessed(new QLabel(this)),
      TimeAccessed(new QLabel(this)),
      OKButton(new QPushButton("&OK", this)),
      cancelButton(new QPushButton("Cancel", this)) {
  setObjectName(WindowName(Id));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(" File Properties");

  const struct {
    TransCheck* box;
    const char* name;
    const char* caption;
  } boxes[] = {{chkReadOnly, "chkReadOnly", "Read Only"}, {chkArchive, "chkArchive", "Archive"},
               {chkHidden, "chkHidden", "Hidden"},        {chkSystem, "chkSystem", "System"},
               {chkCompressed, "chkCompressed", "Compressed"},
               {chkTemporary, "chkTemporary", "Temporary"}};
  for (const auto& b : boxes) {
    b.box->setObjectName(b.name);
    b.box->SetCaption(b.caption);
  }
  // This file system keeps no such bits.
  for (TransCheck* box : {chkArchive, chkSystem, chkCompressed, chkTemporary}) box->SetEnabled(false);

  for (QDateEdit* date : {DateCreated, DateModified}) {
    date->setLocale(QLocale::c());
    date->setDisplayFormat("MM/dd/yyyy");
    date->setCalendarPopup(true);
  }
  for (QTimeEdit* time : {TimeCreated, TimeModified}) {
    time->setLocale(QLocale::c());
    time->setDisplayFormat("hh:mm:ss AP");
  }
  // The creation time cannot be set on this system.
  DateCreated->setEnabled(false);
  TimeCreated->setEnabled(false);
  DateCreated->setObjectName("DateCreated");
  TimeCreated->setObjectName("TimeCreated");
  DateModified->setObjectName("DateModified");
  TimeModified->setObjectName("TimeModified");
  DateAccessed->setObjectName("DateAccessed");
  TimeAccessed->setObjectName("TimeAccessed");
  for (QLabel* label : {DateAccessed, TimeAccessed}) label->setTextFormat(Qt::PlainText);
  OKButton->setObjectName("OKButton");
  cancelButton->setObjectName("cancelButton");
  for (QPushButton* button : {OKButton, cancelButton}) {
    QPalette palette = button->palette();
    palette.setColor(QPalette::Button, App().ColorLightGrey);
    button->setPalette(palette);
  }

  connect(OKButton, &QPushButton::clicked, this, &ChangeProperties::OKButton_Click);
  connect(cancelButton, &QPushButton::clicked, this, &ChangeProperties::cancelButton_Click);
  for (QWidget* control : findChildren<QWidget*>()) control->installEventFilter(this);

  BuildLayout();
  Windows().Loaded(this);
}

void ChangeProperties::BuildLayout() {
  TransCheck* const grid[] = {chkReadOnly, chkArchive,    chkHidden,
                              chkSystem,   chkCompressed, chkTemporary};
  for (int i = 0; i < 6; ++i)
    grid[i]->setGeometry(PixelsOf(Margin + (i % 2) * CheckColumnWidth, CheckTop + (i / 2) * CheckStep,
                                  CheckColumnWidth - 120, CheckHeight));

  const char* const captions[] = {"Created:", "Modified:", "Accessed:"};
  QWidget* const dates[] = {DateCreated, DateModified, DateAccessed};
  QWidget* const times[] = {TimeCreated, TimeModified, TimeAccessed};
  const int dateLeft = Margin + CaptionWidth + 60;
  const int timeLeft = dateLeft + DateWidth + 120;
  for (int row = 0; row < 3; ++row) {
    const int top = TimesTop + row * TimesStep;
    auto* caption = new QLabel(captions[row], this);
    caption->setGeometry(PixelsOf(Margin, top, CaptionWidth, PickerHeight));
    dates[row]->setGeometry(PixelsOf(dateLeft, top, DateWidth, PickerHeight));
    times[row]->setGeometry(PixelsOf(timeLeft, top, TimeWidth, PickerHeight));
  }
  // The access texts stand where a picker's text would.
  for (QLabel* label : {DateAccessed, TimeAccessed}) label->setIndent(twips::ToPixels(60));

  const int cancelLeft = InsideWidth - Margin - ButtonWidth;
  cancelButton->setGeometry(PixelsOf(cancelLeft, ButtonTop, ButtonWidth, ButtonHeight));
  OKButton->setGeometry(PixelsOf(cancelLeft - 120 - ButtonWidth, ButtonTop, ButtonWidth, ButtonHeight));
  setFixedSize(twips::ToPixels(InsideWidth), twips::ToPixels(InsideHeight));
}

void ChangeProperties::GetData(const QString& path, HiddenBox hidden) {
  path_ = path;
  const QString name = GetBaseName(path);
  hiddenRenames_ = hidden == HiddenBox::Renames && !App().AlbumMode;
  wasHidden_ = IsHiddenName(name);
  chkHidden->SetValue(wasHidden_ ? 1 : 0);
  chkHidden->SetEnabled(hiddenRenames_);
  for (TransCheck* box : {chkArchive, chkSystem, chkCompressed, chkTemporary}) box->SetValue(0);

  const QDateTime created = platform::FileCreatedTime(path);
  if (!created.isValid()) return;
  chkReadOnly->SetValue(platform::IsReadOnly(path) ? 1 : 0);
  DateCreated->setDate(created.date());
  TimeCreated->setTime(WholeSeconds(created.time()));
  const QDateTime modified = platform::FileModifiedTime(path);
  if (modified.isValid()) {
    DateModified->setDate(modified.date());
    TimeModified->setTime(WholeSeconds(modified.time()));
  }
  const QDateTime accessed = platform::FileAccessedTime(path);
  DateAccessed->setText(AccessedDateText(accessed));
  TimeAccessed->setText(AccessedTimeText(accessed));
}

void ChangeProperties::Display(int leftTwips, int topTwips) {
  MoveToClientTwips(this, leftTwips, topTwips);
  show();
  raise();
  activateWindow();
}

QSize ChangeProperties::OuterSizeTwips() const {
  QSize outer = size();
  if (isVisible() && frameGeometry().height() > height())
    outer = frameGeometry().size();
  else
    outer.rheight() += twips::ToPixels(App().TitleBarHeight);
  return QSize(twips::FromPixels(outer.width()), twips::FromPixels(outer.height()));
}

void ChangeProperties::OKButton_Click() {
  // Failures pass silently: what could be set is set.
  if (!path_.isEmpty()) {
    // The pickers hold local time; the file keeps UTC, and its access time
    // stays as it is.
    const QDateTime modified(DateModified->date(), WholeSeconds(TimeModified->time()));
    platform::SetFileModifiedTime(path_, modified);
    platform::SetReadOnly(path_, chkReadOnly->Value() == 1);
    ApplyHidden();
  }
  if (App().ShowPopupData)
    if (BrowserCommands* browser = TheBrowserCommands()) browser->RefreshCurrentTooltip();
  // The tooltip of a viewer that asked for the window is set anew here,
  // once the viewers are part of the program.
  Unload();
}

void ChangeProperties::ApplyHidden() {
  if (!hiddenRenames_) return;
  const bool hide = chkHidden->Value() == 1;
  if (hide == wasHidden_) return;
  const QString name = GetBaseName(path_);
  const QString newName = NameForHidden(name, hide);
  if (newName == name) return;
  const QString target = JoinPath(GetFolderPart(path_), newName);
  if (RenameWithoutReplacing(path_, target) != 0) return;
  FollowRenameInDataFile(path_, target);
  if (BrowserCommands* browser = TheBrowserCommands()) browser->CurrentEntryRenamed(newName);
  path_ = target;
  wasHidden_ = hide;
}

void ChangeProperties::cancelButton_Click() { Unload(); }

bool ChangeProperties::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    const int keyCode = keys::KeyCode(key);
    const int shift = keys::ShiftOf(key);
    if (IsWindowKey(keyCode, shift)) {
      HandleCommonKey(this, keyCode, shift, false, false);
      return true;
    }
    // Enter takes the window's values; on a button it presses that button.
    if (EnterPressesButtonOrOk(watched, key, [this] { OKButton_Click(); })) return true;
  }
  return QWidget::eventFilter(watched, event);
}

void ChangeProperties::keyPressEvent(QKeyEvent* event) {
  HandleCommonKey(this, keys::KeyCode(event), keys::ShiftOf(event), false, false);
}

ChangeProperties* ShowChangeProperties(const QString& path, int leftTwips, int topTwips,
                                       ChangeProperties::HiddenBox hidden) {
  auto* window = Windows().Get<ChangeProperties>();
  if (!window) window = new ChangeProperties(Windows().Find(WindowId::MainForm));
  window->GetData(path, hidden);
  window->Display(leftTwips, topTwips);
  return window;
}
