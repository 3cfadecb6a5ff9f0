// The test program's entry: one offscreen QApplication for all tests, one
// desktop of fake applications, and every test isolated in its own
// temporary folders.

#include <gtest/gtest.h>
#include <clocale>

#include <QApplication>

#include "support/DesktopWorld.h"

namespace testenv {
void InstallIsolation();
}

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // Films and sounds play without a sound device: no test is heard.
  qputenv("VISTREL_MPV_AO", "null");
  testing::InitGoogleTest(&argc, argv);
  // Before anything asks the desktop, which keeps the first folders it sees.
  testenv::InstallDesktopWorld();
  QApplication app(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  testenv::InstallIsolation();
  return RUN_ALL_TESTS();
}
