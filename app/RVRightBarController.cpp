#include "app/RVRightBarController.h"

#include "client/RVTrans.h"
#include "platform/core/Log.h"
#include "platform/core/Services.h"

namespace seedmote {

namespace {
constexpr double kClientStart = 3;  // seconds after loading
}

void RVRightBarController::viewDidLoad() {
  updateTimer_ =
      platform::services().timers.once("updateFirstTime", kClientStart, [this] { updateFirstTime(); });
  platform::log("Right Bar is loaded.\n");
}

void RVRightBarController::updateFirstTime() {
  platform::log("updateFirstTime");
  RVTrans::init();
}

}  // namespace seedmote
