// Vistrel's entry point.
#include <QApplication>

#include "shell/Main.h"
#include "viewers/ViewerWindows.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("Vistrel");
  RegisterViewerWindows();
  return Main(application);
}
