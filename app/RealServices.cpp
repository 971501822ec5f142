#include "app/RealServices.h"

#include <unistd.h>

#include <cstdlib>

#include "platform/core/Log.h"
#include "widgets/OvProgressHUD.h"
#include "widgets/RaisedMessage.h"

namespace seedmote {

namespace {
constexpr std::chrono::milliseconds kPatience{900};
}

RealServices::RealServices(platform::Device device, platform::Size uprightScreen)
    : threads_(clock_, main_),
      timers_(clock_, main_),
      defaults_(platform::standardDefaultsPath()),
      device_(std::move(device)),
      screen_(uprightScreen),
      scope_({clock_, main_, timers_, threads_, http_, defaults_, device_, screen_}) {
  main_.onQuit([this] { http_.cancelAll(); });
  main_.onQuit([this] { threads_.stop(); });
  showWhatIsRaised(main_);
}

RealServices::~RealServices() {
  main_.quit();
  if (!threads_.join(kPatience)) {
    platform::log("Some threads did not end in time\n");
    platform::flushLog();
    if (beforeAbandoning_) {
      beforeAbandoning_(main_.exitCode());
    }
    _exit(main_.exitCode());  // their stacks still use what is destroyed next
  }
  OvProgressHUD::dropSharedView();
}

}  // namespace seedmote
