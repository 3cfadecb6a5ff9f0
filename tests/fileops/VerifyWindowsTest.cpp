#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "catalogue/MediaIcons.h"
#include "catalogue/MediaPicture.h"
#include "catalogue/MediaTypes.h"
#include "controls/Label3D.h"
#include "controls/NewImage.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "fileops/DeleteVerify.h"
#include "fileops/FileOperations.h"
#include "fileops/MessageWindows.h"
#include "fileops/ReplaceTexts.h"
#include "fileops/ReplaceVerify.h"
#include "support/TestEnv.h"
#include "support/WindowAnswer.h"

namespace {

// A file of exactly `bytes` bytes, last modified at `stamp`: a picture of
// the given size padded with zeros (the decoder stops at the picture's
// end), or without a size plain letters.
QString MakeStamped(const QString& path, qint64 bytes, const QDateTime& stamp, QSize size = {}) {
  QByteArray data;
  if (!size.isEmpty()) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(30, 120, 200));
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
  }
  data.append(QByteArray(bytes - data.size(), size.isEmpty() ? 'a' : '\0'));
  testenv::MakeFile(path, data);
  QFile file(path);
  file.open(QIODevice::ReadWrite);
  file.setFileTime(stamp, QFileDevice::FileModificationTime);
  return path;
}

class VerifyWindowsTest : public testing::Test {
 protected:
  void SetUp() override {
    QLocale::setDefault(QLocale::c());
    FillMediaTables();
    folder_ = testenv::Root() + "/home";
  }
  void TearDown() override {
    QLocale::setDefault(QLocale::system());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  QString folder_;
};

}  // namespace

TEST(ReplaceTexts, SizeDateTimeAndASmallPictureEnlarged) {
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(ReplaceSizeText(0), "0 bytes");
  EXPECT_EQ(ReplaceDateText(QDate(1999, 12, 31)), "12/31/1999");
  EXPECT_EQ(ReplaceTimeText(QTime(0, 0, 1)), "0:00:01 AM");
  EXPECT_EQ(ReplaceTimeText(QTime(12, 0, 0)), "12:00:00 AM");
  EXPECT_EQ(ReplaceTimeText(QTime(23, 59, 59)), "11:59:59 PM");
  EXPECT_EQ(PictureBoxTwips(QSize(50, 50), 1800), QSize(1740, 1740));
  QLocale::setDefault(QLocale::system());
}

TEST_F(VerifyWindowsTest, ReplaceVerifyShowsTwoPictures) {
  App().ReplaceSource = MakeStamped(folder_ + "/from/Beach.png", 1234567,
                                    QDateTime(QDate(2004, 3, 7), QTime(13, 5, 9)), QSize(400, 200));
  App().ReplaceTarget = MakeStamped(folder_ + "/to/Beach.png", 2048,
                                    QDateTime(QDate(2010, 11, 30), QTime(0, 0, 0)), QSize(100, 300));
  ReplaceVerify window;

  EXPECT_EQ(window.windowTitle(), " Replace Media File");
  EXPECT_EQ(window.Label1->text(), "A file with the same name already exists in the destination folder.");
  EXPECT_EQ(window.MsgText->text(), "Do you wish to replace this file?");
  EXPECT_EQ(window.Label3D1->Caption(), "From file:");
  EXPECT_EQ(window.Label3D2->Caption(), "To file:");
  EXPECT_EQ(window.MsgButton[0]->text(), "&Yes");
  EXPECT_EQ(window.MsgButton[1]->text(), "&No");
  const QStringList texts{window.Name1->text(), window.Size1->text(), window.Date1->text(),
                          window.Time1->text(), window.Name2->text(), window.Size2->text(),
                          window.Date2->text(), window.Time2->text()};
  EXPECT_EQ(texts, (QStringList{"Beach.png", "1,234,567 bytes", "03/07/2004", "1:05:09 PM",
                                "Beach.png", "2,048 bytes", "11/30/2010", "(None)"}));
  // Sized as a thumbnail in an area of 1800 twips: 1740 x 870 and 580 x 1740.
  EXPECT_EQ(window.Image1->size(), QSize(116, 58));
  EXPECT_EQ(window.Image2->size(), QSize(38, 116));
  EXPECT_FALSE(window.Image1->Picture().isNull());
}

