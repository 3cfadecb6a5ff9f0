#include "browser/MouseWheelSuspend.h"

#include "browser/Thumbnails.h"
#include "core/WindowRegistry.h"

void SuspendMouseWheel() {
  if (Thumbnails* browser = Windows().Get<Thumbnails>()) browser->SuspendMouseWheel();
}

void ResumeMouseWheel() {
  if (Thumbnails* browser = Windows().Get<Thumbnails>()) browser->ResumeMouseWheel();
}
