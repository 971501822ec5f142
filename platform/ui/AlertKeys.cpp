#include "platform/ui/AlertKeys.h"

#include <QKeyEvent>
#include <QQuickWindow>

namespace seedmote::platform {

AlertKeys::AlertKeys(QQuickItem* parent) : QQuickItem(parent) {
  connect(this, &QQuickItem::windowChanged, this, &AlertKeys::watch);
}

void AlertKeys::setAlerts(Alerts* alerts) {
  if (alerts_ == alerts) {
    return;
  }
  if (alerts_) {
    disconnect(alerts_, nullptr, this, nullptr);
  }
  alerts_ = alerts;
  if (alerts_) {
    connect(alerts_, &Alerts::changed, this, &AlertKeys::watch);
  }
  watch();
  Q_EMIT alertsChanged();
}

// The filter that was installed last comes first: an alert stands in front of all that takes keys as well.
void AlertKeys::watch() {
  goTo(-1);
  if (watched_) {
    watched_->removeEventFilter(this);
  }
  watched_ = alerts_ && alerts_->isShown() ? window() : nullptr;
  if (watched_) {
    watched_->installEventFilter(this);
  }
}

bool AlertKeys::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::KeyPress && !static_cast<QKeyEvent*>(event)->isAutoRepeat()) {
    press(static_cast<QKeyEvent*>(event)->key());
  }
  return event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
}

void AlertKeys::press(int key) {
  const auto count = static_cast<int>(alerts_->buttons().size());
  switch (key) {
    case Qt::Key_Escape:
    case Qt::Key_Back:
      return alerts_->press(0);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return alerts_->press(button_ >= 0 ? button_ : count - 1);
    case Qt::Key_Space:
      return alerts_->press(button_);
    case Qt::Key_Tab:
    case Qt::Key_Right:
      return goTo((button_ + 1) % count);
    case Qt::Key_Backtab:
    case Qt::Key_Left:
      return goTo(button_ > 0 ? button_ - 1 : count - 1);
    default:
      return;
  }
}

void AlertKeys::goTo(int button) {
  if (button_ != button) {
    button_ = button;
    Q_EMIT buttonChanged();
  }
}

}  // namespace seedmote::platform