TEST_F(VerifyWindowsTest, ReplaceVerifyShowsIconsAndTheInvalidPicture) {
  App().ReplaceSource =
      MakeStamped(folder_ + "/from/Song.mp3", 5000, QDateTime(QDate(2001, 1, 2), QTime(12, 0, 0)));
  App().ReplaceTarget = MakeStamped(folder_ + "/to/Song.mp3", 4999999,
                                    QDateTime(QDate(2002, 2, 3), QTime(0, 15, 0)));
  {
    ReplaceVerify window;
    const QImage note = MediaIcon(MediaIconKind::Audio, 116).toImage();
    EXPECT_EQ(window.Image1->Picture().toImage(), note);
    EXPECT_EQ(window.Image2->Picture().toImage(), note);
    EXPECT_EQ(window.Image1->size(), QSize(116, 116));
    const QStringList texts{window.Size1->text(), window.Date1->text(), window.Time1->text(),
                            window.Size2->text(), window.Date2->text(), window.Time2->text()};
    EXPECT_EQ(texts, (QStringList{"5,000 bytes", "01/02/2001", "12:00:00 AM", "4,999,999 bytes",
                                  "02/03/2002", "0:15:00 AM"}));
  }
  // A picture that can't be decoded shows the invalid-picture marker; a
  // name too long for its place is shortened, its whole name kept.
  const QString longName = QString(80, 'n') + ".jpg";
  App().ReplaceSource = MakeStamped(folder_ + "/from/" + longName, 10, QDateTime::currentDateTime());
  App().ReplaceTarget = MakeStamped(folder_ + "/to/broken.jpg", 10, QDateTime::currentDateTime());
  ReplaceVerify window;
  EXPECT_EQ(window.Image2->Picture().size(), InvalidImagePicture().size());
  EXPECT_EQ(window.Name2->text(), "broken.jpg");
  EXPECT_EQ(window.ShownName(1), longName);
  EXPECT_TRUE(window.Name1->text().contains(QChar(0x2026)));
  EXPECT_EQ(window.Name1->toolTip(), longName);
}

TEST_F(VerifyWindowsTest, DeleteVerifyAnswersAndKeepsTheOption) {
  struct Case {
    const char* action;
    int answer;
    const char* optionAfter;
    bool quickExit;
  };
  // Each starts with "1" saved and the third way chosen in the window.
  for (const Case& c : {Case{"Yes", 6, "2", false}, Case{"No", 7, "1", false},
                        Case{"Esc", 2, "1", false}, Case{"Shift+Esc", 2, "1", true}}) {
    SCOPED_TRACE(c.action);
    settings::SaveSetting("DeleteOption", "1");
    App().QuickExit = false;
    QStringList texts;
    std::vector<bool> checked;
    WindowAnswer<DeleteVerify> answer([&](DeleteVerify& window) {
      texts = QStringList{window.windowTitle(), window.MsgText->text(), window.OptionLabel->text(),
                          window.dOption[0]->text(), window.dOption[1]->text(),
                          window.dOption[2]->text(), window.MsgButton[0]->text(),
                          window.MsgButton[1]->text()};
      for (QRadioButton* option : window.dOption) checked.push_back(option->isChecked());
      // On the round button itself, at the left end.
      QTest::mouseClick(window.dOption[2], Qt::LeftButton, {},
                        QPoint(8, window.dOption[2]->height() / 2));
      const QString action = c.action;
      if (action == "Yes" || action == "No")
        QTest::mouseClick(window.MsgButton[action == "Yes" ? 0 : 1], Qt::LeftButton);
      else
        QTest::keyClick(&window, Qt::Key_Escape,
                        action == "Esc" ? Qt::NoModifier : Qt::ShiftModifier);
    });

    EXPECT_EQ(VerifyDelete(), c.answer);
    EXPECT_TRUE(answer.Ran());
    EXPECT_EQ(texts, (QStringList{" Delete Media File", "Are you sure you wish to delete this file?",
                                  "Delete Option:", "Move to Recycle Bin", "Delete completely",
                                  "Wipe file space", "&Yes", "&No"}));
    EXPECT_EQ(checked, (std::vector<bool>{false, true, false}));
    EXPECT_EQ(settings::GetSetting("DeleteOption"), c.optionAfter);
    EXPECT_EQ(App().QuickExit, c.quickExit);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(Windows().IsLoaded(WindowId::DeleteVerify));
  }
}

TEST_F(VerifyWindowsTest, MessagesCentreOnTheBrowser) {
  QWidget browser;
  browser.setGeometry(100, 120, 600, 400);
  browser.show();
  Windows().Loaded(WindowId::Thumbnails, &browser);

  ShowCopyMessage();
  ShowCleaningMessage();
  auto* copy = Windows().Get<CopyMessage>();
  auto* cleaning = Windows().Get<CleaningMessage>();
  ASSERT_TRUE(copy && cleaning);
  EXPECT_EQ(copy->Text(), "Updating List");
  EXPECT_EQ(cleaning->Text(), "Clearing Browser History");
  // 3300 x 600 twips: 220 x 40 pixels, in the middle of the browser.
  EXPECT_EQ(copy->geometry(), QRect(290, 300, 220, 40));
  HideCopyMessage();
  HideCleaningMessage();
  EXPECT_FALSE(Windows().IsLoaded(WindowId::CopyMessage));
  EXPECT_FALSE(Windows().IsLoaded(WindowId::CleaningMessage));

  // Background passes its keys on: Esc unloads it.
  Background* background = ShowBackground(9000, 6000);
  EXPECT_EQ(background->size(), QSize(600, 400));
  QTest::keyClick(background, Qt::Key_Escape);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::Background));
  Windows().Closed(&browser);
}
