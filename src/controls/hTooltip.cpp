#include "controls/hTooltip.h"

#include <QLabel>
#include <QWidget>

#include "controls/HoverTip.h"
#include "controls/SystemColours.h"

namespace {

constexpr int DefaultInitial = 500;
constexpr int DefaultAutoPop = 5000;
constexpr int DefaultReshow = 100;

// A colour given as a number, where a negative number or -1 as an unsigned
// 32-bit value stands for the default.
OleColor ColourOrDefault(qint64 color, OleColor defaultColor) {
  if (color < 0 || color > 0xFFFFFFFFLL) return defaultColor;
  return SysColor::OrDefault(static_cast<OleColor>(color), defaultColor);
}

QString PlainLines(const QString& text) {
  QString lines = text;
  lines.replace("\r\n", "\n");
  lines.replace('\r', '\n');
  return lines;
}

}  // namespace

hTooltip::hTooltip(QObject* parent) : QObject(parent) {}

hTooltip::~hTooltip() = default;

bool hTooltip::Create(QWidget* parentForm) {
  if (!parentForm) return false;
  parent_ = parentForm;
  created_ = true;
  texts_.clear();
  tip_ = std::make_unique<HoverTip>(
      [this](QWidget* control) { return PlainLines(texts_.value(control)); }, Qt::PlainText);
  tip_->SetInitialDelay(DefaultInitial);
  tip_->SetVisibleTime(DefaultAutoPop);
  tip_->SetReshowDelay(DefaultReshow);
  return true;
}

bool hTooltip::AddTool(QWidget* control, const QString& text) {
  if (!Created() || !control) return false;
  if (!texts_.contains(control)) {
    // A control that goes takes its tool with it.
    connect(control, &QObject::destroyed, this, [this, control] { texts_.remove(control); });
  }
  texts_.insert(control, text);
  tip_->Watch(control);
  return true;
}

void hTooltip::RemoveTool(QWidget* control) {
  if (!Created() || !control) return;
  if (!texts_.remove(control)) return;
  tip_->Unwatch(control);
  disconnect(control, &QObject::destroyed, this, nullptr);
}

quint32 hTooltip::BackColor() const {
  if (!Created()) return 0;
  return ToOleColor(tip_->BackColor());
}

void hTooltip::SetBackColor(qint64 color) {
  if (!Created()) return;
  tip_->SetBackColor(ColorFromOle(ColourOrDefault(color, SysColor::InfoBack)));
}

quint32 hTooltip::TxtColor() const { return 0; }

void hTooltip::SetTxtColor(qint64 color) {
  if (!Created()) return;
  tip_->SetTextColor(ColorFromOle(ColourOrDefault(color, SysColor::InfoText)));
}

void hTooltip::SetDelayTime(int which, int milliseconds) {
  if (!Created()) return;
  switch (which & 3) {
    case DelayAutomatic:
      if (milliseconds < 0) {
        tip_->SetInitialDelay(DefaultInitial);
        tip_->SetVisibleTime(DefaultAutoPop);
        tip_->SetReshowDelay(DefaultReshow);
      } else {
        tip_->SetInitialDelay(milliseconds);
        tip_->SetVisibleTime(milliseconds * 10);
        tip_->SetReshowDelay(milliseconds / 5);
      }
      break;
    case DelayReshow:
      tip_->SetReshowDelay(milliseconds < 0 ? DefaultReshow : milliseconds);
      break;
    case DelayAutoPop:
      tip_->SetVisibleTime(milliseconds < 0 ? DefaultAutoPop : milliseconds);
      break;
    case DelayInitial:
      tip_->SetInitialDelay(milliseconds < 0 ? DefaultInitial : milliseconds);
      break;
  }
}

int hTooltip::GetDelayTime(int which) const {
  if (!Created()) return 0;
  switch (which & 3) {
    case DelayReshow: return tip_->ReshowDelay();
    case DelayAutoPop: return tip_->VisibleTime();
    case DelayInitial:
    case DelayAutomatic:
    default: return tip_->InitialDelay();
  }
}

QWidget* hTooltip::hWnd() const { return Created() ? tip_->Window() : nullptr; }

QMargins hTooltip::Margin() const { return Created() ? tip_->Margins() : QMargins(); }

void hTooltip::SetMargin(const QMargins& margin) {
  if (Created()) tip_->SetMargins(margin);
}

int hTooltip::MaxTipWidth() const { return Created() ? tip_->MaxWidth() : 0; }

void hTooltip::SetMaxTipWidth(int pixels) {
  if (Created()) tip_->SetMaxWidth(pixels);
}

int hTooltip::ToolCount() const { return Created() ? int(texts_.size()) : 0; }

QString hTooltip::ToolText(QWidget* control) const {
  return Created() ? texts_.value(control) : QString();
}

void hTooltip::SetToolText(QWidget* control, const QString& text) {
  if (!Created() || !texts_.contains(control)) return;
  texts_.insert(control, text);
  if (tip_->ShownFor() == control) tip_->ShowFor(control);
}

void hTooltip::ShowTool(QWidget* control) {
  if (Created() && texts_.contains(control)) tip_->ShowFor(control);
}

QString hTooltip::ShownText() const {
  if (!Created() || !tip_->ShownFor() || !tip_->Window()) return QString();
  return tip_->Window()->text();
}
