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

TEST_F(MediaTypesTest, TablesHoldTheirEntriesInOrderWithCounts) {
  const MediaTableSet& t = MediaTables();
  EXPECT_EQ(t.PictureExtensions.join(',').toStdString(),
            "bmp,dib,rle,xbm,gif,jpeg,jpe,jpg,wmf,emf,png,mng,tif,tiff,jfx,pcx,xif,ico,cur");
  EXPECT_EQ(t.VideoExtensions.join(',').toStdString(), "avi,ivf,mpg,mpe,mpeg,m1v,mpv2,wmv,mps,asx");
  EXPECT_EQ(t.AudioExtensions.join(',').toStdString(), "mp3,mp2,mp1,mpa,wav,wma,asf,mid,midi,rmi,cda");
  EXPECT_EQ(t.WebExtensions.join(',').toStdString(), "htm,html,asp,xml,com,art");
  EXPECT_EQ(t.ExteriorVideoExtensions.join(',').toStdString(), "flv,mp4,rm,ram,mov");
  EXPECT_EQ(t.DocumentExtensions.join(',').toStdString(), "txt,text,rdf,doc,docx,pdf");
  EXPECT_EQ(t.PictureCount, 19);
  EXPECT_EQ(t.DocumentCount, 6);
  // Filling again does not grow the tables.
  FillMediaTables();
  FillExteriorTables();
  EXPECT_EQ(MediaTables().PictureExtensions.size(), 19);
  EXPECT_EQ(MediaTables().DocumentExtensions.size(), 6);
}

TEST_F(MediaTypesTest, MediaCodeFollowsTheExtensionOnly) {
  const std::pair<const char*, const char*> cases[] = {
      {"/home/me/Pictures/scan.TIFF", "P"},
      {"archive.tar.gz", "U"},
      {"page.HTML", "W"},
      {"http://localhost/start", "W"},  // no dot at all
      {"HTTP://localhost", "W"},
      {"ftp://mirror/pub", "W"},
      {"clip.ram", "R"},  // listed among exterior videos, yet Real media here
      {"song.ra", "R"},
      {"icon.ICO", "I"},
      {"pointer.cur", "C"},
      {"clip.mp4", "V"},
      {"film.mpv2", "V"},
      {"film.mpv", "U"},
      {"track.asf", "A"},
      {"disc/Track01.cda", "A"},
      {"notes.txt", "D"},
      {"gif", "P"},   // a file called "gif" is its own extension
      {"GIF", "U"},   // without a dot the case is kept, and no table has it
      {"", "U"},
      {"photos.v2/readme", "U"},
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
  EXPECT_TRUE(IsValidJpegEnd(testenv::MakeFile(dir + "good.JPEG", QByteArray("\xFF\xD9", 2))));
  EXPECT_FALSE(IsValidJpegEnd(testenv::MakeFile(dir + "one.jpg", QByteArray("\xD9", 1))));
  EXPECT_FALSE(IsValidJpegEnd(testenv::MakeFile(dir + "empty.jpg", QByteArray())));
  EXPECT_FALSE(IsValidJpegEnd(testenv::MakeFile(dir + "swapped.jpg", QByteArray("\xFF\xD8\xD9\xFF", 4))));
  EXPECT_FALSE(IsValidJpegEnd(dir + "missing.jpg"));
  // Other names pass unread, even missing or damaged ones.
  EXPECT_TRUE(IsValidJpegEnd(dir + "missing.png"));
  EXPECT_TRUE(IsValidJpegEnd(testenv::MakeFile(dir + "odd.jfif", QByteArray("x", 1))));
}

TEST_F(MediaTypesTest, MaskPositionsReadFromOne) {
  const QString pictures = "11111111000000000001";
  EXPECT_EQ(MaskCharacter(pictures, 1).toStdString(), "1");
  EXPECT_EQ(MaskCharacter(pictures, 9).toStdString(), "0");
  EXPECT_TRUE(MaskBitSet(pictures, 20));
  EXPECT_FALSE(MaskBitSet(pictures, 19));
  // Beyond the mask: an empty text, which is neither "1" nor "0".
  EXPECT_TRUE(MaskCharacter("101", 4).isNull());
  EXPECT_FALSE(MaskBitSet("101", 4));
  EXPECT_EQ(MaskCharacter("101", 0).toStdString(), "");
  EXPECT_EQ(MaskCharacter("", 1).toStdString(), "");
}

TEST_F(MediaTypesTest, DialogTypeListsDifferOnlyWhereDocumented) {
  const QStringList& find = FindFilesTypeList();
  const QStringList& album = AlbumEditTypeList();
  ASSERT_EQ(find.size(), 21);
  ASSERT_EQ(album.size(), 20);
  EXPECT_EQ(find[0].toStdString(), "All supported media types");
  EXPECT_EQ(find[6].toStdString(), "Network graphics images (*.png;*.mng)");
  EXPECT_EQ(album[6].toStdString(), "Network graphics (*.png;*.mng)");
  EXPECT_EQ(find[10].toStdString(), "Icons and cursors (*.ico; *.cur)");
  EXPECT_EQ(find[13].toStdString(), "Movie files (*.mpg;*.mpe;*.mpeg;*.mpv2;*.m1v;*.mps)");
  EXPECT_EQ(find[19].toStdString(), "CD audio track files (*.cda)");
  EXPECT_EQ(find[20].toStdString(), "MIDI files (*.mid;*.midi;*.rmi)");
  EXPECT_EQ(album[19].toStdString(), "MIDI files (*.mid;*.midi;*.rmi)");
  EXPECT_FALSE(album.join('|').contains("cda"));
  for (int i = 0; i < 19; ++i) {
    if (i == 6) continue;
    EXPECT_EQ(find[i].toStdString(), album[i].toStdString()) << i;
  }
  EXPECT_EQ(find.indexOf("All pictures"), 1);
  EXPECT_EQ(find.indexOf("All videos"), 11);
  EXPECT_EQ(find.indexOf("All audios"), 15);
}

}  // namespace
