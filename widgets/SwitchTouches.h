#pragma once

#include <QPointer>
#include <QQuickItem>
#include <string_view>

#include "widgets/JtSwitch.h"

namespace seedmote {

// Where a switch is touched: tells drags from taps, by finger or mouse, and takes the space key. A drag
// that is not sideways is left to the surroundings. The switch hears of all this through the main thread's
// gate.
class SwitchTouches : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(seedmote::JtSwitch* control READ control WRITE setControl NOTIFY controlChanged REQUIRED)

 public:
  explicit SwitchTouches(QQuickItem* parent = nullptr);

  JtSwitch* control() const { return control_; }
  void setControl(JtSwitch* control);

  // The same as a tap, for assistive technologies and keys.
  Q_INVOKABLE void toggle();

 Q_SIGNALS:
  void controlChanged();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseUngrabEvent() override;

 private:
  enum class Touch { none, undecided, drag, other };

  void startDrag(double x);
  void endTouch();
  void report(void (JtSwitch::*touch)());
  void reportPan(SwitchPan::State state, double x);

  QPointer<JtSwitch> control_;
  Touch touch_ = Touch::none;
  QPointF pressedAt_;
  double reportedX_ = 0;
};

}  // namespace seedmote
