#pragma once

#include <QPointer>
#include <QQuickItem>

#include "platform/ui/Alerts.h"

namespace seedmote::platform {

// While an alert is shown every key of the window is the alert's: Escape presses its first button, Return its
// last, or that to which Tab has gone, and no other reaches anything. What lies below keeps its focus.
class AlertKeys : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(seedmote::platform::Alerts* alerts READ alerts WRITE setAlerts NOTIFY alertsChanged REQUIRED)
  Q_PROPERTY(int button READ button NOTIFY buttonChanged)

 public:
  explicit AlertKeys(QQuickItem* parent = nullptr);

  Alerts* alerts() const { return alerts_; }
  void setAlerts(Alerts* alerts);
  // That to which Tab has gone; -1 before its first press.
  int button() const { return button_; }

 Q_SIGNALS:
  void alertsChanged();
  void buttonChanged();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void watch();
  void press(int key);
  void goTo(int button);

  QPointer<Alerts> alerts_;
  QPointer<QQuickWindow> watched_;
  int button_ = -1;
};

}  // namespace seedmote::platform
