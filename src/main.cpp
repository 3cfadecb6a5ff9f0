// Vistrel's entry point.
#include <QApplication>

#include "albums/AlbumWindows.h"
#include "browser/CdTitles.h"
#include "cd/CdAccess.h"
#include "cd/TagWindows.h"
#include "shell/Main.h"
#include "shell/OptionsEntry.h"
#include "system/AgentHelp.h"
#include "viewers/ViewerWindows.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("Vistrel");
  RegisterViewerWindows();
  RegisterTagWindows();
  RegisterAlbumWindows();
  RegisterOptionsWindow();
  RegisterTutorialWindow();
  // The Audios tab names the tracks of an audio CD by their titles.
  SetCdTitleLookup(CdTitlesOfDrive);
  return Main(application);
}
