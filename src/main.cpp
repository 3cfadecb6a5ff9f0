// Vistrel's entry point.
#include <QApplication>

#include "cd/TagWindows.h"
#include "shell/Main.h"
#include "viewers/ViewerWindows.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("Vistrel");
  RegisterViewerWindows();
  RegisterTagWindows();
  return Main(application);
}
