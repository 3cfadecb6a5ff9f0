#include "viewers/ViewerWindows.h"

#include "core/WindowRegistry.h"
#include "viewers/Magnifier.h"
#include "viewers/PlayerViewer.h"
#include "viewers/PrinterSetup.h"
#include "viewers/SingleImage.h"
#include "viewers/SlideshowController.h"
#include "viewers/Target.h"

namespace {

QWidget* MainWindow() { return Windows().Find(WindowId::MainForm); }

}  // namespace

void RegisterViewerWindows() {
  WindowRegistry& windows = Windows();
  // A viewer that found nothing to show has closed while loading.
  windows.SetLoader(WindowId::SingleImage, []() -> QWidget* {
    auto* viewer = new SingleImage;
    return viewer->Closing() ? nullptr : viewer;
  });
  windows.SetLoader(WindowId::SingleAudio, []() -> QWidget* {
    auto* viewer = new SingleAudio;
    return viewer->Closing() ? nullptr : viewer;
  });
  windows.SetLoader(WindowId::SingleVideo, []() -> QWidget* {
    auto* viewer = new SingleVideo;
    return viewer->Closing() ? nullptr : viewer;
  });
  windows.SetLoader(WindowId::SlideshowController, [] { return new SlideshowController(MainWindow()); });
  windows.SetLoader(WindowId::PrinterSetup, [] { return new PrinterSetup(MainWindow()); });
  windows.SetLoader(WindowId::Target, [] { return new Target(MainWindow()); });
  windows.SetLoader(WindowId::Magnifier, [] { return new Magnifier(MainWindow()); });
}
