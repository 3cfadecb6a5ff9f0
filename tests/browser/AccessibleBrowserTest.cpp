#include <gtest/gtest.h>

#include <QAccessible>

#include "browser/BrowserFixture.h"
#include "core/AppState.h"

using namespace browsertest;

namespace {

using AccessibleBrowserTest = BrowserTest;

// The browser's child in the role, as a screen reader finds it.
QAccessibleInterface* ChildIn(QAccessibleInterface* iface, QAccessible::Role role) {
  for (int i = 0; i < iface->childCount(); ++i)
    if (iface->child(i)->role() == role) return iface->child(i);
  return nullptr;
}

QStringList Names(QAccessibleInterface* iface) {
  QStringList names;
  for (int i = 0; i < iface->childCount(); ++i) names << iface->child(i)->text(QAccessible::Name);
  return names;
}

}  // namespace

TEST_F(AccessibleBrowserTest, ThePageReadsAsAListOfItsFilesAndTheTabsGiveTheirCounts) {
  const QString folder = MakeFolderWith("heard", {"trip.avi", "clip.avi"});
  MakePicture(folder + "/b.png", 40, 30);
  MakePicture(folder + "/a.jpg", 40, 30);
  Thumbnails window;
  Open(window, folder);

  QAccessibleInterface* browser = QAccessible::queryAccessibleInterface(&window);
  ASSERT_NE(browser, nullptr);
  QAccessibleInterface* list = ChildIn(browser, QAccessible::List);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->text(QAccessible::Name), "Pictures");
  EXPECT_EQ(list->text(QAccessible::Description), "1 to 2 of 2 picture files");
  EXPECT_EQ(Names(list), QStringList({"a.jpg", "b.png"}));
  EXPECT_EQ(list->child(0)->role(), QAccessible::ListItem);
  EXPECT_EQ(list->child(1)->parent(), list);
  EXPECT_EQ(list->indexOfChild(list->child(1)), 1);
  // The cells are read in the list only, not loose in the window.
  EXPECT_EQ(ChildIn(browser, QAccessible::ListItem), nullptr);
  EXPECT_EQ(browser->indexOfChild(list), browser->childCount() - 1);

  // The current item is the selected one.
  EXPECT_TRUE(list->child(0)->state().selected);
  ASSERT_TRUE(window.FocusCell(PicturesTab, 1));
  EXPECT_EQ(App().CurrentPicture(), 1);
  EXPECT_FALSE(list->child(0)->state().selected);
  EXPECT_TRUE(list->child(1)->state().selected);
  EXPECT_TRUE(list->child(1)->state().focusable);

  // Each tab reads its caption with the count, and the strip's count text.
  QAccessibleInterface* tabs = QAccessible::queryAccessibleInterface(window.ThumbnailTabs);
  ASSERT_EQ(tabs->childCount(), 4);
  EXPECT_EQ(Names(tabs), QStringList({"Pictures (2)", "Videos (2)", "Audios (0)", "Documents (0)"}));
  EXPECT_EQ(tabs->child(0)->text(QAccessible::Description), "1 to 2 of 2 picture files");
  EXPECT_EQ(tabs->child(1)->text(QAccessible::Description), "1 to 2 of 2 video files");
  EXPECT_EQ(tabs->child(2)->text(QAccessible::Description), "0 audio files available");
  EXPECT_TRUE(tabs->child(0)->state().selected);

  // Another tab in front: the list is its page, of names this time.
  window.SetCurrentTab(VideosTab);
  EXPECT_FALSE(tabs->child(0)->state().selected);
  EXPECT_TRUE(tabs->child(1)->state().selected);
  EXPECT_EQ(list->text(QAccessible::Name), "Videos");
  EXPECT_EQ(Names(list), QStringList({"clip.avi", "trip.avi"}));
  EXPECT_TRUE(list->child(0)->state().selected);

  // An empty tab gives an empty list.
  window.SetCurrentTab(AudiosTab);
  EXPECT_EQ(list->childCount(), 0);
  EXPECT_EQ(list->text(QAccessible::Description), "0 audio files available");
}

TEST_F(AccessibleBrowserTest, ANameTooLongForItsCellIsReadWhole) {
  const QString longName = "a very long name for a holiday film that cannot fit its cell.avi";
  const QString folder = MakeFolderWith("long", {longName});
  Thumbnails window;
  Open(window, folder);
  window.SetCurrentTab(VideosTab);

  QAccessibleInterface* list = ChildIn(QAccessible::queryAccessibleInterface(&window), QAccessible::List);
  ASSERT_NE(list, nullptr);
  ASSERT_EQ(list->childCount(), 1);
  EXPECT_NE(window.Name(VideosTab, 0)->text(), longName);
  EXPECT_EQ(list->child(0)->text(QAccessible::Name),
            "a very long name for a holiday film that cannot fit its cell.avi");
}
