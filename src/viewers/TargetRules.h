#pragma once
// The rules of the target practice game without its widgets: the weapons
// and what each one leaves and sounds like, the measures of the target, the
// target's shape for a picture, and where a mark lands for a shot. All
// measures are twips.

#include <QPoint>
#include <QRect>
#include <QString>
#include <span>

namespace target {

// The picture holder at its largest; a tall picture narrows it.
inline constexpr int ImageLeft = 120;
inline constexpr int ImageTop = 120;
inline constexpr int ImageWidth = 8055;
inline constexpr int ImageHeight = 4830;

// A mark's holder, and where its mark stands against the point shot at.
inline constexpr int SpotSize = 375;
inline constexpr int SpotOffsetX = 225;
inline constexpr int SpotOffsetY = 215;

// The magazine, shared by all weapons: one mark holder per shot.
inline constexpr int MaxShots = 100;

// The numbers of the sounds.
inline constexpr int BladeSound = 102;
inline constexpr int MachineGunSound = 104;
inline constexpr int MissileSound = 105;
inline constexpr int PistolSound = 106;
inline constexpr int ShotgunSound = 107;

// The numbers of the marks (there is no mark 3).
inline constexpr int MarkNumbers[] = {1, 2, 4, 5, 6};

struct WeaponRow {
  const char* Weapon;    // the weapon's name, as the game keeps it
  const char* HelpText;  // its help popup
  const char* Picture;   // its picture among the resources
  int Mark;              // the number of the mark it leaves
  int Sound;             // the number of its sound
  bool SoundEachShot;    // false: the sound plays once as the trigger is pressed
};

// The six weapons, in the order they stand in the window.
std::span<const WeaponRow> Weapons();
// The weapon of that name; the pistol for an unknown name.
const WeaponRow& WeaponNamed(const QString& weapon);

// The heading of the weapons' help popups.
QString HelpHeading();

// The resource paths of the art and the sounds.
QString WeaponPicturePath(const WeaponRow& weapon);
QString MarkPicturePath(int mark);
QString AimCursorPath();
QString SoundPath(int sound);

// The picture holder for a picture of that size: a picture at least 0.6 as
// high as it is wide keeps its shape (the holder narrows, at the same
// height); a wider one is stretched over the whole holder. An empty size
// gives the whole holder.
QRect TargetRect(int pictureWidth, int pictureHeight);

// The top left of the mark for a shot at `shot`, given against a holder
// (the picture or an earlier mark) whose top left is `holder`. Marks are not
// kept inside the picture: near its edges they reach over the window.
QPoint SpotPlace(QPoint holder, QPoint shot);

}  // namespace target
