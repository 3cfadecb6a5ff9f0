#include "viewers/Target.h"

#include <QCloseEvent>
#include <QCursor>
#include <QFile>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QSvgRenderer>
#include <algorithm>

#include "catalogue/MediaPicture.h"
#include "catalogue/PathParts.h"
#include "controls/BalloonHelp.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/PaintRoutines.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/CommonKeys.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"
#include "platform/SoundPlayer.h"
#include "platform/Twips.h"
#include "viewers/TargetRules.h"

// The art and the sounds live in a static library: they are registered
// before the window reads them. (At file scope, outside any namespace.)
static void RegisterTargetResources() { Q_INIT_RESOURCE(resources); }

namespace {

// Measures of the window's inside, in twips; the picture's are the rules'.
constexpr int Margin = 120;
constexpr int RowTop = target::ImageTop + target::ImageHeight + Margin;
constexpr int WeaponTop = RowTop + Margin;
constexpr int WeaponWidth = 900;
constexpr int WeaponHeight = 600;
constexpr int FirstWeaponLeft = 2280;
constexpr int WeaponStep = 990;
constexpr int SelectMargin = 120;
constexpr int LabelHeight = 285;
constexpr int InsideWidth = target::ImageLeft + target::ImageWidth + Margin;
constexpr int InsideHeight = WeaponTop + WeaponHeight + 2 * Margin;

// The message box style of an exclamation with an OK button.
constexpr qint16 ExclamationStyle = 48;

// The marks are icons of this many pixels, shown from their top left in
// the smaller holders.
constexpr int MarkPixels = 32;

QRect PixelsOf(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(width),
               twips::ToPixels(height));
}

QPoint TwipsOf(const QPointF& pixels) {
  return QPoint(qRound(pixels.x() * twips::PerPixel), qRound(pixels.y() * twips::PerPixel));
}

QPixmap RenderArt(const QString& path, QSize size, qreal ratio) {
  QPixmap picture(size * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QSvgRenderer art(path);
  QPainter painter(&picture);
  art.render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
  return picture;
}

}  // namespace

