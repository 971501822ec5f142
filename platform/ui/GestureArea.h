#pragma once

#include <QPointF>
#include <QPointer>
#include <QQuickItem>

#include "platform/ui/GestureRecognizers.h"

class QPointerEvent;

namespace seedmote::platform {

// Recognises the gestures of a view over all that lies in it, made with a finger or a mouse. A touch is a
// swipe when it goes further sideways than up or down at the moment it leaves its place; then it belongs to
// the swipe, and nothing below scrolls or is tapped. A touch that went up or down first never swipes.
class GestureArea : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(seedmote::platform::GestureRecognizers* recognizers READ recognizers WRITE setRecognizers NOTIFY
                 recognizersChanged REQUIRED)

 public:
  // In points.
  static constexpr double kLeavesItsPlace = 10;
  static constexpr double kSwipe = 36;

  explicit GestureArea(QQuickItem* parent = nullptr);

  GestureRecognizers* recognizers() const { return recognizers_; }
  void setRecognizers(GestureRecognizers* recognizers);

 Q_SIGNALS:
  void recognizersChanged();

 protected:
  bool childMouseEventFilter(QQuickItem* item, QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseUngrabEvent() override;
  void touchEvent(QTouchEvent* event) override;
  void touchUngrabEvent() override;

 private:
  // none: no touch, or one that is no gesture any more.
  enum class Touch { none, atItsPlace, sideways, swiped };

  // True when the event belongs to a gesture, and to nothing below.
  bool follow(QPointerEvent* event);
  bool moved(QPointerEvent* event, const QPointF& way);
  bool released();

  QPointer<GestureRecognizers> recognizers_;
  Touch touch_ = Touch::none;
  QPointF start_;  // in the scene
};

}  // namespace seedmote::platform
