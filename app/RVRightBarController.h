#pragma once

#include "platform/core/Timers.h"

namespace seedmote {

// The action bar's controller: it starts the daemon client three seconds after it is loaded.
class RVRightBarController final {
 public:
  void viewDidLoad();
  void updateFirstTime();

 private:
  platform::Timers::Handle updateTimer_;
};

}  // namespace seedmote
