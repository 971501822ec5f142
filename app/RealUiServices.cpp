#include "app/RealUiServices.h"

#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

RealUiServices::RealUiServices() : keyboard_(platform::services().screen) {
  platform::services().main.setSwallowsInput(
      [this] { return OvProgressHUD::sharedView()->takesTouches() || alerts_.isShown(); });
}

}  // namespace seedmote
