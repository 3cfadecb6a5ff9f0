#include "core/BrowserCommands.h"

#include "core/WindowRegistry.h"

BrowserCommands* TheBrowserCommands() {
  return dynamic_cast<BrowserCommands*>(Windows().Find(WindowId::Thumbnails));
}

void SuspendMouseWheel() {
  if (BrowserCommands* browser = TheBrowserCommands()) browser->SuspendMouseWheel();
}

void ResumeMouseWheel() {
  if (BrowserCommands* browser = TheBrowserCommands()) browser->ResumeMouseWheel();
}
