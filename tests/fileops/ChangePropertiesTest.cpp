#include <gtest/gtest.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimeEdit>
#include <ctime>

#include "controls/TransCheck.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/WindowRegistry.h"
#include "fileops/ChangeProperties.h"
#include "fileops/FakeBrowser.h"
#include "fileops/PropertyRules.h"
#include "support/TestEnv.h"

namespace {

struct stat StatOf(const QString& path) {
  struct stat info {};
  ::stat(QFile::encodeName(path).constData(), &info);
  return info;
}

class ChangePropertiesTest : public testing::Test {
 protected:
  void SetUp() override {
    // Local time is two hours ahead of UTC here.
    oldZone_ = qgetenv("TZ");
    hadZone_ = qEnvironmentVariableIsSet("TZ");
    qputenv("TZ", "UTC-2");
    tzset();

    folder_ = testenv::Root() + "/home/Pictures";
    path_ = testenv::MakeFile(folder_ + "/a.jpg", "picture");
    // Accessed 2020-01-02 03:04:05 UTC, modified 2019-12-31 22:00:00 UTC.
    const struct timespec times[2] = {{1577934245, 0}, {1577829600, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path_).constData(), times, 0), 0);
    ASSERT_TRUE(QFile::setPermissions(path_, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    App().CurrentFolder = folder_;
    App().PictureFiles() = {"a.jpg", ""};
    App().CurrentPicture() = 0;
  }
  void TearDown() override {
    Windows().Unload(WindowId::ChangeProperties);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
    if (hadZone_)
      qputenv("TZ", oldZone_);
    else
      qunsetenv("TZ");
    tzset();
  }

  ChangeProperties* Open(ChangeProperties::HiddenBox hidden = ChangeProperties::HiddenBox::ShowOnly) {
    ChangeProperties* window = ShowChangeProperties(path_, 300, 600, hidden);
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    return window;
  }
  static bool Gone() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return !Windows().IsLoaded(WindowId::ChangeProperties);
  }

  QByteArray oldZone_;
  bool hadZone_ = false;
  QString folder_, path_;
  FakeBrowser browser_;
};

}  // namespace

TEST(PropertyRules, AccessTextsKeepATrailingBlankAndHiddenNamesGainOrLoseTheirDots) {
  const QDate day(2024, 3, 5);
  EXPECT_EQ(AccessedDateText(QDateTime(day, QTime(0, 5, 9))), "03/05/2024 ");
  EXPECT_EQ(AccessedTimeText(QDateTime(day, QTime(0, 5, 9))), "12:05:09 AM ");
  EXPECT_EQ(AccessedTimeText(QDateTime(day, QTime(13, 5, 9))), "01:05:09 PM ");
  EXPECT_EQ(AccessedDateText(QDateTime()), "");

  EXPECT_EQ(NameForHidden(".a.jpg", true), ".a.jpg");
  EXPECT_EQ(NameForHidden("..a.jpg", false), "a.jpg");
  EXPECT_EQ(NameForHidden("..", false), "..");
}

TEST_F(ChangePropertiesTest, ShowsTheTimesInLocalTimeAndOnlyTheBitsThisSystemKeeps) {
  ChangeProperties* window = Open();
  EXPECT_EQ(window->windowTitle(), " File Properties");
  EXPECT_EQ(window->chkReadOnly->Value(), 1);
  EXPECT_TRUE(window->chkReadOnly->Enabled());
  EXPECT_EQ(window->chkHidden->Value(), 0);
  EXPECT_FALSE(window->chkHidden->Enabled());
  for (TransCheck* box :
       {window->chkArchive, window->chkSystem, window->chkCompressed, window->chkTemporary}) {
    EXPECT_EQ(box->Value(), 0) << box->objectName().toStdString();
    EXPECT_FALSE(box->Enabled()) << box->objectName().toStdString();
  }
  EXPECT_FALSE(window->DateCreated->isEnabled());
  EXPECT_EQ(window->DateModified->text(), "01/01/2020");
  EXPECT_EQ(window->TimeModified->text(), "12:00:00 AM");
  EXPECT_EQ(window->DateAccessed->text(), "01/02/2020 ");
  EXPECT_EQ(window->TimeAccessed->text(), "05:04:05 AM ");
}

