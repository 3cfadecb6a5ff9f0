#include <gtest/gtest.h>

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFrame>
#include <QImage>
#include <QLabel>
#include <QMouseEvent>
#include <QTest>
#include <QtEndian>

#include "controls/BalloonHelp.h"
#include "controls/MessageBox.h"
#include "core/AppState.h"
#include "core/WindowRegistry.h"
#include "platform/SoundPlayer.h"
#include "shell/SharedMessageBox.h"
#include "support/MessageBoxAnswer.h"
#include "support/PulseServer.h"
#include "support/TestEnv.h"
#include "viewers/Target.h"
#include "viewers/TargetRules.h"

namespace {

QByteArray ReadFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The pistol's sound as the build carries it.
QByteArray PistolWave() {
  return ReadFile(testenv::DataFolder() + "/../../resources/target/106.wav");
}

// A silent wave file of 8-bit mono samples at 8000 Hz.
QByteArray SilentWave(int seconds) {
  const quint32 samples = quint32(seconds) * 8000;
  QByteArray wave;
  QDataStream out(&wave, QIODevice::WriteOnly);
  out.setByteOrder(QDataStream::LittleEndian);
  out.writeRawData("RIFF....WAVEfmt ", 16);
  out << quint32(16) << quint16(1) << quint16(1) << quint32(8000) << quint32(8000) << quint16(1)
      << quint16(8);
  out.writeRawData("data", 4);
  out << samples;
  return wave + QByteArray(int(samples), char(0x80));
}

QImage PictureOf(const QLabel* label) { return label->pixmap().toImage(); }

void Shoot(QWidget* control, QPoint at, Qt::MouseButton button = Qt::LeftButton) {
  QTest::mousePress(control, button, {}, at);
  QTest::mouseRelease(control, button, {}, at);
}

// A move of the pointer over a control with the given buttons held.
void Drag(QWidget* control, QPoint at, Qt::MouseButtons held) {
  QMouseEvent move(QEvent::MouseMove, QPointF(at), QPointF(control->mapToGlobal(at)), Qt::NoButton,
                   held, Qt::NoModifier);
  QApplication::sendEvent(control, &move);
}

class TargetTest : public testing::Test {
 protected:
  void SetUp() override { CreateSharedMsgBox()->SetSoundBeep(false); }
  void TearDown() override {
    Windows().Unload(WindowId::Target);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ReleaseSharedMsgBox();
  }

  Target* Open() {
    auto* window = new Target();
    QObject::connect(window, &Target::SoundPlayed, [this](int sound) { sounds_ << sound; });
    window->Display(QPoint(40, 40));
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    return window;
  }

  // A picture file of that size in the test's pictures folder; its path.
  QString MakePicture(const QString& name, int width, int height) {
    const QString folder = testenv::Root() + "/home/Pictures";
    QDir().mkpath(folder);
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    const QString path = folder + "/" + name;
    EXPECT_TRUE(picture.save(path));
    return path;
  }

