// Vistrel's entry point.
#include <QApplication>

#include "albums/AlbumWindows.h"
#include "cd/TagWindows.h"
#include "shell/Main.h"
#include "viewers/ViewerWindows.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("Vistrel");
  RegisterViewerWindows();
  RegisterTagWindows();
  RegisterAlbumWindows();
  return Main(application);
}
