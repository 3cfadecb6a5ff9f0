#include "viewers/TargetRules.h"

#include <QtMath>

namespace target {

namespace {

constexpr WeaponRow WeaponTable[] = {
    {"Pistol", "45-caliber revolver", "pistol", 1, PistolSound, true},
    {"Shotgun", "Pump-action shotgun", "shotgun", 2, ShotgunSound, true},
    {"MachineGun", "AK-47 submachine gun", "machinegun", 1, MachineGunSound, false},
    {"Missile", "Missile launcher", "missile", 4, MissileSound, true},
    {"Knife", "Knife", "knife", 5, BladeSound, true},
    {"Dart", "Dart", "dart", 6, BladeSound, true},
};

// A picture this high against its width, or higher, keeps its shape.
constexpr double TallRatio = 0.6;

}  // namespace

std::span<const WeaponRow> Weapons() { return WeaponTable; }

const WeaponRow& WeaponNamed(const QString& weapon) {
  for (const WeaponRow& row : WeaponTable)
    if (weapon == QLatin1String(row.Weapon)) return row;
  return WeaponTable[0];
}

QString HelpHeading() { return QStringLiteral("Weapon Selector"); }

QString WeaponPicturePath(const WeaponRow& weapon) {
  return QStringLiteral(":/target/%1.svg").arg(QLatin1String(weapon.Picture));
}

QString MarkPicturePath(int mark) { return QStringLiteral(":/target/mark%1.svg").arg(mark); }

QString AimCursorPath() { return QStringLiteral(":/target/aim.svg"); }

QString SoundPath(int sound) { return QStringLiteral(":/target/%1.wav").arg(sound); }

QRect TargetRect(int pictureWidth, int pictureHeight) {
  QRect rect(ImageLeft, ImageTop, ImageWidth, ImageHeight);
  if (pictureWidth <= 0 || pictureHeight <= 0) return rect;
  const double ratio = double(pictureHeight) / pictureWidth;
  if (ratio >= TallRatio) {
    // The width follows the height, and the height the new width, so the
    // holder keeps the picture's shape at the full height.
    const int width = qRound(ImageHeight / ratio);
    rect.setWidth(width);
    rect.setHeight(qRound(width * ratio));
  }
  return rect;
}

QPoint SpotPlace(QPoint holder, QPoint shot) {
  return QPoint(holder.x() + shot.x() - SpotOffsetX, holder.y() + shot.y() - SpotOffsetY);
}

}  // namespace target
