#include "controls/BalloonHelp.h"

#include <QStringList>
#include <QWidget>

#include "controls/HoverTip.h"

namespace {
// Help is read, not glanced at: it stays up longer than a tooltip.
constexpr int BalloonDelay = 600;
constexpr int BalloonShown = 10000;
}  // namespace

BalloonHelp::BalloonHelp(QObject* parent) : QObject(parent) {
  tip_ = std::make_unique<HoverTip>(
      [this](QWidget* control) {
        const auto it = balloons_.constFind(control);
        return it == balloons_.constEnd() ? QString() : PopupText(it->Text, it->Title);
      },
      Qt::RichText);
  tip_->SetInitialDelay(BalloonDelay);
  tip_->SetVisibleTime(BalloonShown);
  tip_->SetMargins(QMargins(4, 2, 4, 2));
}

BalloonHelp::~BalloonHelp() = default;

QString BalloonHelp::PopupText(const QString& text, const QString& title) {
  QString lines = text;
  lines.replace("\r\n", "\n");
  lines.replace('\r', '\n');
  QStringList shown;
  for (const QString& line : lines.split('\n')) shown << line.toHtmlEscaped();
  QString html;
  if (!title.isEmpty()) html += "<b>" + title.toHtmlEscaped() + "</b>";
  if (!text.isEmpty()) {
    if (!html.isEmpty()) html += "<br>";
    html += shown.join("<br>");
  }
  return "<p style=\"white-space:pre\">" + html + "</p>";
}

void BalloonHelp::SetBalloon(QWidget* control, const QString& text, const QString& title) {
  if (!control) return;
  const bool known = balloons_.contains(control);
  balloons_.insert(control, {text, title});
  if (!known) {
    tip_->Watch(control);
    connect(control, &QObject::destroyed, this, [this, control] { balloons_.remove(control); });
  }
  if (tip_->ShownFor() == control) tip_->ShowFor(control);
}

void BalloonHelp::RemoveBalloon(QWidget* control) {
  if (!control || !balloons_.contains(control)) return;
  balloons_.remove(control);
  tip_->Unwatch(control);
  disconnect(control, &QObject::destroyed, this, nullptr);
}

void BalloonHelp::Clear() {
  const QList<const QWidget*> controls = balloons_.keys();
  for (const QWidget* control : controls) RemoveBalloon(const_cast<QWidget*>(control));
  tip_->Hide();
}

int BalloonHelp::Count() const { return int(balloons_.size()); }

bool BalloonHelp::Has(const QWidget* control) const { return balloons_.contains(control); }

QString BalloonHelp::TextOf(const QWidget* control) const {
  return balloons_.value(control).Text;
}

QString BalloonHelp::TitleOf(const QWidget* control) const {
  return balloons_.value(control).Title;
}

void BalloonHelp::Show(QWidget* control) {
  if (!control || !balloons_.contains(control)) return;
  tip_->ShowFor(control);
}

void BalloonHelp::Hide() { tip_->Hide(); }

QWidget* BalloonHelp::Shown() const { return tip_->ShownFor(); }