TEST_F(ChangePropertiesTest, OkSetsTheModifiedTimeAsUtcAndTheReadOnlyBitButLeavesTheAccessTime) {
  ChangeProperties* window = Open();
  window->DateModified->setDate(QDate(2021, 6, 15));
  window->TimeModified->setTime(QTime(14, 30, 0));
  QCheckBox* readOnly = window->chkReadOnly->Check1();
  QTest::mouseClick(readOnly, Qt::LeftButton, {}, QPoint(8, readOnly->height() / 2));
  EXPECT_EQ(window->chkReadOnly->Value(), 0);
  QTest::mouseClick(window->OKButton, Qt::LeftButton);

  EXPECT_TRUE(Gone());
  struct stat info = StatOf(path_);
  EXPECT_EQ(info.st_mtim.tv_sec, 1623760200);  // 2021-06-15 12:30:00 UTC
  EXPECT_EQ(info.st_atim.tv_sec, 1577934245);
  EXPECT_TRUE(info.st_mode & S_IWUSR);
  EXPECT_EQ(browser_.Calls, QStringList({"RefreshCurrentTooltip"}));

  // Without the data popups the browser's tooltip is left alone.
  App().ShowPopupData = false;
  window = Open();
  window->chkReadOnly->SetValue(1);
  QTest::keyClick(window->DateModified, Qt::Key_Return);
  EXPECT_TRUE(Gone());
  info = StatOf(path_);
  EXPECT_FALSE(info.st_mode & S_IWUSR);
  EXPECT_EQ(info.st_mtim.tv_sec, 1623760200);
  EXPECT_EQ(browser_.Calls, QStringList({"RefreshCurrentTooltip"}));
}

TEST_F(ChangePropertiesTest, HidingTheBrowsersItemRenamesItWithADotAndItsEntriesFollow) {
  testenv::InstallDataFile();
  ASSERT_TRUE(OpenDataFile());
  ASSERT_TRUE(App().DatabaseConnection->Execute(
      QString("INSERT INTO PlaylistFiles VALUES (1, 0, 0, '%1')").arg(path_)));

  App().AlbumMode = true;  // an album's entries never change their names here
  ChangeProperties* window = Open(ChangeProperties::HiddenBox::Renames);
  EXPECT_FALSE(window->chkHidden->Enabled());
  App().AlbumMode = false;
  window = Open(ChangeProperties::HiddenBox::Renames);
  ASSERT_TRUE(window->chkHidden->Enabled());
  QCheckBox* hidden = window->chkHidden->Check1();
  QTest::mouseClick(hidden, Qt::LeftButton, {}, QPoint(8, hidden->height() / 2));
  EXPECT_EQ(window->chkHidden->Value(), 1);
  QTest::mouseClick(window->OKButton, Qt::LeftButton);

  EXPECT_TRUE(Gone());
  EXPECT_FALSE(QFile::exists(path_));
  EXPECT_TRUE(QFile::exists(folder_ + "/.a.jpg"));
  EXPECT_EQ(browser_.Calls, QStringList({"CurrentEntryRenamed .a.jpg", "RefreshCurrentTooltip"}));
  platform::SqlStatement rows =
      App().DatabaseConnection->Prepare("SELECT PlaylistFile FROM PlaylistFiles");
  ASSERT_TRUE(rows.Next());
  EXPECT_EQ(rows.Text(0), folder_ + "/.a.jpg");
}

TEST_F(ChangePropertiesTest, EscCancelAndClickingElsewhereChangeNothing) {
  const QList<std::function<void(ChangeProperties*)>> ways = {
      [](ChangeProperties* w) { QTest::keyClick(w->TimeModified, Qt::Key_Escape); },
      [](ChangeProperties* w) { QTest::mouseClick(w->cancelButton, Qt::LeftButton); },
      [](ChangeProperties*) {
        auto* elsewhere = new QWidget;
        elsewhere->setAttribute(Qt::WA_DeleteOnClose);
        elsewhere->show();
        elsewhere->activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([] { return Gone(); }));
        elsewhere->close();
      },
  };
  for (const auto& leave : ways) {
    ChangeProperties* window = Open();
    window->DateModified->setDate(QDate(2021, 6, 15));
    window->chkReadOnly->SetValue(0);
    leave(window);
    EXPECT_TRUE(Gone());
    const struct stat info = StatOf(path_);
    EXPECT_EQ(info.st_mtim.tv_sec, 1577829600);
    EXPECT_FALSE(info.st_mode & S_IWUSR);
  }
  EXPECT_EQ(browser_.Calls, QStringList());
}
