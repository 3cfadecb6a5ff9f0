#include <gtest/gtest.h>

#include "platform/DisplaySession.h"

using platform::DisplayPlatformFor;

TEST(DisplaySession, AWaylandSessionRunsOnItsXServerWhenThereIsOne) {
  // Wayland with Xwayland beside it: the X server, whichever way the
  // session says it is Wayland.
  EXPECT_EQ(DisplayPlatformFor({"", "wayland", "wayland-0", ":0"}), QByteArray("xcb"));
  EXPECT_EQ(DisplayPlatformFor({"", "", "wayland-1", ":1"}), QByteArray("xcb"));
  EXPECT_EQ(DisplayPlatformFor({"", "Wayland", "", ":0"}), QByteArray("xcb"));
  // No X server: Wayland itself.
  EXPECT_EQ(DisplayPlatformFor({"", "wayland", "wayland-0", ""}), QByteArray("wayland"));
  // An X session, or no session at all: Qt's own choice.
  EXPECT_EQ(DisplayPlatformFor({"", "x11", "", ":0"}), QByteArray());
  EXPECT_EQ(DisplayPlatformFor({"", "", "", ""}), QByteArray());
  EXPECT_EQ(DisplayPlatformFor({"", "tty", "", ""}), QByteArray());
  // A platform named by the user or a test is kept.
  EXPECT_EQ(DisplayPlatformFor({"offscreen", "wayland", "wayland-0", ":0"}), QByteArray());
  EXPECT_EQ(DisplayPlatformFor({"wayland", "wayland", "wayland-0", ":0"}), QByteArray());
}
