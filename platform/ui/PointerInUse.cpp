#include "platform/ui/PointerInUse.h"

#include <QGuiApplication>
#include <QPointerEvent>
#include <QPointingDevice>

namespace seedmote::platform {

PointerInUse::PointerInUse(QObject* parent) : QObject(parent) {
  qGuiApp->installEventFilter(this);
}

bool PointerInUse::eventFilter(QObject* watched, QEvent* event) {
  if (event->isPointerEvent() && watched->isWindowType()) {
    const QPointingDevice* const device = static_cast<QPointerEvent*>(event)->pointingDevice();
    use(device == nullptr || device->type() != QInputDevice::DeviceType::TouchScreen);
  }
  return false;
}

void PointerInUse::use(bool mouse) {
  if (mouse_ != mouse) {
    mouse_ = mouse;
    Q_EMIT changed();
  }
}

}  // namespace seedmote::platform
