#include <gtest/gtest.h>

#include "core/AppState.h"
#include "core/BrowserSession.h"

TEST(BrowserSession, OddTabNumbersAndPositionsReadAsPicturesAndAsNoFile) {
  BrowserSession session;
  session.PictureFiles() = {"a.jpg", "", "c.png", ""};
  session.AudioFiles() = {"song.mp3", ""};

  // A number that is no tab stands for Pictures.
  EXPECT_EQ(session.List(0), QStringList({"a.jpg", "", "c.png", ""}));
  EXPECT_EQ(&session.Current(7), &session.CurrentPicture());

  // Entries outside a list read as ""; "" is no file to act on.
  EXPECT_EQ(session.Entry(PicturesTab, 2), "c.png");
  EXPECT_EQ(session.Entry(PicturesTab, -1), "");
  EXPECT_EQ(session.Entry(AudiosTab, 2), "");
  EXPECT_FALSE(session.HasEntry(PicturesTab, 1));

  // The program-wide state is a session, and its reset empties it.
  App().AudioFiles() = {"x.wav", ""};
  App().CurrentAudio() = 3;
  App().AlbumMode = true;
  ResetAppState();
  EXPECT_EQ(App().List(AudiosTab), QStringList());
  EXPECT_EQ(App().Current(AudiosTab), 0);
  EXPECT_FALSE(App().AlbumMode);
}
