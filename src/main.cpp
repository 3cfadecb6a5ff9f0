// Vistrel's entry point.
#include <QApplication>

#include "shell/Main.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("Vistrel");
  return Main(application);
}
