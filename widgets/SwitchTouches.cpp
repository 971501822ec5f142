#include "widgets/SwitchTouches.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <cmath>

#include "platform/core/Services.h"
#include "platform/ui/LayoutEntry.h"

namespace seedmote {

using platform::services;

SwitchTouches::SwitchTouches(QQuickItem* parent) : QQuickItem(parent) {
  setAcceptedMouseButtons(Qt::LeftButton);
}

void SwitchTouches::setControl(JtSwitch* control) {
  if (control_ != control) {
    control_ = control;
    Q_EMIT controlChanged();
  }
}

void SwitchTouches::report(void (JtSwitch::*touch)()) {
  platform::enterFromLayout(control_.data(), "touch on a switch",
                            [touch](JtSwitch& control) { (control.*touch)(); });
}

// In whole points, the rest with the next report: the thumb stands on such, and must not lose or gain by the
// number of reports.
void SwitchTouches::reportPan(SwitchPan::State state, double x) {
  const double moved = std::trunc(x - reportedX_);
  reportedX_ += moved;
  platform::enterFromLayout(control_.data(), "drag of a switch",
                            [pan = SwitchPan{.state = state, .translation = moved}](
                                JtSwitch& control) mutable { control.handleThumbPanGesture(pan); });
}

// Assistive technologies come past what lies in front.
void SwitchTouches::toggle() {
  if (isEnabled() && !services().main.swallowsInput()) {
    report(&JtSwitch::handleTapGesture);
  }
}

void SwitchTouches::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space || event->modifiers() != Qt::NoModifier) {
    event->ignore();
  } else if (!event->isAutoRepeat()) {
    toggle();
  }
}

void SwitchTouches::mousePressEvent(QMouseEvent* event) {
  touch_ = Touch::undecided;
  pressedAt_ = event->position();
  report(&JtSwitch::touchesBegan);
}

// A second touch soon after the first begins twice for Qt: who leaves the second beginning loses the touch.
void SwitchTouches::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
}

void SwitchTouches::mouseMoveEvent(QMouseEvent* event) {
  const QPointF way = event->position() - pressedAt_;
  const double sideways = std::abs(way.x());
  const double upright = std::abs(way.y());
  if (touch_ == Touch::drag) {
    reportPan(SwitchPan::State::changed, event->position().x());
  } else if (touch_ == Touch::undecided &&
             std::max(sideways, upright) >= QGuiApplication::styleHints()->startDragDistance()) {
    sideways > upright ? startDrag(event->position().x()) : void(touch_ = Touch::other);
  }
}

void SwitchTouches::startDrag(double x) {
  touch_ = Touch::drag;
  setKeepMouseGrab(true);
  setKeepTouchGrab(true);
  reportedX_ = pressedAt_.x();
  reportPan(SwitchPan::State::began, x);
}

void SwitchTouches::mouseReleaseEvent(QMouseEvent* event) {
  switch (touch_) {
    case Touch::drag:
      reportPan(SwitchPan::State::changed, event->position().x());
      reportPan(SwitchPan::State::ended, event->position().x());
      break;
    case Touch::undecided:
      report(&JtSwitch::handleTapGesture);
      break;
    case Touch::other:
      report(&JtSwitch::touchesCancelled);
      break;
    case Touch::none:
      break;
  }
  endTouch();
}

// The surroundings took the touch over, or the switch has gone.
void SwitchTouches::mouseUngrabEvent() {
  if (touch_ != Touch::none) {
    report(&JtSwitch::touchesCancelled);
    endTouch();
  }
}

void SwitchTouches::endTouch() {
  touch_ = Touch::none;
  setKeepMouseGrab(false);
  setKeepTouchGrab(false);
}

}  // namespace seedmote