  QList<int> sounds_;
};

TEST_F(TargetTest, AllWeaponsShareAHundredShotsAndTheNextGivesTheMessageWithoutAMark) {
  Target* window = Open();
  EXPECT_EQ(window->windowTitle(), " Target Practice");
  EXPECT_EQ(window->Label1->text(), "Choose your weapon:");
  EXPECT_EQ(window->Weapon, "Pistol");
  for (int i = 0; i < 60; ++i) Shoot(window->TargetImage, QPoint(20 + i * 5, 40));
  EXPECT_EQ(window->ShotCount, 60);

  QTest::mouseClick(window->WeaponPic[4], Qt::LeftButton);
  EXPECT_EQ(window->Weapon, "Knife");
  EXPECT_EQ(window->ShotCount, 60);
  for (int i = 0; i < 40; ++i) Shoot(window->TargetImage, QPoint(20 + i * 5, 200));
  EXPECT_EQ(window->ShotCount, 100);
  EXPECT_TRUE(window->HitSpot[99]->isVisible());
  EXPECT_EQ(PictureOf(window->HitSpot[59]), PictureOf(window->Shot[1]));
  EXPECT_EQ(PictureOf(window->HitSpot[99]), PictureOf(window->Shot[5]));
  EXPECT_NE(PictureOf(window->Shot[1]), PictureOf(window->Shot[5]));

  QString prompt, title;
  testenv::WhenMessageBoxShown([&](MessageBox& box) {
    prompt = box.MsgText->text();
    title = box.windowTitle();
    QTest::keyClick(&box, Qt::Key_Return);
  });
  const QPoint spot99 = window->HitSpot[99]->pos();
  Shoot(window->TargetImage, QPoint(300, 300));
  EXPECT_EQ(prompt, "You are out of ammunition!");
  EXPECT_EQ(title, "Target Practice");
  EXPECT_EQ(window->ShotCount, 100);
  EXPECT_EQ(window->HitSpot[99]->pos(), spot99);
  // Its own message does not end the game.
  EXPECT_TRUE(Windows().IsLoaded(WindowId::Target));

  // The pistol sounded at each of its shots, the knife at each of its
  // own; the empty magazine is silent.
  EXPECT_EQ(sounds_.size(), 100);
  EXPECT_EQ(sounds_.count(106), 60);
  EXPECT_EQ(sounds_.count(102), 40);
}

TEST_F(TargetTest, TheMachineGunFiresOnThePressAndAtEachMoveWhileTheButtonIsHeld) {
  Target* window = Open();
  QTest::mouseClick(window->WeaponPic[2], Qt::LeftButton);
  EXPECT_EQ(window->Weapon, "MachineGun");

  QTest::mousePress(window->TargetImage, Qt::LeftButton, {}, QPoint(50, 50));
  EXPECT_TRUE(window->Firing);
  EXPECT_EQ(window->ShotCount, 1);
  for (int x : {60, 70, 80}) Drag(window->TargetImage, QPoint(x, 50), Qt::LeftButton);
  EXPECT_EQ(window->ShotCount, 4);
  EXPECT_EQ(window->HitSpot[3]->pos(), QPoint((120 + 80 * 15 - 225) / 15, (120 + 50 * 15 - 215) / 15));
  QTest::mouseRelease(window->TargetImage, Qt::LeftButton, {}, QPoint(80, 50));
  EXPECT_FALSE(window->Firing);
  Drag(window->TargetImage, QPoint(90, 50), Qt::LeftButton);
  EXPECT_EQ(window->ShotCount, 4);
  // The burst sounds once, at the press.
  EXPECT_EQ(sounds_, QList<int>({104}));

  // Other weapons fire once a press, however the pointer moves.
  QTest::mouseClick(window->WeaponPic[3], Qt::LeftButton);
  QTest::mousePress(window->TargetImage, Qt::LeftButton, {}, QPoint(100, 100));
  Drag(window->TargetImage, QPoint(110, 100), Qt::LeftButton);
  QTest::mouseRelease(window->TargetImage, Qt::LeftButton, {}, QPoint(110, 100));
  EXPECT_EQ(window->ShotCount, 5);
  EXPECT_EQ(sounds_, QList<int>({104, 105}));
}

TEST_F(TargetTest, MarksLandByTheShotAndMayReachOverTheWindowsEdge) {
  Target* window = Open();
  // The right button does not fire at the picture.
  Shoot(window->TargetImage, QPoint(2, 100), Qt::RightButton);
  EXPECT_EQ(window->ShotCount, 0);

  // 120 + 30 - 225 = -75 twips, 120 + 1500 - 215 = 1405 twips.
  Shoot(window->TargetImage, QPoint(2, 100));
  EXPECT_EQ(window->HitSpot[0]->pos(), QPoint(-5, 93));
  EXPECT_EQ(window->HitSpot[0]->size(), QSize(25, 25));

  // A shot at a mark, with any button, lands against that mark:
  // -75 + 150 - 225 = -150 twips, 1405 + 150 - 215 = 1340 twips.
  Shoot(window->HitSpot[0], QPoint(10, 10), Qt::RightButton);
  EXPECT_EQ(window->ShotCount, 2);
  EXPECT_EQ(window->HitSpot[1]->pos(), QPoint(-10, 89));

  // Esc ends the game.
  QTest::keyClick(window, Qt::Key_Escape);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::Target));
}

TEST_F(TargetTest, TheTargetKeepsTheShapeOfTallPicturesAndStretchesWideOnes) {
  using target::TargetRect;
  EXPECT_EQ(TargetRect(1000, 599), QRect(120, 120, 8055, 4830));
  EXPECT_EQ(TargetRect(1000, 600), QRect(120, 120, 8050, 4830));
  EXPECT_EQ(TargetRect(600, 900), QRect(120, 120, 3220, 4830));

  // At load the window shoots at the current picture of the folder.
  MakePicture("wide.png", 400, 100);
  MakePicture("tall.png", 200, 300);
  App().CurrentFolder = testenv::Root() + "/home/Pictures";
  App().PictureFiles() = {"wide.png", "tall.png", ""};
  App().CurrentPicture() = 1;
  Target* window = Open();
  EXPECT_EQ(window->TargetImage->geometry(), QRect(8, 8, 214, 322));

  // A picture that cannot be decoded leaves the target as it was.
  const QString broken = testenv::MakeFile(testenv::Root() + "/home/Pictures/broken.png", "no picture");
  EXPECT_FALSE(window->LoadPicture(broken));
  EXPECT_EQ(window->TargetImage->geometry(), QRect(8, 8, 214, 322));
  EXPECT_EQ(window->TargetImage->pixmap().size(), QSize(200, 300));
  EXPECT_EQ(ReadFile(broken), "no picture");
}

