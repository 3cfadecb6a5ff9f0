#pragma once
// What the browser benchmarks share: a world of their own (settings and
// thumbnail cache in temporary folders, an offscreen screen unless another
// is asked for), a browser window over it, and the peak memory reading.

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "browser/Thumbnails.h"
#include "catalogue/MediaTypes.h"
#include "core/AppState.h"

// Points the settings and the cache into world; before the application is made.
inline void EnterBenchWorld(const QTemporaryDir& world) {
  qputenv("XDG_CONFIG_HOME", (world.path() + "/config").toUtf8());
  qputenv("XDG_CACHE_HOME", (world.path() + "/cache").toUtf8());
  qputenv("PULSE_RUNTIME_PATH", (world.path() + "/pulse").toUtf8());
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
}

// Loads a browser of 900 x 600 pixels (a page of 8 x 5 pictures at the inch
// size) over an empty default folder in world.
inline void LoadBenchBrowser(Thumbnails& browser, const QTemporaryDir& world) {
  FillMediaTables();
  App().ProgramFolder = world.path() + "/program";
  QDir().mkpath(App().ProgramFolder + "/MyMedia");
  browser.resize(900, 600);
  browser.show();
  browser.Form_Load();
}

// The peak resident memory of this process, in megabytes (-1 when the
// system does not tell).
inline double PeakMemoryMb() {
  QFile status("/proc/self/status");
  if (!status.open(QIODevice::ReadOnly)) return -1;
  for (const QByteArray& line : status.readAll().split('\n'))
    if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024;
  return -1;
}
