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
  if (key == Qt::Key_Escape || key == Qt::Key_Back) {
    alerts_->press(0);
  } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    alerts_->press(static_cast<int>(alerts_->buttons().size()) - 1);
  }
}

}  // namespace seedmote::platform
