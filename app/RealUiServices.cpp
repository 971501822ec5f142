#include "app/RealUiServices.h"

#include "platform/core/Services.h"
#include "platform/ui/HeldClose.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

void connectWaits(platform::MainThread& main, const platform::Alerts& alerts) {
  main.setSwallowsInput(
      [&alerts] { return OvProgressHUD::sharedView()->takesTouches() || alerts.isShown(); });
  main.setWantsToQuit(platform::isCloseHeld);
  OvProgressHUD::sharedView()->setBeforeTouchesPass([&main] { main.deliverHeldInput(); });
}

RealUiServices::RealUiServices() : keyboard_(platform::services().screen) {
  connectWaits(platform::services().main, alerts_);
}

}  // namespace seedmote
