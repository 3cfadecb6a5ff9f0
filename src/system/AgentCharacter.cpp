#include "system/AgentCharacter.h"

#include <QBitmap>
#include <QContextMenuEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QSvgRenderer>
#include <QVariantAnimation>
#include <cmath>
#include <utility>

#include "core/Trace.h"
#include "platform/SoundPlayer.h"
#include "platform/SpeechSynth.h"
#include "system/AgentBubble.h"

namespace {

constexpr int FrameMs = 150;
constexpr int MouthMs = 110;
// The pause after a line before the next request.
constexpr int AfterSpeechMs = 250;
// Without sound a line stays up for a time worked out from its length.
constexpr int SilentMsPerCharacter = 65;
constexpr int SilentMinimumMs = 1500;
const QString RestFrame = QStringLiteral("RestPose-1");
const QString ClosedMouth = QStringLiteral("Mouth-1");

// The headless platform of the tests knows no window shapes.
bool NoWindowShapes() { return QGuiApplication::platformName() == QLatin1String("offscreen"); }

QString FrameId(const QString& animation, int number) {
  return animation + '-' + QString::number(number);
}

}  // namespace

AgentCharacter::AgentCharacter(const QString& name, const QString& file, QWidget* owner)
    : QWidget(owner, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus |
                         (owner ? Qt::WindowFlags() : Qt::WindowStaysOnTopHint)),
      name_(name),
      art_(QFileInfo(file).isFile() ? std::make_unique<QSvgRenderer>(file)
                                    : std::make_unique<QSvgRenderer>()),
      mouth_(ClosedMouth) {
  setObjectName("AgentCharacter");
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setFixedSize(Size, Size);
  bubble_ = new AgentBubble(this);
  frameTimer_.setInterval(FrameMs);
  connect(&frameTimer_, &QTimer::timeout, this, [this] {
    if (++frameIndex_ < frames_.size()) {
      SetFrame(frames_[frameIndex_]);
      return;
    }
    frameTimer_.stop();
    frames_.clear();
    if (auto then = std::exchange(afterFrames_, nullptr)) then();
  });
  mouthTimer_.setInterval(MouthMs);
  connect(&mouthTimer_, &QTimer::timeout, this, [this] {
    static const QStringList cycle{"Mouth-2", "Mouth-3", "Mouth-2", "Mouth-1", "Mouth-3"};
    mouth_ = cycle[(cycle.indexOf(mouth_) + 1) % cycle.size()];
    update();
  });
  speechTimer_.setSingleShot(true);
  connect(&speechTimer_, &QTimer::timeout, this, [this] {
    mouthTimer_.stop();
    mouth_ = ClosedMouth;
    bubble_->Clear();
    update();
    Done();
  });
  if (IsLoaded()) SetFrame(RestFrame);
}

AgentCharacter::~AgentCharacter() = default;

bool AgentCharacter::IsLoaded() const { return art_->isValid() && art_->elementExists(RestFrame); }

bool AgentCharacter::HasAnimation(const QString& animation) const {
  return art_->isValid() && art_->elementExists(FrameId(animation, 1));
}

int AgentCharacter::FrameCount(const QString& animation) const {
  int count = 0;
  while (art_->isValid() && art_->elementExists(FrameId(animation, count + 1))) ++count;
  return count;
}

QString AgentCharacter::BubbleText() const { return bubble_->isVisible() ? bubble_->PageText() : QString(); }

void AgentCharacter::Play(const QString& animation) { Queue({Kind::Play, animation, {}}); }
void AgentCharacter::Speak(const QString& text) { Queue({Kind::Speak, text, {}}); }
void AgentCharacter::MoveTo(int x, int y) { Queue({Kind::MoveTo, {}, QPoint(x, y)}); }
void AgentCharacter::Show() { Queue({Kind::Show, {}, {}}); }
void AgentCharacter::Hide() { Queue({Kind::Hide, {}, {}}); }

