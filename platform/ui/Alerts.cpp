#include "platform/ui/Alerts.h"

#include <utility>

#include "platform/core/ShownText.h"
#include "platform/ui/LayoutEntry.h"

namespace seedmote::platform {

void Alerts::show(Alert alert) {
  alerts_.push_back(std::move(alert));
  Q_EMIT changed();
}

QString Alerts::title() const {
  return isShown() ? QString::fromStdString(alerts_.front().title) : QString();
}

QString Alerts::message() const {
  return isShown() ? shownText(alerts_.front().message) : QString();
}

QStringList Alerts::buttons() const {
  QStringList titles;
  if (isShown()) {
    for (const std::string& button : alerts_.front().buttons) {
      titles << QString::fromStdString(button);
    }
  }
  return titles;
}

void Alerts::press(int button) {
  enterFromLayout(this, "alert",
                  [number = number_, button](Alerts& alerts) { alerts.dismiss(number, button); });
}

void Alerts::dismiss(unsigned number, int button) {
  if (number != number_ || button < 0 || button >= buttons().size()) {
    return;  // a second press of the button, after the alert has gone
  }
  const Alert alert = std::move(alerts_.front());
  alerts_.pop_front();
  ++number_;
  Q_EMIT changed();
  if (alert.dismissed) {
    alert.dismissed(button);
  }
}

}  // namespace seedmote::platform
