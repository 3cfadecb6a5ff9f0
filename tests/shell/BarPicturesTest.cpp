#include <gtest/gtest.h>

#include <QColor>
#include <QImage>

#include "shell/BarPictures.h"

namespace {

int OpaquePixels(const QImage& image) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) count += qAlpha(image.pixel(x, y)) == 255;
  return count;
}

QColor At(const QString& name, int sizePixels, qreal ratio, int x, int y) {
  return BarPicture(name, sizePixels, ratio).toImage().pixelColor(x, y);
}

}  // namespace

// Small buttons show 16-pixel pictures, big ones 23-pixel pictures.
TEST(BarPictures, EveryButtonHasItsPictureAtBothSizesAndRatios) {
  const char* names[] = {"DirectoryButton", "refreshButton", "cdButton", "ejectButton",
                         "closeButton", "dvdButton", "audioButton", "videoButton",
                         "albumButton", "searchButton", "sortButton", "sleepButton",
                         "alarmButton", "paintButton", "magnifierButton", "internetButton",
                         "optionsButton", "multimediaButton", "mixerButton", "aboutButton",
                         "HelpButton", "Picture1", "Picture2"};
  for (const char* name : names)
    for (int size : {16, 23})
      for (qreal ratio : {1.0, 2.0}) {
        SCOPED_TRACE(QString("%1 at %2 px, ratio %3").arg(name).arg(size).arg(ratio).toStdString());
        const QPixmap picture = BarPicture(name, size, ratio);
        EXPECT_EQ(picture.size(), QSize(size, size) * ratio);
        EXPECT_EQ(picture.devicePixelRatio(), ratio);
        EXPECT_GT(OpaquePixels(picture.toImage()), 0);
      }

  const QPixmap none = BarPicture("noSuchButton", 23, 2.0);
  EXPECT_EQ(none.size(), QSize(46, 46));
  EXPECT_EQ(OpaquePixels(none.toImage()), 0);
}

TEST(BarPictures, PicturesShowTheirColoursWhereExpected) {
  // The folder's front is yellow, its corner empty, at either ratio.
  EXPECT_EQ(At("DirectoryButton", 23, 1.0, 0, 0), QColor(0, 0, 0, 0));
  EXPECT_EQ(At("DirectoryButton", 23, 2.0, 24, 26), QColor(242, 193, 78));
  // The silenced loudspeaker's red cross.
  EXPECT_EQ(At("Picture2", 16, 1.0, 12, 8), QColor(198, 40, 40));
}