void AgentCharacter::HideNow() {
  queue_.clear();
  Abort();
  Queue({Kind::Hide, {}, {}});
}

void AgentCharacter::Queue(Request request) {
  queue_.push_back(std::move(request));
  // An idle character starts at once, so that a Show makes him visible
  // before the caller goes on.
  if (!busy_ && !starting_) StartNext();
}

void AgentCharacter::StartNext() {
  if (busy_ || queue_.empty()) return;
  const Request request = queue_.front();
  queue_.pop_front();
  busy_ = true;
  switch (request.kind) {
    case Kind::Play: log_ << "Play " + request.text; break;
    case Kind::Speak: log_ << "Speak " + request.text; break;
    case Kind::MoveTo:
      log_ << QString("MoveTo %1,%2").arg(request.to.x()).arg(request.to.y());
      break;
    case Kind::Show: log_ << "Show"; break;
    case Kind::Hide: log_ << "Hide"; break;
  }
  Carry(request);
}

void AgentCharacter::Done() {
  busy_ = false;
  starting_ = true;
  const int generation = generation_;
  // The next request starts from the event loop, never inside the step
  // that has just ended.
  QTimer::singleShot(0, this, [this, generation] {
    if (generation != generation_) return;
    starting_ = false;
    StartNext();
  });
}

void AgentCharacter::Abort() {
  ++generation_;
  frameTimer_.stop();
  frames_.clear();
  afterFrames_ = nullptr;
  mouthTimer_.stop();
  speechTimer_.stop();
  mouth_ = ClosedMouth;
  if (glide_) glide_->stop();
  delete glide_;
  if (sound_) sound_->Stop();
  bubble_->Clear();
  busy_ = false;
  starting_ = false;
}

void AgentCharacter::Carry(const Request& request) {
  switch (request.kind) {
    case Kind::Play: {
      const int frames = FrameCount(request.text);
      if (frames == 0) {
        Done();
      } else if (fast_ || !shown_) {
        SetFrame(FrameId(request.text, frames));
        Done();
      } else {
        RunFrames(request.text, [this] { Done(); });
      }
      break;
    }
    case Kind::Speak:
      if (fast_ || !shown_ || request.text.trimmed().isEmpty())
        Done();
      else
        StartSpeech(request.text);
      break;
    case Kind::MoveTo: {
      const QPoint to = OnScreen(request.to);
      if (fast_ || !isVisible()) {
        move(to);
        Done();
      } else {
        StartGlide(to);
      }
      break;
    }
    case Kind::Show:
      if (shown_ && isVisible()) {
        Done();
        break;
      }
      shown_ = true;
      show();
      raise();
      Trace("character shown");
      if (fast_) {
        SetFrame(RestFrame);
        Done();
      } else {
        RunFrames("Showing", [this] {
          SetFrame(RestFrame);
          Done();
        });
      }
      break;
    case Kind::Hide: {
      auto finish = [this] {
        const bool wasShown = shown_;
        hide();
        if (wasShown) Trace("character hidden");
        bubble_->Clear();
        shown_ = false;
        SetFrame(RestFrame);
        Done();
        if (wasShown) emit Hidden();
      };
      if (fast_ || !isVisible())
        finish();
      else
        RunFrames("Hiding", finish);
      break;
    }
  }
}

void AgentCharacter::RunFrames(const QString& animation, std::function<void()> then) {
  frames_.clear();
  for (int i = 1, count = FrameCount(animation); i <= count; ++i) frames_ << FrameId(animation, i);
  if (frames_.isEmpty()) {
    then();
    return;
  }
  frameIndex_ = 0;
  afterFrames_ = std::move(then);
  SetFrame(frames_.first());
  frameTimer_.start();
}

