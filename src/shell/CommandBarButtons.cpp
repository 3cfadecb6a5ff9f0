// The command bar's buttons: what each one starts, and clicking a button
// through its row of the command table.

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>

#include "browser/Thumbnails.h"
#include "catalogue/CdDrives.h"
#include "cd/CdAccess.h"
#include "catalogue/PathParts.h"
#include "catalogue/PathRoutines.h"
#include "controls/Button.h"
#include "fileops/ChooseDirectory.h"
#include "platform/SiblingPrograms.h"
#include "platform/Twips.h"
#include "core/AppState.h"
#include "shell/CommandBar.h"
#include "shell/CommandBarHelpers.h"
#include "shell/CommandTable.h"
#include "shell/VolumeStrip.h"
#include "shell/MainForm.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "core/WindowShow.h"
#include "system/AgentHelp.h"
#include "system/Associations.h"
#include "system/MixerModule.h"

using namespace commandbar;

// ---- Buttons ---------------------------------------------------------------

void CommandBar::DirectoryButton_Click() {
  ReleaseFocus();
  AppState& app = App();
  const QString start = app.AlbumMode
                            ? settings::GetSetting("DefaultFolder", settings::MyMediaFolder())
                            : app.CurrentFolder;
  const QPointer<CommandBar> self(this);
  ChooseDirectoryWait(start, "Show");
  if (!self || app.DirectoryCancelled || app.ChosenFolder.isEmpty()) return;
  const QString chosen = app.ChosenFolder;
  if (chosen.toLower() == app.CurrentFolder.toLower() && !app.AlbumMode) return;
  app.AlbumMode = false;
  SetDirectoryLabel(false);
  app.CurrentFolder = chosen;
  ShowDirectoryName(chosen);
  if (Thumbnails* browser = Browser()) browser->ChangeDirectory();
}

void CommandBar::HelpButton_Click() {
  ReleaseFocus();
  StartTutorialFromBar();
}

void CommandBar::aboutButton_Click() {
  ReleaseFocus();
  if (auto* main = Windows().Get<MainForm>()) {
    main->ShowAbout();
    return;
  }
  if (QWidget* about = Windows().Find(WindowId::frmAbout)) about->activateWindow();
}

void CommandBar::refreshButton_Click() {
  ReleaseFocus();
  if (Thumbnails* browser = Browser()) browser->ChangePattern();
  QCoreApplication::processEvents();
  if (Windows().IsLoaded(WindowId::SingleAudio)) {
    if (QWidget* audio = Windows().Find(WindowId::SingleAudio)) {
      FrameOf(audio)->show();
      FrameOf(audio)->showMinimized();
    }
  }
}

void CommandBar::ejectButton_Click() {
  ReleaseFocus();
  if (App().CdDriveCount > 0) EjectCdDrive(App().CdDrives.first());
}

void CommandBar::closeButton_Click() {
  ReleaseFocus();
  if (App().CdDriveCount > 0) CloseCdDrive(App().CdDrives.first());
}

bool CommandBar::AudioReady() {
  if (AudioAbilities() != 0) return true;
  Say("Your computer is not configured to play audio files", OkExclamation, "Windows Setup");
  return false;
}

void CommandBar::StartViewer(const QString& commandWord) {
  // A failed start is not looked at.
  platform::StartViewerProgram(App().ProgramFolder, commandWord);
}

void CommandBar::cdButton_Click() {
  ReleaseFocus();
  if (!AudioReady()) return;
  FillCdDrives();
  if (App().CdDriveCount == 0) {
    Say("No valid CDs are available", OkExclamation, "CD Player");
    return;
  }
  FillAudioCdDrives();
  if (App().CdDriveCount == 0) {
    Say("No CDs are available for playing", OkInformation, "CD Player");
    return;
  }
  // The viewers would play against the CD player.
  for (WindowId viewer : {WindowId::SingleImage, WindowId::SingleVideo, WindowId::SingleAudio})
    Windows().Unload(viewer);
  StartViewer("//cd");
}

void CommandBar::audioButton_Click() {
  ReleaseFocus();
  if (!AudioReady()) return;
  StartViewer("//audio");
}

void CommandBar::videoButton_Click() {
  ReleaseFocus();
  StartViewer("//video");
}

void CommandBar::dvdButton_Click() {
  ReleaseFocus();
  if (!DvdPlayerPresent()) {
    Say("DVD player is not available", OkInformation, "DVD Player");
    return;
  }
  StartViewer("//dvd");
}

void CommandBar::sleepButton_Click() {
  ReleaseFocus();
  if (!AudioReady()) return;
  StartViewer("//sleep");
}

void CommandBar::alarmButton_Click() {
  ReleaseFocus();
  if (!AudioReady()) return;
  StartViewer("//alarm");
}

void CommandBar::paintButton_Click() {
  ReleaseFocus();
  platform::StartPaintProgram(App().ProgramFolder, QString());
}

void CommandBar::albumButton_Click() {
  ReleaseFocus();
  // The album selection is centred on the button, 15 twips to the left,
  // and sits 30 twips above it.
  Windows().Unload(WindowId::AlbumEdit);
  QWidget* select = Windows().Load(WindowId::AlbumSelect);
  if (!select) return;
  QWidget* frame = FrameOf(select);
  const QPoint buttonCentre = albumButton->mapToGlobal(albumButton->rect().center());
  const QPoint at(buttonCentre.x() - frame->width() / 2 - twips::ToPixels(15),
                  albumButton->mapToGlobal(QPoint(0, 0)).y() - frame->height() -
                      twips::ToPixels(30));
  frame->move(frame->parentWidget() ? frame->parentWidget()->mapFromGlobal(at) : at);
  frame->show();
  frame->raise();
}

void CommandBar::searchButton_Click() {
  ReleaseFocus();
  ShowNormal(WindowId::FindFiles);
  // The search comes up reset, its list cleared.
  if (auto* search = dynamic_cast<ResetOnShow*>(Windows().Find(WindowId::FindFiles))) search->Display();
}

void CommandBar::sortButton_Click() {
  ReleaseFocus();
  App().ListingStale = false;
  ShowNormal(WindowId::SelectionSort);
}

void CommandBar::magnifierButton_Click() {
  ReleaseFocus();
  ShowWindow(WindowId::Magnifier);
}

void CommandBar::optionsButton_Click() {
  ReleaseFocus();
  ShowNormal(WindowId::OptionsEntry);
}

void CommandBar::multimediaButton_Click() {
  ReleaseFocus();
  // The desktop's sound settings are its multimedia properties.
  ::mixerButton_Click();
}

void CommandBar::mixerButton_Click() {
  ReleaseFocus();
  ::mixerButton_Click();
}

void CommandBar::muteButton_Click() {
  ReleaseFocus();
  volume_->FlipMute();
}

// ---- Clicks by the button's row ---------------------------------------------

bool CommandBar::ClickIfEnabled(BarButton button) {
  const CommandRow& row = CommandRowOf(button);
  if (!row.Click || !ButtonOf(button)->Enabled()) return false;
  (this->*row.Click)();
  return true;
}

void CommandBar::Click(BarButton button) {
  if (const auto click = CommandRowOf(button).Click) (this->*click)();
}
