#include "system/AgentBubble.h"

#include <QBitmap>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>

namespace {

constexpr int TextWidth = 220;
constexpr int MaxLines = 8;
constexpr int Padding = 10;
constexpr int TailHeight = 14;
// The balloon's tail ends this far below the character's top (his hat).
constexpr int TailReach = 8;

QRect TextRectFor(const QFontMetrics& metrics, const QString& text) {
  return metrics.boundingRect(QRect(0, 0, TextWidth, 10000), Qt::TextWordWrap | Qt::AlignLeft,
                              text);
}

}  // namespace

AgentBubble::AgentBubble(QWidget* character)
    : QWidget(character, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus),
      character_(character) {
  setObjectName("AgentBubble");
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  QFont font = this->font();
  font.setPointSizeF(std::max(font.pointSizeF(), 9.5));
  setFont(font);
  pageTimer_.setSingleShot(true);
  connect(&pageTimer_, &QTimer::timeout, this, [this] {
    if (page_ + 1 < pages_.size()) ShowPage(page_ + 1);
  });
}

QStringList AgentBubble::SplitPages(const QString& text, int width, int maxLines) const {
  const QFontMetrics metrics(font());
  const int maxHeight = metrics.lineSpacing() * maxLines;
  const QStringList words = text.simplified().split(' ', Qt::SkipEmptyParts);
  QStringList pages;
  QString current;
  for (const QString& word : words) {
    const QString tried = current.isEmpty() ? word : current + ' ' + word;
    const QRect box = metrics.boundingRect(QRect(0, 0, width, 100000),
                                           Qt::TextWordWrap | Qt::AlignLeft, tried);
    if (!current.isEmpty() && box.height() > maxHeight) {
      pages << current;
      current = word;
    } else {
      current = tried;
    }
  }
  if (!current.isEmpty()) pages << current;
  return pages;
}

void AgentBubble::ShowLine(const QString& text, int durationMs) {
  pages_ = SplitPages(text, TextWidth, MaxLines);
  pageMs_.clear();
  qsizetype total = 0;
  for (const QString& page : pages_) total += page.size();
  for (const QString& page : pages_)
    pageMs_ << int(total > 0 ? qint64(durationMs) * page.size() / total : durationMs);
  if (pages_.isEmpty()) {
    Clear();
    return;
  }
  ShowPage(0);
}

void AgentBubble::Clear() {
  pageTimer_.stop();
  pages_.clear();
  page_ = 0;
  hide();
}

void AgentBubble::ShowPage(int index) {
  page_ = index;
  const QFontMetrics metrics(font());
  const QRect text = TextRectFor(metrics, pages_[index]);
  resize(text.width() + 2 * Padding + 2, text.height() + 2 * Padding + TailHeight + 2);
  FollowCharacter();
  if (!isVisible()) show();
  raise();
  update();
  if (index + 1 < pages_.size()) pageTimer_.start(pageMs_[index]);
}

void AgentBubble::FollowCharacter() {
  if (pages_.isEmpty()) return;
  const QRect figure = character_->geometry();
  QScreen* screen = character_->screen() ? character_->screen() : QGuiApplication::primaryScreen();
  const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 100000, 100000);
  // Above his head when there is room, else below his feet.
  int y = figure.top() + TailReach - height();
  tailDown_ = y >= area.top();
  if (!tailDown_) y = figure.bottom() - TailReach;
  int x = figure.center().x() - width() / 2;
  x = std::clamp(x, area.left(), std::max(area.left(), area.right() - width()));
  tailX_ = std::clamp(figure.center().x() - x, 18, std::max(18, width() - 18));
  move(x, y);
  if (QGuiApplication::platformName() == QLatin1String("offscreen")) return;
  QBitmap shape(size());
  shape.fill(Qt::color0);
  QPainter painter(&shape);
  painter.setPen(Qt::color1);
  painter.setBrush(Qt::color1);
  painter.drawPath(Outline());
  painter.end();
  setMask(shape);
}

QPainterPath AgentBubble::Outline() const {
  const int top = tailDown_ ? 0 : TailHeight;
  const QRectF body(0.5, top + 0.5, width() - 1.0, height() - TailHeight - 1.0);
  QPainterPath balloon;
  balloon.addRoundedRect(body, 9, 9);
  QPainterPath tail;
  if (tailDown_) {
    tail.moveTo(tailX_ - 9, body.bottom() - 1);
    tail.lineTo(tailX_, height() - 0.5);
    tail.lineTo(tailX_ + 3, body.bottom() - 1);
  } else {
    tail.moveTo(tailX_ - 3, body.top() + 1);
    tail.lineTo(tailX_, 0.5);
    tail.lineTo(tailX_ + 9, body.top() + 1);
  }
  tail.closeSubpath();
  return balloon.united(tail);
}

void AgentBubble::paintEvent(QPaintEvent*) {
  if (pages_.isEmpty()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(60, 60, 60), 1));
  painter.setBrush(QColor(255, 255, 225));
  painter.drawPath(Outline());
  painter.setPen(Qt::black);
  const int top = (tailDown_ ? 0 : TailHeight) + Padding;
  painter.drawText(QRect(Padding + 1, top, width() - 2 * Padding, height()),
                   Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop, pages_[page_]);
}
