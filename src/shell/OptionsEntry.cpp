#include "shell/OptionsEntry.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <algorithm>

#include "browser/Thumbnails.h"
#include "catalogue/PathRoutines.h"
#include "cd/CddbCipher.h"
#include "controls/BalloonHelp.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/NumberBox.h"
#include "controls/UpDown.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/CommonKeys.h"
#include "core/SettingsClose.h"
#include "core/Settings.h"
#include "core/ViewerHost.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "fileops/ChooseDirectory.h"
#include "platform/KeyCodes.h"
#include "platform/RegistryStore.h"
#include "platform/Twips.h"
#include "shell/OptionsRules.h"
#include "system/Associations.h"
#include "system/Shortcuts.h"

using namespace optionsrules;

namespace {

constexpr const char* MessageTitle = "Program Options";
// The viewer's launcher links carry its name.
constexpr const char* ViewerLink = "Lorvane";

QString Digit(const QCheckBox* box) { return box->isChecked() ? "1" : "0"; }

// A number box's value as a whole number held within its limits.
QString NumberOf(const NumberBox* box, int minimum, int maximum) {
  return QString::number(std::clamp(int(box->Value().toDouble()), minimum, maximum));
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

// A colour as the number box takes it, "&H00BBGGRR&".
QString ColourText(const QColor& colour) {
  return QString("&H00%1%2%3&")
      .arg(colour.blue(), 2, 16, QLatin1Char('0'))
      .arg(colour.green(), 2, 16, QLatin1Char('0'))
      .arg(colour.red(), 2, 16, QLatin1Char('0'))
      .toUpper();
}

QString ViewerTarget() {
  const QString folder = App().ProgramFolder;
  return folder.endsWith('/') ? folder + ViewerLink : folder + "/" + ViewerLink;
}

// The browser's popups follow the options just saved.
void ReloadBrowserHelp() {
  if (Thumbnails* browser = Windows().Get<Thumbnails>()) browser->LoadHelp();
}

}  // namespace

OptionsEntry::OptionsEntry(QWidget* parent)
    : QWidget(parent),
      TabControl(new QTabWidget(this)),
      saveButton(new QPushButton("&Save", this)),
      exitButton(new QPushButton("Close", this)),
      balloons_(new BalloonHelp(this)) {
  setObjectName(WindowName(Id));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(" Program Options");
  MakeControls();
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

QCheckBox* OptionsEntry::picSelection(int index) const { return pictures_.value(index - 1); }
QCheckBox* OptionsEntry::VidSelection(int index) const { return videos_.value(index); }
QCheckBox* OptionsEntry::AudSelection(int index) const { return audios_.value(index - 1); }
QCheckBox* OptionsEntry::GenSelection(int index) const { return general_.value(index - 1); }

void OptionsEntry::Form_Load() {
  using settings::GetInt;
  using settings::GetSetting;
  Populating = true;
  Tick(pictures_, PictureTicksOf(GetSetting("PictureOptions", PictureOptionsDefault)));
  Tick(videos_, VideoTicksOf(GetSetting("VideoOptions", VideoOptionsDefault)));
  Tick(audios_, AudioTicksOf(GetSetting("AudioOptions", AudioOptionsDefault)));
  // DVD movies only where a DVD player is there to take them.
  if (!DvdPlayerPresent()) {
    VidSelection(0)->setChecked(false);
    VidSelection(0)->setEnabled(false);
  }
  for (Group* group : {&pictureGroup_, &videoGroup_, &audioGroup_})
    group->All->setChecked(AllTicked(*group));

  GenSelection(1)->setChecked(QFileInfo::exists(StartupShortcutPath(ViewerLink)));
  QuickLaunch->setChecked(QFileInfo::exists(QuickLaunchShortcutPath(ViewerLink)));
  DefaultBrowser->setChecked(false);
  const QString folder = GetSetting("DefaultFolder", settings::MyMediaFolder());
  const QString longFolder = GetLongPath(folder);
  ShowFolder(longFolder.isEmpty() ? folder : longFolder);

  GenSelection(2)->setChecked(GetInt("ShowPopupData", 1) == 1);
  GenSelection(3)->setChecked(GetInt("ShowSplashScreen", 1) == 1);
  GenSelection(4)->setChecked(GetInt("ShowPopupHelp", 1) == 1);
  GenSelection(5)->setChecked(GetInt("ShowCaptions", 0) == 1);
  GenSelection(6)->setChecked(GetInt("CddbAccess", 1) == 1);
  GenSelection(7)->setChecked(GetInt("CddbProxyServer", 0) == 1);
  SnoozeMinutes->SetValue(GetSetting("AlarmSnoozeMinutes", "10"));
  UpDown1->SetValue(int(SnoozeMinutes->Value().toDouble()));
  AlarmVolume->SetValue(GetSetting("AlarmVolume", "100"));
  UpDown2->SetValue(int(AlarmVolume->Value().toDouble()));
  Address1->setText(GetSetting("CddbServerAddress", DefaultServerAddress()));
  Port1->SetValue(GetSetting("CddbServerPort", QString::number(DefaultServerPort)));
  Address2->setText(GetSetting("CddbProxyAddress", ""));
  Port2->SetValue(GetSetting("CddbProxyPort", "0"));
  UserName->setText(GetSetting("CddbUserName", ""));
  const QString cipher = GetSetting("CddbPassword", "");
  Password->setText(cipher.isEmpty() ? QString() : DecryptText(cipher, CddbPasswordKey));
  FollowCddbBoxes();
  Populating = false;

  // Once the options were saved, nothing has changed yet; before, a save
  // is due in any case.
  if (GetSetting("Defined", "No") == "Yes") {
    saveButton->setEnabled(false);
    saveButton->setDefault(false);
    exitButton->setText("Close");
    exitButton->setDefault(true);
  } else {
    MarkChanged();
  }
  TabControl->setCurrentIndex(PicturesPage);
  LoadHelp();
  PlaceWindow();
}

void OptionsEntry::PlaceWindow() {
  QWidget* frame = FrameOf(this);
  ViewerHost* host = TheViewerHost();
  if (!host || frame == this) return;
  if (frame->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized))
    frame->setWindowState(frame->windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized));
  const QRect present = host->ViewerRect(this);
  const int width = twips::FromPixels(frame->width());
  const int height = twips::FromPixels(frame->height());
  const int left = std::max((host->BrowserWidthTwips() - width) / 2, 0);
  const int top = std::max((host->BrowserHeightTwips() - height) / 2, 0);
  if (present.topLeft() != QPoint(left, top))
    host->SetViewerRect(this, QRect(left, top, width, height));
}

