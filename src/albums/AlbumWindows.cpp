#include "albums/AlbumWindows.h"

#include "albums/AlbumEdit.h"
#include "albums/AlbumSelect.h"
#include "albums/FindFiles.h"
#include "albums/SelectionSort.h"
#include "core/WindowRegistry.h"

namespace {

QWidget* MainWindow() { return Windows().Find(WindowId::MainForm); }

}  // namespace

void RegisterAlbumWindows() {
  WindowRegistry& windows = Windows();
  windows.SetLoader(WindowId::SelectionSort, [] { return new SelectionSort(MainWindow()); });
  windows.SetLoader(WindowId::FindFiles, [] { return new FindFiles(MainWindow()); });
  windows.SetLoader(WindowId::AlbumEdit, [] { return new AlbumEdit(MainWindow()); });
  windows.SetLoader(WindowId::AlbumSelect, [] { return new AlbumSelect(MainWindow()); });
}
