#include "platform/ui/GestureArea.h"

#include <QMouseEvent>
#include <QTouchEvent>
#include <cmath>
#include <utility>

namespace seedmote::platform {

GestureArea::GestureArea(QQuickItem* parent) : QQuickItem(parent) {
  setFiltersChildMouseEvents(true);
  setAcceptedMouseButtons(Qt::LeftButton);
  setAcceptTouchEvents(true);
}

void GestureArea::setRecognizers(GestureRecognizers* recognizers) {
  if (recognizers_ != recognizers) {
    recognizers_ = recognizers;
    Q_EMIT recognizersChanged();
  }
}

bool GestureArea::childMouseEventFilter(QQuickItem* /*item*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
      return follow(static_cast<QPointerEvent*>(event));
    case QEvent::TouchCancel:
      touch_ = Touch::none;
      return false;
    default:
      return false;
  }
}

bool GestureArea::follow(QPointerEvent* event) {
  if (!recognizers_ || event->pointCount() != 1) {
    touch_ = Touch::none;
    return false;
  }
  const QEventPoint& point = event->point(0);
  // The way of the finger in points: the view may slide away below it.
  const QPointF way = mapFromScene(point.scenePosition()) - mapFromScene(start_);
  switch (point.state()) {
    case QEventPoint::Pressed:
      touch_ = Touch::atItsPlace;
      start_ = point.scenePosition();
      return false;
    case QEventPoint::Released:
      return released();
    default:
      return moved(event, way);
  }
}

bool GestureArea::moved(QPointerEvent* event, const QPointF& way) {
  const double sideways = std::abs(way.x());
  const double upOrDown = std::abs(way.y());
  if (touch_ == Touch::atItsPlace && std::max(sideways, upOrDown) > kLeavesItsPlace) {
    touch_ = sideways > upOrDown && recognizers_->hasSwipes() ? Touch::sideways : Touch::none;
    if (touch_ == Touch::sideways) {
      event->setExclusiveGrabber(event->point(0), this);
    }
  }
  if (touch_ == Touch::sideways && sideways >= kSwipe && sideways > upOrDown) {
    touch_ = Touch::swiped;
    recognizers_->swiped(way.x() > 0 ? SwipeDirection::right : SwipeDirection::left);
  }
  return touch_ == Touch::sideways || touch_ == Touch::swiped;
}

bool GestureArea::released() {
  const Touch ended = std::exchange(touch_, Touch::none);
  if (ended == Touch::atItsPlace && recognizers_->hasTap()) {
    recognizers_->tapped();
    return true;
  }
  return ended == Touch::sideways || ended == Touch::swiped;
}

// What nothing below wanted, or what is this area's already.

void GestureArea::mousePressEvent(QMouseEvent* event) {
  follow(event);
}

// A second touch soon after the first begins twice for Qt: whoever leaves the second beginning loses the
// touch.
void GestureArea::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
}

void GestureArea::mouseMoveEvent(QMouseEvent* event) {
  follow(event);
}

void GestureArea::mouseReleaseEvent(QMouseEvent* event) {
  follow(event);
}

void GestureArea::mouseUngrabEvent() {
  touch_ = Touch::none;
}

void GestureArea::touchEvent(QTouchEvent* event) {
  follow(event);
  event->accept();
}

void GestureArea::touchUngrabEvent() {
  touch_ = Touch::none;
}

}  // namespace seedmote::platform
