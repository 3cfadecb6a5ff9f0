#pragma once
// The target practice window, " Target Practice": a small game on the
// current picture. The user picks one of six weapons, and each shot at the
// picture leaves a mark where it hit and makes the weapon's noise. A
// hundred shots make the magazine, shared by all weapons. Nothing is saved
// and the picture file is never touched; the window goes when it loses the
// focus, and closing it ends the game.
//
// Callers: construct it (it loads the current picture of the Pictures tab
// and stands at the browser's top left), or LoadPicture another file, then
// Display it at a place of the screen or show it.

#include <QByteArray>
#include <QPixmap>
#include <QPoint>
#include <QString>
#include <QWidget>
#include <array>
#include <map>
#include <memory>

#include "core/WindowRoles.h"

class BalloonHelp;
class QFrame;
class QLabel;

namespace platform {
class SoundPlayer;
}

class Target : public QWidget {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::Target;

  explicit Target(QWidget* parent = nullptr);
  ~Target() override;

  // Decodes the picture at the size of the target and puts it up, the
  // target taking the picture's shape. False when it cannot be decoded: the
  // target then keeps what it had.
  bool LoadPicture(const QString& path);
  // Shows the window with its outer top left at that point of the screen.
  void Display(QPoint topLeftGlobal);

  // A shot at a point of the picture, and a shot at a point of a mark
  // (pixels of that control); both give the empty magazine's message once
  // the hundred shots are gone.
  void FireShot(QPoint at);
  void FireShotAtSpot(int index, QPoint at);

  QString Weapon;
  QString ShotPicture;
  QByteArray PistolSound, ShotgunSound, BladeSound, MissileSound, MachineGunSound;
  bool Firing = false;
  qint16 ShotCount = 0;

  QLabel* TargetImage;
  std::array<QLabel*, 100> HitSpot;
  // The marks by their numbers: 1, 2, 4, 5 and 6.
  std::map<int, QLabel*> Shot;
  std::array<QLabel*, 6> WeaponPic;
  QFrame* WeaponSelect;
  QLabel* Label1;

  BalloonHelp* Balloons() const { return balloons_; }

 signals:
  // A sound was started, by its number.
  void SoundPlayed(int sound);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Form_Load();
  void Form_Activate();
  void BuildControls();
  void LoadArt();
  void LoadSounds();
  void ApplyHelp();
  void WeaponPic_Click(int index);
  void WeaponPic_MouseMove(int index);
  // The mouse on the picture (spot -1) or on a mark.
  void Shooting_MouseDown(int spot, Qt::MouseButton button, QPoint at);
  void Shooting_MouseMove(int spot, Qt::MouseButtons buttons, QPoint at);
  void Shooting_MouseUp();
  // Puts the next mark at a point given in twips of the window.
  void PlaceShot(QPoint originTwips, QPoint at);
  void PlayShotSound();
  void Play(int sound);
  void Unload();

  // Where each mark stands, in twips, so that shots on marks add up without
  // rounding.
  std::array<QPoint, 100> spotTwips_;
  QRect imageTwips_;
  BalloonHelp* balloons_;
  std::unique_ptr<platform::SoundPlayer> player_;
  bool activated_ = false;
  bool helpShown_ = false;
  bool askingUser_ = false;
  bool closed_ = false;
};