void AgentCharacter::SetFrame(const QString& frame) {
  frame_ = frame;
  // The window takes the figure's outline, so that it is see-through around
  // him even where the desktop cannot blend windows.
  QImage image(size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  DrawFigure(painter);
  painter.end();
  if (!NoWindowShapes()) {
    const QImage mask = image.createAlphaMask();
    if (!mask.isNull()) setMask(QBitmap::fromImage(mask));
  }
  update();
}

void AgentCharacter::DrawFigure(QPainter& painter) const {
  // Each element is drawn where it stands in the document, scaled to the
  // window.
  const QRectF box = art_->viewBoxF();
  const double scaleX = box.width() > 0 ? width() / box.width() : 1.0;
  const double scaleY = box.height() > 0 ? height() / box.height() : 1.0;
  auto draw = [&](const QString& id) {
    if (!art_->elementExists(id)) return;
    const QRectF bounds = art_->transformForElement(id).mapRect(art_->boundsOnElement(id));
    art_->render(&painter, id,
                 QRectF((bounds.x() - box.x()) * scaleX, (bounds.y() - box.y()) * scaleY,
                        bounds.width() * scaleX, bounds.height() * scaleY));
  };
  draw(frame_);
  if (!frame_.startsWith("Showing") && !frame_.startsWith("Hiding")) draw(mouth_);
}

void AgentCharacter::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.fillRect(rect(), Qt::transparent);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  DrawFigure(painter);
}

void AgentCharacter::StartSpeech(const QString& text) {
  const platform::SpokenLine line = platform::SynthesizeSpeech(text);
  int duration = line.DurationMs;
  if (line.Wave.isEmpty() || duration <= 0)
    duration = std::max(SilentMinimumMs, int(text.size()) * SilentMsPerCharacter);
  else {
    if (!sound_) sound_ = std::make_unique<platform::SoundPlayer>();
    sound_->Play(line.Wave);
  }
  bubble_->ShowLine(text, duration);
  mouthTimer_.start();
  speechTimer_.start(duration + AfterSpeechMs);
}

void AgentCharacter::StartGlide(QPoint to) {
  const QPoint from = pos();
  const double distance = std::hypot(to.x() - from.x(), to.y() - from.y());
  auto* glide = new QVariantAnimation(this);
  glide->setStartValue(from);
  glide->setEndValue(to);
  glide->setDuration(std::clamp(int(distance * 2.5), 150, 1500));
  glide->setEasingCurve(QEasingCurve::InOutQuad);
  connect(glide, &QVariantAnimation::valueChanged, this,
          [this](const QVariant& value) { move(value.toPoint()); });
  connect(glide, &QVariantAnimation::finished, this, [this, glide] {
    glide->deleteLater();
    Done();
  });
  glide_ = glide;
  glide->start();
}

QPoint AgentCharacter::OnScreen(QPoint to) const {
  QScreen* screen = QGuiApplication::screenAt(to + QPoint(Size / 2, Size / 2));
  if (!screen) screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
  if (!screen) return to;
  const QRect area = screen->availableGeometry();
  return QPoint(std::clamp(to.x(), area.left(), std::max(area.left(), area.right() + 1 - Size)),
                std::clamp(to.y(), area.top(), std::max(area.top(), area.bottom() + 1 - Size)));
}

void AgentCharacter::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu(this);
  QAction* hide = menu.addAction(QStringLiteral("Hide"));
  connect(hide, &QAction::triggered, this, &AgentCharacter::HideNow);
  menu.exec(event->globalPos());
}

void AgentCharacter::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  dragging_ = true;
  dragOffset_ = event->globalPosition().toPoint() - pos();
}

void AgentCharacter::mouseMoveEvent(QMouseEvent* event) {
  if (dragging_ && !glide_) move(event->globalPosition().toPoint() - dragOffset_);
}

void AgentCharacter::mouseReleaseEvent(QMouseEvent*) { dragging_ = false; }

void AgentCharacter::moveEvent(QMoveEvent*) {
  if (bubble_->isVisible()) bubble_->FollowCharacter();
}
