#include "cd/TagWindows.h"

#include "cd/ChangeMP3.h"
#include "core/WindowRegistry.h"

void RegisterTagWindows() {
  Windows().SetLoader(WindowId::ChangeMP3,
                      [] { return new ChangeMP3(Windows().Find(WindowId::MainForm)); });
}
