// The context menu: which entries a cell's item gets, and what they do to
// the files, the lists and the cells.

#include "BrowserFixture.h"
#include "browser/MenuFile.h"

namespace {

using namespace browsertest;

// The entries shown and enabled, as "name" for shown and enabled, "(name)"
// for shown but disabled; hidden entries are left out.
QStringList Offered(const MenuFile& menu) {
  QStringList offered;
  for (int i = 0; i < MenuEntryCount; ++i) {
    const QAction* action = menu.Entry(MenuEntry(i));
    if (!action->isVisible()) continue;
    offered << (action->isEnabled() ? action->text() : "(" + action->text() + ")");
  }
  return offered;
}

}  // namespace

TEST(MenuFileTest, EachTabAndModeOffersItsEntries) {
  MenuFile menu(nullptr);
  // A picture of a folder with more than one picture: everything but the
  // tags, which only an MP3 brings up.
  menu.SetUp(PicturesTab, "P", "jpg", 2, false);
  EXPECT_EQ(Offered(menu), QStringList({"Rename", "Copy", "Move", "Delete", "Paint", "E-mail",
                                        "Print", "Shoot", "Clipboard", "Slideshow",
                                        "Properties"}));
  // One picture offers no slideshow; a metafile no picture entries; an album
  // no file operations.
  menu.SetUp(PicturesTab, "I", "ico", 1, false);
  EXPECT_EQ(Offered(menu).mid(4, 6), QStringList({"Paint", "E-mail", "Print", "Shoot",
                                                  "Clipboard", "Properties"}));
  menu.SetUp(PicturesTab, "W", "wmf", 5, true);
  EXPECT_EQ(Offered(menu), QStringList({"(Rename)", "(Copy)", "(Move)", "(Delete)", "E-mail",
                                        "Properties"}));

  // The tags only for MP3 files; in an album they show disabled; the other
  // tabs leave them as the last MP3 did, and Documents keeps its file
  // operations in an album.
  menu.SetUp(AudiosTab, "A", "mp3", 3, false);
  menu.SetUp(VideosTab, "V", "avi", 3, false);
  EXPECT_EQ(Offered(menu), QStringList({"Rename", "Copy", "Move", "Delete", "E-mail",
                                        "Properties", "\"Tag\" Data"}));
  menu.SetUp(AudiosTab, "A", "wav", 3, false);
  EXPECT_EQ(Offered(menu), QStringList({"Rename", "Copy", "Move", "Delete", "E-mail",
                                        "Properties"}));
  menu.SetUp(AudiosTab, "A", "mp2", 3, true);
  EXPECT_EQ(Offered(menu), QStringList({"(Rename)", "(Copy)", "(Move)", "(Delete)", "E-mail",
                                        "Properties", "(\"Tag\" Data)"}));
  menu.SetUp(DocumentsTab, "D", "pdf", 3, true);
  EXPECT_EQ(Offered(menu), QStringList({"Rename", "Copy", "Move", "Delete", "E-mail",
                                        "Properties", "(\"Tag\" Data)"}));
}
