#include "platform/TiffQuiet.h"

#include <dlfcn.h>

#include <initializer_list>

namespace platform {

void SilenceTiffMessages() {
  // The library is opened here and kept open, so that the picture plugin
  // that loads it later shares the same instance and its quiet settings.
  using SetHandler = void* (*)(void*);
  for (const char* name : {"libtiff.so.6", "libtiff.so.5"}) {
    void* library = dlopen(name, RTLD_NOW | RTLD_LOCAL);
    if (!library) continue;
    for (const char* setter : {"TIFFSetErrorHandler", "TIFFSetWarningHandler"}) {
      if (auto set = reinterpret_cast<SetHandler>(dlsym(library, setter))) set(nullptr);
    }
    return;
  }
}

}  // namespace platform
