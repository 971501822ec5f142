#include "platform/ui/HeldClose.h"

#include <qpa/qwindowsysteminterface_p.h>

namespace seedmote::platform {

bool isCloseHeld() {
  using Held = QWindowSystemInterfacePrivate;
  return Held::peekWindowSystemEvent(Held::Close) != nullptr;
}

}  // namespace seedmote::platform
