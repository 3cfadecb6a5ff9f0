#include "controls/WheelNotchFilter.h"

#include <QCoreApplication>
#include <QWheelEvent>

WheelNotchFilter::WheelNotchFilter(QObject* parent) : QObject(parent) {}

WheelNotchFilter::~WheelNotchFilter() { SetEnabled(false); }

void WheelNotchFilter::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  carry_ = 0;
  if (QCoreApplication* app = QCoreApplication::instance()) {
    if (enabled)
      app->installEventFilter(this);
    else
      app->removeEventFilter(this);
  }
}

int WheelNotchFilter::NotchesOf(int angleDelta, int& carry) {
  // Towards the user is a positive amount.
  const int towardsUser = -angleDelta;
  // A turn the other way drops what was gathered in the first direction.
  if ((carry > 0 && towardsUser < 0) || (carry < 0 && towardsUser > 0)) carry = 0;
  carry += towardsUser;
  const int notches = carry / 120;
  carry -= notches * 120;
  return notches;
}

bool WheelNotchFilter::eventFilter(QObject* watched, QEvent* event) {
  // A turn reaches the top-level window first and is then handed from
  // widget to widget; it is counted once, at the window.
  if (enabled_ && event->type() == QEvent::Wheel && watched->isWindowType()) {
    const auto* wheel = static_cast<const QWheelEvent*>(event);
    const int delta = wheel->angleDelta().y();
    if (delta != 0) {
      const int notches = NotchesOf(delta, carry_);
      if (notches != 0) emit MouseWheel1(static_cast<qint16>(notches));
    }
  }
  return false;
}
