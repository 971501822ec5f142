#include "settings/RVSwitchButton.h"

#include "platform/ui/LayoutEntry.h"

namespace seedmote {

void RVSwitchButton::click() {
  onoff_ = !onoff_;
  setonoff(onoff_ ? 1 : 0);
}

void RVSwitchButton::setonoff(int onoff) {
  backgroundColor_ = onoff == 1 ? QColor(0, 255, 0) : QColor(128, 128, 128);
  Q_EMIT changed();
}

void RVSwitchButton::press() {
  platform::pressFromLayout(this, "switch button", [](auto& button) { button.click(); });
}

}  // namespace seedmote