Target::Target(QWidget* parent)
    : QWidget(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      TargetImage(new QLabel(this)),
      WeaponSelect(nullptr),
      Label1(nullptr),
      balloons_(new BalloonHelp(this)),
      player_(std::make_unique<platform::SoundPlayer>()) {
  setObjectName(WindowName(Id));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(" Target Practice");
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  RegisterTargetResources();
  BuildControls();
  Form_Load();
  Windows().Loaded(this);
}

Target::~Target() = default;

void Target::BuildControls() {
  // The selection frame stands under the weapons, so that they stay
  // clickable; the pointer passes through it to the window.
  WeaponSelect = new QFrame(this);
  WeaponSelect->setObjectName("WeaponSelect");
  WeaponSelect->setFrameShape(QFrame::Panel);
  WeaponSelect->setFrameShadow(QFrame::Raised);
  WeaponSelect->setLineWidth(2);
  WeaponSelect->setAttribute(Qt::WA_TransparentForMouseEvents);
  WeaponSelect->hide();

  TargetImage->setObjectName("TargetImage");
  TargetImage->setScaledContents(true);
  TargetImage->setMouseTracking(true);
  imageTwips_ = target::TargetRect(0, 0);
  TargetImage->setGeometry(twips::ToPixels(QRectF(imageTwips_)));

  for (int mark : target::MarkNumbers) {
    auto* shot = new QLabel(this);
    shot->setObjectName(QString("Shot(%1)").arg(mark));
    shot->hide();
    Shot[mark] = shot;
  }
  for (size_t i = 0; i < HitSpot.size(); ++i) {
    auto* spot = new QLabel(this);
    spot->setObjectName(QString("HitSpot(%1)").arg(i));
    spot->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    spot->resize(twips::ToPixels(target::SpotSize), twips::ToPixels(target::SpotSize));
    spot->hide();
    HitSpot[i] = spot;
  }

  Label1 = new QLabel("Choose your weapon:", this);
  Label1->setObjectName("Label1");
  Label1->setMouseTracking(true);
  Label1->setGeometry(PixelsOf(Margin, WeaponTop + (WeaponHeight - LabelHeight) / 2,
                               FirstWeaponLeft - 2 * Margin, LabelHeight));
  for (size_t i = 0; i < WeaponPic.size(); ++i) {
    auto* weapon = new QLabel(this);
    weapon->setObjectName(QString("WeaponPic(%1)").arg(i));
    weapon->setMouseTracking(true);
    weapon->setGeometry(
        PixelsOf(FirstWeaponLeft + int(i) * WeaponStep, WeaponTop, WeaponWidth, WeaponHeight));
    WeaponPic[i] = weapon;
  }
  WeaponSelect->resize(twips::ToPixels(WeaponWidth + 2 * SelectMargin),
                       twips::ToPixels(WeaponHeight + 2 * SelectMargin));

  for (QWidget* control : findChildren<QWidget*>()) control->installEventFilter(this);
  setFixedSize(twips::ToPixels(InsideWidth), twips::ToPixels(InsideHeight));
}

void Target::LoadArt() {
  const qreal ratio = devicePixelRatioF();
  for (const auto& [mark, shot] : Shot)
    shot->setPixmap(RenderArt(target::MarkPicturePath(mark), QSize(MarkPixels, MarkPixels), ratio));
  const auto weapons = target::Weapons();
  for (size_t i = 0; i < WeaponPic.size() && i < weapons.size(); ++i)
    WeaponPic[i]->setPixmap(RenderArt(target::WeaponPicturePath(weapons[i]),
                                      WeaponPic[i]->size(), ratio));
  // The aiming cross, its hot spot in its middle.
  const QCursor aim(RenderArt(target::AimCursorPath(), QSize(MarkPixels, MarkPixels), ratio),
                    MarkPixels / 2, MarkPixels / 2);
  TargetImage->setCursor(aim);
  for (QLabel* spot : HitSpot) spot->setCursor(aim);
}

void Target::LoadSounds() {
  const auto read = [](int sound) {
    QFile file(target::SoundPath(sound));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  };
  PistolSound = read(target::PistolSound);
  ShotgunSound = read(target::ShotgunSound);
  BladeSound = read(target::BladeSound);
  MissileSound = read(target::MissileSound);
  MachineGunSound = read(target::MachineGunSound);
}

void Target::Form_Load() {
  LoadArt();
  // The window stands at the browser's top left.
  if (QWidget* browser = Windows().Find(WindowId::Thumbnails))
    if (browser->isVisible()) move(browser->mapToGlobal(QPoint(0, 0)));

  const AppState& app = App();
  const QString entry = app.Entry(PicturesTab, app.CurrentPicture());
  if (!entry.isEmpty())
    LoadPicture(app.AlbumMode ? entry : JoinPath(app.CurrentFolder.trimmed(), entry));

  LoadSounds();
  Weapon = "Pistol";
  ShotPicture = "1";
  Firing = false;
  ShotCount = 0;
  ApplyHelp();
}

bool Target::LoadPicture(const QString& path) {
  // Decoded no larger than the target can show; the file is only read.
  const QSize room = QSize(twips::ToPixels(target::ImageWidth), twips::ToPixels(target::ImageHeight)) *
                     devicePixelRatioF();
  QImage picture;
  if (!LoadMediaPicture(path, picture, room)) return false;
  imageTwips_ = target::TargetRect(picture.width(), picture.height());
  TargetImage->setGeometry(twips::ToPixels(QRectF(imageTwips_)));
  TargetImage->setPixmap(QPixmap::fromImage(picture));
  return true;
}

void Target::Display(QPoint topLeftGlobal) {
  move(topLeftGlobal);
  show();
  raise();
  activateWindow();
}

void Target::ApplyHelp() {
  helpShown_ = App().ShowPopupHelp;
  if (!helpShown_) {
    balloons_->Clear();
    return;
  }
  const auto weapons = target::Weapons();
  for (size_t i = 0; i < WeaponPic.size() && i < weapons.size(); ++i)
    balloons_->SetBalloon(WeaponPic[i], weapons[i].HelpText, target::HelpHeading());
}

void Target::Form_Activate() {
  App().CurrentForm = this;
  if (App().ShowPopupHelp != helpShown_) ApplyHelp();
}

// ---- Weapons -------------------------------------------------------------------

void Target::WeaponPic_Click(int index) {
  const auto weapons = target::Weapons();
  if (index < 0 || size_t(index) >= weapons.size()) return;
  // The magazine is shared: changing the weapon leaves the count.
  Weapon = weapons[size_t(index)].Weapon;
  ShotPicture = QString::number(weapons[size_t(index)].Mark);
}

void Target::WeaponPic_MouseMove(int index) {
  const QPoint place(
      twips::ToPixels(FirstWeaponLeft + index * WeaponStep - SelectMargin),
      twips::ToPixels(WeaponTop - SelectMargin));
  if (WeaponSelect->pos() != place) WeaponSelect->move(place);
  WeaponSelect->show();
}

// ---- Shooting ------------------------------------------------------------------

void Target::Shooting_MouseDown(int spot, Qt::MouseButton button, QPoint at) {
  // The picture answers to the left button alone, a mark to any.
  if (spot < 0 && button != Qt::LeftButton) return;
  if (Weapon == "MachineGun") {
    Firing = true;
    if (ShotCount < target::MaxShots) Play(target::MachineGunSound);
  }
  if (spot < 0)
    FireShot(at);
  else
    FireShotAtSpot(spot, at);
}

void Target::Shooting_MouseMove(int spot, Qt::MouseButtons buttons, QPoint at) {
  // The machine gun sprays as the pointer moves with the trigger held.
  if (!(buttons & Qt::LeftButton) || !Firing) return;
  if (spot < 0)
    FireShot(at);
  else
    FireShotAtSpot(spot, at);
}

void Target::Shooting_MouseUp() {
  if (Weapon == "MachineGun") Firing = false;
}

void Target::FireShot(QPoint at) {
  PlaceShot(imageTwips_.topLeft(), TwipsOf(at));
}

void Target::FireShotAtSpot(int index, QPoint at) {
  if (index < 0 || size_t(index) >= HitSpot.size()) return;
  PlaceShot(spotTwips_[size_t(index)], TwipsOf(at));
}

void Target::PlaceShot(QPoint originTwips, QPoint at) {
  if (ShotCount >= target::MaxShots) {
    // The window stays while it asks, and may have gone once answered.
    QPointer<Target> self(this);
    askingUser_ = true;
    if (MsgBoxEnhanced* box = App().MsgBox)
      box->MsgBox("You are out of ammunition!", ExclamationStyle, "Target Practice");
    if (self) askingUser_ = false;
    return;
  }
  const size_t next = size_t(ShotCount);
  const QPoint place = target::SpotPlace(originTwips, at);
  spotTwips_[next] = place;
  QLabel* spot = HitSpot[next];
  spot->move(twips::ToPixels(place.x()), twips::ToPixels(place.y()));
  if (const auto mark = Shot.find(ShotPicture.toInt()); mark != Shot.end())
    spot->setPixmap(mark->second->pixmap());
  spot->show();
  // A new mark lies over the older ones.
  spot->raise();
  ++ShotCount;
  PlayShotSound();
}

void Target::PlayShotSound() {
  const target::WeaponRow& weapon = target::WeaponNamed(Weapon);
  if (weapon.SoundEachShot) Play(weapon.Sound);
}

void Target::Play(int sound) {
  const QByteArray* bytes = sound == target::PistolSound       ? &PistolSound
                            : sound == target::ShotgunSound    ? &ShotgunSound
                            : sound == target::BladeSound      ? &BladeSound
                            : sound == target::MissileSound    ? &MissileSound
                            : sound == target::MachineGunSound ? &MachineGunSound
                                                               : nullptr;
  if (!bytes) return;
  player_->Play(*bytes);
  emit SoundPlayed(sound);
}

// ---- Events --------------------------------------------------------------------

bool Target::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove &&
      type != QEvent::MouseButtonRelease)
    return QWidget::eventFilter(watched, event);
  auto* mouse = static_cast<QMouseEvent*>(event);
  const QPoint at = mouse->position().toPoint();

  int spot = -1;
  if (watched != TargetImage) {
    const auto it = std::find(HitSpot.begin(), HitSpot.end(), watched);
    if (it == HitSpot.end()) {
      const auto weapon = std::find(WeaponPic.begin(), WeaponPic.end(), watched);
      if (weapon != WeaponPic.end()) {
        const int index = int(weapon - WeaponPic.begin());
        if (type == QEvent::MouseMove) WeaponPic_MouseMove(index);
        if (type == QEvent::MouseButtonRelease && mouse->button() == Qt::LeftButton &&
            WeaponPic[size_t(index)]->rect().contains(at))
          WeaponPic_Click(index);
        // Kept from the window, whose own moves hide the frame.
        return true;
      }
      if (watched == Label1) {
        if (type == QEvent::MouseMove) WeaponSelect->hide();
        return true;
      }
      return QWidget::eventFilter(watched, event);
    }
    spot = int(it - HitSpot.begin());
  }

  if (type == QEvent::MouseButtonPress) {
    Shooting_MouseDown(spot, mouse->button(), at);
  } else if (type == QEvent::MouseMove) {
    if (spot < 0) WeaponSelect->hide();
    Shooting_MouseMove(spot, mouse->buttons(), at);
  } else {
    Shooting_MouseUp();
  }
  return true;
}

