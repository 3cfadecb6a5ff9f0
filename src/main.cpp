// Vistrel's entry point.
#include <QApplication>
#include <QIcon>

#include "albums/AlbumWindows.h"
#include "browser/CdTitles.h"
#include "cd/CdAccess.h"
#include "cd/TagWindows.h"
#include "platform/DisplaySession.h"
#include "shell/Main.h"
#include "shell/OptionsEntry.h"
#include "system/AgentHelp.h"
#include "viewers/ViewerWindows.h"

int main(int argc, char** argv) {
  // In a Wayland session the program runs on the session's X server when
  // there is one: window placing needs it.
  platform::ChooseDisplayPlatform();
  QApplication application(argc, argv);
  QApplication::setApplicationName("Vistrel");
  // The desktop matches the windows to the launcher entry by this name, and
  // every window shows the program's icon.
  QGuiApplication::setDesktopFileName("org.vistrel.Vistrel");
  QApplication::setWindowIcon(QIcon(":/Vistrel.svg"));
  RegisterViewerWindows();
  RegisterTagWindows();
  RegisterAlbumWindows();
  RegisterOptionsWindow();
  RegisterTutorialWindow();
  // The Audios tab names the tracks of an audio CD by their titles.
  SetCdTitleLookup(CdTitlesOfDrive);
  return Main(application);
}
