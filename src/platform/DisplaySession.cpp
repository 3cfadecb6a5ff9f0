#include "platform/DisplaySession.h"

#include <QtGlobal>

namespace platform {

QByteArray DisplayPlatformFor(const DisplayEnvironment& environment) {
  if (!environment.QtPlatform.trimmed().isEmpty()) return {};
  const bool wayland = !environment.WaylandDisplay.isEmpty() ||
                       environment.SessionType.trimmed().toLower() == "wayland";
  if (!wayland) return {};
  if (!environment.XDisplay.isEmpty()) return "xcb";
  return "wayland";
}

void ChooseDisplayPlatform() {
  const QByteArray platform = DisplayPlatformFor({qgetenv("QT_QPA_PLATFORM"),
                                                  qgetenv("XDG_SESSION_TYPE"),
                                                  qgetenv("WAYLAND_DISPLAY"), qgetenv("DISPLAY")});
  if (!platform.isEmpty()) qputenv("QT_QPA_PLATFORM", platform);
}

}  // namespace platform
