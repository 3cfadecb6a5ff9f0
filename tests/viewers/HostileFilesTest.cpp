// The picture viewer walking the broken pictures of the hostile collection
// (support/HostileFiles.h) in the browser's order.

#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QTest>

#include "catalogue/MediaPicture.h"
#include "catalogue/MediaTypes.h"
#include "controls/Button.h"
#include "core/AppState.h"
#include "core/WindowRegistry.h"
#include "fileops/FakeBrowser.h"
#include "shell/SharedMessageBox.h"
#include "support/HostileFiles.h"
#include "support/TestEnv.h"
#include "viewers/PictureHolder.h"
#include "viewers/SingleImage.h"

namespace {

class HostileViewerTest : public testing::Test {
 protected:
  void SetUp() override {
    CreateSharedMsgBox()->SetSoundBeep(false);
    FillMediaTables();
    folder_ = hostile::MakeHostileFiles(testenv::Root() + "/hostile");
    App().CurrentFolder = folder_;
    App().TitleBarHeight = 300;
  }
  void TearDown() override {
    Windows().Unload(WindowId::SingleImage);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ReleaseSharedMsgBox();
    hostile::RemoveHostileFiles(folder_);
  }

  QString folder_;
  FakeBrowser browser_;
};

// The name the viewer shows, and "x" for the invalid-picture mark or "o"
// for the picture.
QString Outcome(const SingleImage& viewer) {
  const QImage invalid = InvalidImagePicture().convertToFormat(QImage::Format_ARGB32);
  const bool marked = viewer.Picture1->Picture().convertToFormat(QImage::Format_ARGB32) == invalid;
  const QString text = viewer.DescriptionLabel->text();
  return text.mid(text.indexOf("Name: ") + 6) + (marked ? " x" : " o") + (viewer.PictureValid ? "" : "!");
}

TEST_F(HostileViewerTest, EveryBrokenPictureShowsTheMarkAndTheWalkGoesOn) {
  // The pictures as the browser lists them, with its scratch element.
  App().PictureFiles() = {"a;b.png", "bad-\uFFFD.png", "cut.bmp", "cut.emf", "cut.gif", "cut.ico", "cut.jpg",
                          "cut.pcx", "cut.png", "cut.tif", "cut.wmf", "cut.xif", "empty.png", "good.png",
                          "it's.png", "say \"cheese\".png", "torn.bmp", "torn.emf", "torn.gif", "torn.ico",
                          "torn.jpg", "torn.pcx", "torn.png", "torn.tif", "torn.wmf", "torn.xif",
                          "two\nlines.png", "\u00C6r\u00F8 \u00E9t\u00E9.png", ""};
  App().CurrentPicture() = 1;
  auto* viewer = new SingleImage;
  Windows().Loaded(viewer);
  viewer->show();

  QStringList seen{Outcome(*viewer)};
  for (int step = 0; step < 26; ++step) {
    QTest::mouseClick(viewer->nextButton, Qt::LeftButton);
    seen << Outcome(*viewer);
  }
  // "!" marks what the viewer takes for invalid: nothing of it copies or
  // prints.
  EXPECT_EQ(seen, QStringList({"bad-\uFFFD.png x!", "cut.bmp x!", "cut.emf x!", "cut.gif x!", "cut.ico x!",
                               "cut.jpg x!", "cut.pcx x!", "cut.png x!", "cut.tif x!", "cut.wmf x!",
                               "cut.xif x!", "empty.png x!", "good.png o", "it's.png o",
                               "say \"cheese\".png o", "torn.bmp o", "torn.emf x!", "torn.gif x!",
                               "torn.ico o", "torn.jpg x!", "torn.pcx x!", "torn.png x!", "torn.tif o",
                               "torn.wmf x!", "torn.xif o", "two\nlines.png o",
                               "\u00C6r\u00F8 \u00E9t\u00E9.png o"}));
  EXPECT_FALSE(viewer->nextButton->isEnabled());

  // Back the other way, from good pictures onto a broken one and on.
  QStringList back;
  for (int step = 0; step < 4; ++step) {
    QTest::mouseClick(viewer->previousButton, Qt::LeftButton);
    back << Outcome(*viewer);
  }
  EXPECT_EQ(back, QStringList({"two\nlines.png o", "torn.xif o", "torn.wmf x!", "torn.tif o"}));
  QTest::mouseClick(viewer->firstButton, Qt::LeftButton);
  EXPECT_EQ(Outcome(*viewer), "a;b.png o");
  EXPECT_FALSE(viewer->previousButton->isEnabled());
}

}  // namespace
