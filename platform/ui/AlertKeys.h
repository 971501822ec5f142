#pragma once

#include <QPointer>
#include <QQuickItem>

#include "platform/ui/Alerts.h"

namespace seedmote::platform {

// While an alert is shown every key of the window is the alert's: Escape presses its first button, Return its
// last, and no other reaches anything. What lies below keeps its focus.
class AlertKeys : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(seedmote::platform::Alerts* alerts READ alerts WRITE setAlerts NOTIFY alertsChanged REQUIRED)

 public:
  explicit AlertKeys(QQuickItem* parent = nullptr);

  Alerts* alerts() const { return alerts_; }
  void setAlerts(Alerts* alerts);

 Q_SIGNALS:
  void alertsChanged();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void watch();
  void press(int key);

  QPointer<Alerts> alerts_;
  QPointer<QQuickWindow> watched_;
};

}  // namespace seedmote::platform
