#include <gtest/gtest.h>

#include <QColor>
#include <QImage>

#include "browser/CellIcons.h"
#include "browser/TabState.h"

TEST(CellIcons, EachListTabShowsItsIconAtTheGivenRatio) {
  const QImage film = CellIcon(VideosTab, 16).toImage();
  EXPECT_EQ(film.size(), QSize(16, 16));
  EXPECT_EQ(film.pixelColor(8, 8), QColor(90, 150, 220));  // the frame

  const QImage note = CellIcon(AudiosTab, 16).toImage();
  EXPECT_EQ(note.pixelColor(4, 12), QColor(40, 90, 160));  // a note head
  EXPECT_EQ(note.pixelColor(8, 8), QColor(0, 0, 0, 0));    // beside the stem

  const QPixmap page = CellIcon(DocumentsTab, 16, 2.0);
  EXPECT_EQ(page.size(), QSize(32, 32));
  EXPECT_EQ(page.devicePixelRatio(), 2.0);
  EXPECT_EQ(page.toImage().pixelColor(16, 8), QColor(255, 255, 255));
  EXPECT_EQ(page.toImage().pixelColor(0, 0), QColor(0, 0, 0, 0));
}
