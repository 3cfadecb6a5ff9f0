#include <gtest/gtest.h>

#include "catalogue/MediaTypes.h"
#include "support/TestEnv.h"

namespace {

class MediaTypesTest : public testing::Test {
 protected:
  void SetUp() override {
    MediaTables() = MediaTableSet{};
    FillMediaTables();
    FillExteriorTables();
  }
};

TEST_F(MediaTypesTest, MediaCodeFollowsTheExtensionOnly) {
  const std::pair<const char*, const char*> cases[] = {
      {"/home/me/Pictures/scan.TIFF", "P"},
      {"archive.tar.gz", "U"},
      {"page.HTML", "W"},
      {"http://localhost/start", "W"},  // no dot at all
      {"ftp://mirror/pub", "W"},
      {"clip.ram", "R"},  // listed among exterior videos, yet Real media here
      {"icon.ICO", "I"},
      {"clip.mp4", "V"},
      {"film.mpv2", "V"},
      {"film.mpv", "U"},
      {"disc/Track01.cda", "A"},
      {"notes.txt", "D"},
      {"gif", "P"},   // a file called "gif" is its own extension
      {"GIF", "U"},   // without a dot the case is kept, and no table has it
      {"", "U"},
      {"trailing.", "U"},
  };
  for (const auto& [name, code] : cases) EXPECT_EQ(GetMediaType(name).toStdString(), code) << name;
}

TEST_F(MediaTypesTest, ExteriorAndDocumentTypesNeedTheBrowserTables) {
  MediaTables() = MediaTableSet{};
  FillMediaTables();
  EXPECT_EQ(GetMediaType("clip.mp4").toStdString(), "U");
  EXPECT_EQ(GetMediaType("notes.pdf").toStdString(), "U");
  EXPECT_EQ(GetMediaType("clip.ram").toStdString(), "R");
  FillExteriorTables();
  EXPECT_EQ(GetMediaType("clip.mp4").toStdString(), "V");
  EXPECT_EQ(GetMediaType("notes.pdf").toStdString(), "D");
}

TEST_F(MediaTypesTest, JpegEndMarkerIsCheckedOnlyForJpegNames) {
  const QString dir = testenv::Root() + "/jpeg/";
  EXPECT_TRUE(IsValidJpegEnd(testenv::MakeFile(dir + "good.jpg", QByteArray("\xFF\xD8xyz\xFF\xD9", 7))));
  EXPECT_FALSE(IsValidJpegEnd(testenv::MakeFile(dir + "one.jpg", QByteArray("\xD9", 1))));
  EXPECT_FALSE(IsValidJpegEnd(testenv::MakeFile(dir + "swapped.jpg", QByteArray("\xFF\xD8\xD9\xFF", 4))));
  EXPECT_FALSE(IsValidJpegEnd(dir + "missing.jpg"));
  // Other names pass unread, even missing or damaged ones.
  EXPECT_TRUE(IsValidJpegEnd(dir + "missing.png"));
  EXPECT_TRUE(IsValidJpegEnd(testenv::MakeFile(dir + "odd.jfif", QByteArray("x", 1))));
}

}  // namespace
