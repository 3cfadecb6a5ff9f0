#pragma once
// The desktop every test of one test binary sees: a handful of fake
// applications, their MIME types and the desktop's defaults, in folders of
// their own, so that no application of the machine takes part.
//
// Why one world per binary and not one per test: the desktop's library
// reads the XDG folder variables once, at its first use in a process, and
// keeps them; a test that points XDG_DATA_DIRS elsewhere later is never
// heard. It does watch the folders it knows, though: a desktop file that
// is taken away or put back is seen almost at once. So the world is made
// once, before the first test, with XDG_DATA_DIRS, XDG_CONFIG_DIRS and the
// user's data and configuration folders as the library keeps them pointing
// into it, and a test changes it only by hiding an application for a while
// (HiddenApplication). The per-test HOME and XDG_*_HOME folders stay the
// test's own for everything else.
//
// The applications (their programs are small do-nothing scripts in the
// world's bin folder, first on PATH, because the desktop ignores an entry
// whose program it cannot find; tests stub the program starter anyway):
//   vistrel-test-player   "vistrel-test-player %U"   video/mp4, audio/mpeg     default of both
//   vistrel-test-reader   "vistrel-test-reader %f"   application/pdf, text/plain  default of both
//   vistrel-test-viewer   "vistrel-test-viewer %f"   image/png, image/jpeg     default of both,
//                         Categories=Graphics;Viewer; (no raster editor)
//   vistrel-test-painter  "vistrel-test-painter %F"  image/png, image/jpeg,
//                         Categories=Graphics;2DGraphics;RasterGraphics;
//   vistrel-test-dvd      "vistrel-test-dvd %U"      x-content/video-dvd
//   vistrel-test-cd       "vistrel-test-cd %U"       x-content/audio-cdda
// Nothing handles video/quicktime (.mov), video/x-flv (.flv) or
// application/msword (.doc).

#include <QString>
#include <QStringList>

namespace testenv {

inline constexpr const char* PlayerApp = "vistrel-test-player.desktop";
inline constexpr const char* ReaderApp = "vistrel-test-reader.desktop";
inline constexpr const char* ViewerApp = "vistrel-test-viewer.desktop";
inline constexpr const char* PainterApp = "vistrel-test-painter.desktop";
inline constexpr const char* DvdApp = "vistrel-test-dvd.desktop";
inline constexpr const char* CdApp = "vistrel-test-cd.desktop";

// Makes the world and points the process at it; called once by the test
// main before the first test (and before anything asks the desktop).
void InstallDesktopWorld();

// The world's root: bin/, share/applications/, share/mime (the machine's
// MIME database), etc/xdg/mimeapps.list.
QString DesktopWorldDir();
// Where the world's desktop files lie.
QString DesktopApplicationsDir();

// Takes an application of the world away (as if uninstalled) while it
// lives, and puts it back when it goes; both wait until the desktop has
// seen the change. Use it inside a test body only.
class HiddenApplication {
 public:
  explicit HiddenApplication(const QString& id);
  ~HiddenApplication();
  HiddenApplication(const HiddenApplication&) = delete;
  HiddenApplication& operator=(const HiddenApplication&) = delete;
  // Whether the desktop no longer offers the application.
  bool Hidden() const { return hidden_; }

 private:
  QString id_;
  bool hidden_ = false;
};

}  // namespace testenv
