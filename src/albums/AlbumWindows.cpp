#include "albums/AlbumWindows.h"

#include "albums/SelectionSort.h"
#include "core/WindowRegistry.h"

namespace {

QWidget* MainWindow() { return Windows().Find(WindowId::MainForm); }

}  // namespace

void RegisterAlbumWindows() {
  Windows().SetLoader(WindowId::SelectionSort, [] { return new SelectionSort(MainWindow()); });
}