void OptionsEntry::MarkChanged() {
  saveButton->setEnabled(true);
  saveButton->setDefault(true);
  exitButton->setDefault(false);
  exitButton->setText("Cancel");
}

// ---- The boxes ---------------------------------------------------------------

bool OptionsEntry::AllTicked(const Group& group) {
  bool any = false;
  for (const QCheckBox* box : group.Boxes) {
    if (!box->isEnabled()) continue;
    if (!box->isChecked()) return false;
    any = true;
  }
  return any;
}

void OptionsEntry::All_Click(Group& group) {
  if (Populating) return;
  for (QCheckBox* box : group.Boxes) box->setChecked(group.All->isChecked());
  MarkChanged();
}

void OptionsEntry::AllVideos_Click() {
  if (Populating) return;
  // Video files, movie files and Windows video files take the box's value,
  // and DVD movies when it can; the real video box keeps its own. The rule
  // of a box then runs for each of the three, the last first.
  const bool ticked = AllVideos->isChecked();
  for (int index = 1; index <= 3; ++index) VidSelection(index)->setChecked(ticked);
  if (VidSelection(0)->isEnabled()) VidSelection(0)->setChecked(ticked);
  for (int index = 3; index >= 1; --index) Box_Click(videoGroup_, VidSelection(index));
  MarkChanged();
}

void OptionsEntry::Box_Click(Group& group, QCheckBox* box) {
  if (Populating) return;
  if (!box->isChecked())
    group.All->setChecked(false);
  else if (AllTicked(group))
    group.All->setChecked(true);
  MarkChanged();
}