TEST_F(TargetTest, WeaponHelpFollowsTheSetting) {
  App().ShowPopupHelp = true;
  Target* window = Open();
  BalloonHelp* help = window->Balloons();
  ASSERT_NE(help, nullptr);
  EXPECT_EQ(help->Count(), 6);
  EXPECT_EQ(help->TextOf(window->WeaponPic[2]), "AK-47 submachine gun");
  EXPECT_EQ(help->TitleOf(window->WeaponPic[5]), "Weapon Selector");

  // Help switched off while the window is away is gone when it comes back.
  App().ShowPopupHelp = false;
  QWidget other;
  other.show();
  other.activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !Windows().IsLoaded(WindowId::Target); }));
  window = Open();
  EXPECT_EQ(window->Balloons()->Count(), 0);
}

TEST(WaveHeaderTest, ReadsTheMadeSoundsAndRefusesCutOrStrangeHeaders) {
  const QByteArray wave = PistolWave();
  ASSERT_EQ(wave.size(), 7100);
  const auto format = platform::ParseWave(wave);
  ASSERT_TRUE(format.has_value());
  EXPECT_EQ(format->Encoding, 1);
  EXPECT_EQ(format->Channels, 1);
  EXPECT_EQ(format->SampleRate, 11025);
  EXPECT_EQ(format->BitsPerSample, 16);
  EXPECT_EQ(format->DataOffset, 44);
  EXPECT_EQ(format->DataLength, 7056);

  // Cut inside the header: nothing. Cut inside the samples: the whole
  // frames that are left.
  for (int size = 0; size < 44; ++size)
    EXPECT_FALSE(platform::ParseWave(wave.left(size)).has_value()) << size;
  EXPECT_EQ(platform::ParseWave(wave.left(45))->DataLength, 0);
  EXPECT_EQ(platform::ParseWave(wave.left(1047))->DataLength, 1002);

  QByteArray wild = wave;
  qToLittleEndian<quint32>(0xFFFFFFF0u, wild.data() + 16);  // the format chunk's size
  EXPECT_FALSE(platform::ParseWave(wild).has_value());
  QByteArray odd = wave;
  qToLittleEndian<quint16>(12, odd.data() + 34);  // 12-bit samples
  EXPECT_FALSE(platform::ParseWave(odd).has_value());
  QByteArray silent = wave;
  qToLittleEndian<quint16>(0, silent.data() + 22);  // no channels
  EXPECT_FALSE(platform::ParseWave(silent).has_value());
  EXPECT_FALSE(platform::ParseWave(QByteArray(7100, 'R')).has_value());
}

// The sounds that the server is playing, by their numbers.
QStringList SoundsOn(const PulseServer& server) {
  QStringList ids;
  for (const QString& line : server.Pactl({"list", "short", "sink-inputs"}).split('\n'))
    if (!line.trimmed().isEmpty()) ids << line.section('\t', 0, 0);
  return ids;
}

TEST(SoundPlayerTest, ANewSoundCutsOffTheLastAndNoServerIsNoFailure) {
  {
    PulseServer server;
    ASSERT_TRUE(server.Running());
    platform::SoundPlayer player;
    EXPECT_FALSE(player.Play("not a sound"));
    // Half a minute of silence: it cannot end by itself during the test.
    const QByteArray longSound = SilentWave(30);
    EXPECT_TRUE(player.Play(longSound));
    EXPECT_TRUE(QTest::qWaitFor([&] { return SoundsOn(server).size() == 1; }));
    const QStringList first = SoundsOn(server);
    EXPECT_TRUE(player.Play(longSound));
    EXPECT_TRUE(QTest::qWaitFor([&] {
      const QStringList now = SoundsOn(server);
      return now.size() == 1 && now != first;
    }));
    player.Stop();
    EXPECT_TRUE(QTest::qWaitFor([&] { return SoundsOn(server).isEmpty(); }));
    EXPECT_TRUE(player.Play(longSound));
    EXPECT_TRUE(QTest::qWaitFor([&] { return SoundsOn(server).size() == 1; }));
  }
  AbsentPulseServer absent;
  platform::SoundPlayer player;
  EXPECT_TRUE(player.Play(PistolWave()));
  EXPECT_TRUE(player.Play(PistolWave()));
}

}  // namespace
