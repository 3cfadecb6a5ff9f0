#pragma once
// The display system the program runs on.
//
// Placing top-level windows, reading the pointer's screen position, copying
// the screen for the magnifier and finding other programs' windows by their
// captions all need an X server. In a Wayland session the program therefore
// runs on the session's X server (Xwayland) when there is one; without one
// it runs on Wayland itself, where those features do nothing.

#include <QByteArray>

namespace platform {

struct DisplayEnvironment {
  QByteArray QtPlatform;      // QT_QPA_PLATFORM
  QByteArray SessionType;     // XDG_SESSION_TYPE
  QByteArray WaylandDisplay;  // WAYLAND_DISPLAY
  QByteArray XDisplay;        // DISPLAY
};

// The Qt platform to ask for, or "" to leave Qt's own choice. A platform
// the user (or a test) has named is kept.
QByteArray DisplayPlatformFor(const DisplayEnvironment& environment);

// Reads the environment and sets QT_QPA_PLATFORM when the program must ask
// for a platform. Called before the application object is made.
void ChooseDisplayPlatform();

}  // namespace platform