void OptionsEntry::FollowCddbBoxes() {
  // Without the lookup, its server and the proxy box rest; without the
  // proxy, the proxy's frame with its fields and greyed labels.
  const bool lookup = GenSelection(6)->isChecked();
  Frame1->setEnabled(lookup);
  GenSelection(7)->setEnabled(lookup);
  Frame2->setEnabled(GenSelection(7)->isChecked());
  for (QLabel* label : {Label8, Label9, Label10, Label11}) {
    QPalette colours = label->palette();
    colours.setColor(QPalette::WindowText,
                     palette().color(Frame2->isEnabled() ? QPalette::Active : QPalette::Disabled,
                                     QPalette::WindowText));
    label->setPalette(colours);
  }
  // The number boxes keep their own colours: a resting one is greyed here.
  for (NumberBox* port : {Port1, Port2}) {
    const bool on = port->parentWidget()->isEnabled();
    port->SetBackColor(on ? NumberBox::DefaultBackColor
                          : ColourText(palette().color(QPalette::Disabled, QPalette::Base)));
    port->SetForeColor(on ? NumberBox::DefaultForeColor
                          : ColourText(palette().color(QPalette::Disabled, QPalette::Text)));
  }
}

// ---- The default folder and the server -----------------------------------------

void OptionsEntry::ShowFolder(const QString& folder) {
  folder_ = folder;
  DefaultFolder->setText(
      ShortenPath(DefaultFolder, folder + " ", twips::FromPixels(DefaultFolder->width()), 1));
}

void OptionsEntry::DirectoryButton_Click() {
  AppState& app = App();
  const QPointer<OptionsEntry> self(this);
  ChooseDirectoryWait(folder_, "Show");
  if (!self || app.DirectoryCancelled || app.ChosenFolder.isEmpty()) return;
  const QString chosen = app.ChosenFolder;
  if (chosen.toLower() == folder_.toLower()) return;
  const QString longFolder = GetLongPath(chosen);
  ShowFolder(longFolder.isEmpty() ? chosen : longFolder);
  MarkChanged();
}

void OptionsEntry::resetButton_Click() {
  const ServerReset reset = RestoreServerDefaults(Address1->text(), Port1->Value());
  if (reset.Address) Address1->setText(*reset.Address);
  if (reset.Port) Port1->SetValue(*reset.Port);
}

// ---- Saving ------------------------------------------------------------------

bool OptionsEntry::SaveOptions() {
  AppState& app = App();
  SaveInput input;
  input.FolderExists = !folder_.isEmpty() && QFileInfo(folder_).isDir();
  input.CddbAccess = GenSelection(6)->isChecked();
  input.ServerAddress = Address1->text();
  input.ProxyServer = GenSelection(7)->isChecked();
  input.ProxyAddress = Address2->text();
  if (const std::optional<SaveRefusal> refusal = FirstRefusal(input)) {
    TabControl->setCurrentIndex(refusal->GoTo);
    if (app.MsgBox) app.MsgBox->MsgBox(refusal->Message, 48, MessageTitle);
    switch (refusal->Focus) {
      case FocusTarget::DirectoryButton: DirectoryButton->setFocus(); break;
      case FocusTarget::Address1: Address1->setFocus(); break;
      case FocusTarget::Address2: Address2->setFocus(); break;
    }
    return false;
  }

  settings::SaveSetting("PictureOptions", PictureOptionsOf(TicksOf<PictureBoxes>(pictures_)));
  settings::SaveSetting("VideoOptions", VideoOptionsOf(TicksOf<VideoBoxes>(videos_)));
  settings::SaveSetting("AudioOptions", AudioOptionsOf(TicksOf<AudioBoxes>(audios_)));
  WriteLinks();
  WriteSettings();
  ResetFileAssociations();
  if (DefaultBrowser->isChecked()) MakeDefaultWebBrowser();
  app.AssociationsReset = true;
  saveButton->setEnabled(false);
  settings::SaveSetting("Defined", "Yes");
  return true;
}

void OptionsEntry::WriteLinks() {
  const QString target = ViewerTarget();
  if (GenSelection(1)->isChecked())
    CreateStartupShortcut(QString(), ViewerLink, target, QString());
  else
    RemoveStartupShortcut(ViewerLink);
  const QString quickLaunch = QuickLaunchShortcutPath(ViewerLink);
  const bool present = QFileInfo::exists(quickLaunch);
  if (QuickLaunch->isChecked() && !present)
    CreateQuickLaunchShortcut(QString(), QString(), target, QString());
  else if (!QuickLaunch->isChecked() && present)
    QFile::remove(quickLaunch);
}

