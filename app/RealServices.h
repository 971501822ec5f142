#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/core/Clock.h"
#include "platform/core/CurlHttp.h"
#include "platform/core/Device.h"
#include "platform/core/LoginGuard.h"
#include "platform/core/MainThread.h"
#include "platform/core/PlistUserDefaults.h"
#include "platform/core/Screen.h"
#include "platform/core/Services.h"
#include "platform/core/Threads.h"
#include "platform/core/Timers.h"

namespace seedmote {

// The operating system's own services, made in the order in which they need each other and installed for
// this object's lifetime. Made on the main thread after the application object.
class RealServices final {
 public:
  RealServices(platform::Device device, platform::Size uprightScreen);
  // Ends what still runs; threads that do not end within a second end the process.
  ~RealServices();
  // Called with the exit code when threads do not end in time, as the last thing that the process does.
  void beforeAbandoning(std::function<void(int)> last) { beforeAbandoning_ = std::move(last); }
  RealServices(const RealServices&) = delete;
  RealServices& operator=(const RealServices&) = delete;

 private:
  std::function<void(int)> beforeAbandoning_;
  platform::SystemClock clock_;
  platform::MainThread main_;
  platform::Threads threads_;
  platform::Timers timers_;
  platform::CurlHttp curl_;
  platform::LoginGuard http_{curl_};
  platform::PlistUserDefaults defaults_;
  platform::Device device_;
  platform::Screen screen_;
  platform::ServicesScope scope_;
};

}  // namespace seedmote