void Target::mouseMoveEvent(QMouseEvent* event) {
  WeaponSelect->hide();
  QWidget::mouseMoveEvent(event);
}

bool Target::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) {
    activated_ = true;
    Form_Activate();
  }
  // The game ends when the window loses the focus, unless to its own
  // message.
  if (event->type() == QEvent::WindowDeactivate && activated_ && !askingUser_ && !closed_)
    Unload();
  return QWidget::event(event);
}

void Target::keyPressEvent(QKeyEvent* event) {
  const int keyCode = keys::KeyCode(event);
  const int shift = keys::ShiftOf(event);
  if (keyCode == keys::F1 && shift == keys::NoShift) {
    Unload();
    if (BarCommands* bar = CommandBarCommands()) bar->ClickIfEnabled(BarButton::HelpButton);
    return;
  }
  HandleCommonKey(this, keyCode, shift, true, false);
}

void Target::closeEvent(QCloseEvent* event) {
  event->accept();
  if (closed_) return;
  closed_ = true;
  Firing = false;
  balloons_->Clear();
  player_->Stop();
  Windows().Closed(this);
}

void Target::Unload() {
  if (Windows().Find(Id) == this)
    Windows().Unload(Id);
  else
    close();
}

void Target::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  // The light part of the program's gradient.
  PaintFormGradient(painter, QSize(width(), height() * 3), 255, 255, 255, 1);
}