void OptionsEntry::WriteSettings() {
  AppState& app = App();
  app.ShowPopupData = GenSelection(2)->isChecked();
  app.ShowPopupHelp = GenSelection(4)->isChecked();
  const auto save = settings::SaveSetting;
  save("ShowPopupData", Digit(GenSelection(2)));
  save("ShowSplashScreen", Digit(GenSelection(3)));
  save("ShowPopupHelp", Digit(GenSelection(4)));
  save("ShowCaptions", Digit(GenSelection(5)));
  save("DefaultFolder", folder_);
  save("CddbAccess", Digit(GenSelection(6)));
  save("CddbProxyServer", Digit(GenSelection(7)));
  save("CddbServerAddress", Address1->text());
  save("CddbServerPort", NumberOf(Port1, 0, PortMaximum));
  save("CddbProxyAddress", Address2->text());
  save("CddbProxyPort", NumberOf(Port2, 0, PortMaximum));
  save("CddbUserName", UserName->text());
  save("CddbPassword", EncryptText(Password->text(), CddbPasswordKey));
  save("AlarmSnoozeMinutes", NumberOf(SnoozeMinutes, SnoozeMinimum, SnoozeMaximum));
  save("AlarmVolume", NumberOf(AlarmVolume, VolumeMinimum, VolumeMaximum));
}

void OptionsEntry::saveButton_Click() {
  if (!SaveOptions()) return;
  Unload();
  ReloadBrowserHelp();
}

void OptionsEntry::exitButton_Click() { Unload(); }

void OptionsEntry::Unload() {
  if (Windows().IdOf(this)) {
    Windows().Unload(Id);
    return;
  }
  close();
}

void OptionsEntry::closeEvent(QCloseEvent* event) {
  if (closing_) {
    event->accept();
    return;
  }
  const SettingsCloseOutcome outcome = AskBeforeSettingsClose(
      saveButton->isEnabled(), asking_,
      "The Vistrel options have changed.\r\nDo you wish to save the changes?", "Exit Options Entry",
      [this] { return SaveOptions(); });
  if (outcome == SettingsCloseOutcome::Refused) {
    event->ignore();
    return;
  }
  const bool saved = outcome == SettingsCloseOutcome::ClosesSaved;
  closing_ = true;
  balloons_->Clear();
  Windows().Closed(this);
  event->accept();
  if (QWidget* frame = FrameOf(this); frame != this) frame->close();
  if (saved) ReloadBrowserHelp();
}

// ---- Keys and the frame ----------------------------------------------------------

void OptionsEntry::keyPressEvent(QKeyEvent* event) {
  const int code = keys::KeyCode(event), shift = keys::ShiftOf(event);
  if (Form_KeyDown(code, shift)) return;
  HandleCommonKey(this, code, shift, false, false);
}

bool OptionsEntry::Form_KeyDown(int keyCode, int shift) {
  if (HandleSettingsWindowKey(this, keyCode, shift, [this] { Unload(); })) return true;
  // Enter presses the button that has the focus; in a field it does nothing.
  if (keyCode == keys::Return && shift == keys::NoShift) {
    if (auto* focused = qobject_cast<QPushButton*>(focusWidget()); focused && focused->isEnabled())
      focused->click();
    return true;
  }
  return false;
}

bool OptionsEntry::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize)
    if (auto* page = qobject_cast<QWidget*>(watched); page && TabControl->indexOf(page) >= 0)
      PlacePageButtons(page);
  // Brought back from the minimised state, the window stands in the middle
  // of the browser again.
  if (watched == FrameOf(this) && event->type() == QEvent::WindowStateChange) {
    auto* change = static_cast<QWindowStateChangeEvent*>(event);
    const Qt::WindowStates now = FrameOf(this)->windowState();
    if ((change->oldState() & Qt::WindowMinimized) && !(now & Qt::WindowMinimized))
      PlaceWindow();
  }
  return QWidget::eventFilter(watched, event);
}

void RegisterOptionsWindow() {
  Windows().SetLoader(WindowId::OptionsEntry,
                      [] { return new OptionsEntry(Windows().Find(WindowId::MainForm)); });
}

void OptionsEntry::MakeDefaultWebBrowser() {
  // The handlers found before are kept once, as for any file type, then
  // the web classes point at the viewer.
  UpdateRegistryFile(DefaultRegistryPath(), [](RegistryStore& store) {
    SavePriorAssociation(store, QStringLiteral("web"));
    SetAssociation(store, QStringLiteral("web"), QString());
    return QString();
  });
}
