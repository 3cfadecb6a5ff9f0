#include <gtest/gtest.h>

#include "core/AppState.h"
#include "shell/SharedMessageBox.h"

TEST(SharedMessageBox, MadeOnceInTheProgramsLookAndReleasedAtTheClose) {
  ASSERT_EQ(App().MsgBox, nullptr);
  MsgBoxEnhanced* box = CreateSharedMsgBox();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(App().MsgBox, box);

  EXPECT_EQ(box->DefaultTitle(), "Vistrel");
  EXPECT_EQ(box->StartUpPosition(), 1);

  // Asked again, it gives the same box as it stands: a property the box
  // changed for itself, such as falling back to the screen's centre, stays.
  box->SetStartUpPosition(2);
  EXPECT_EQ(CreateSharedMsgBox(), box);
  EXPECT_EQ(box->StartUpPosition(), 2);

  ReleaseSharedMsgBox();
  EXPECT_EQ(App().MsgBox, nullptr);
}
