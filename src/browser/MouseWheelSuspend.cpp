#include "browser/MouseWheelSuspend.h"

#include "browser/Thumbnails.h"
#include "shell/WindowRegistry.h"

void SuspendMouseWheel() {
  if (Thumbnails* browser = Windows().Get<Thumbnails>("Thumbnails")) browser->SuspendMouseWheel();
}

void ResumeMouseWheel() {
  if (Thumbnails* browser = Windows().Get<Thumbnails>("Thumbnails")) browser->ResumeMouseWheel();
}
