#pragma once

#include <string>

#include "tests/soak/DaemonKeeper.h"
#include "tests/soak/MainLoop.h"
#include "tests/soak/Person.h"

namespace seedmote::soak {

// A moment at which the daemon runs and nobody does anything but refresh: the program's list, and the rows
// that it shows, must be what the daemon says to a request that has nothing to do with the program.
//
// A refresh may be the one that connects, or the one that meets a new session of the daemon and looks failed;
// so it may take a person kMostRefreshes of them.
class QuietPoint final {
 public:
  static constexpr int kMostRefreshes = 4;

  QuietPoint(MainLoop& loop, DaemonKeeper& keeper, Person& person)
      : loop_(loop), keeper_(keeper), person_(person) {}

  // What is wrong in the end; empty when all is as it should be.
  std::string find();
  int refreshes() const { return refreshes_; }  // in all

 private:
  void mendSettings();
  bool refresh();
  std::string compare();

  MainLoop& loop_;
  DaemonKeeper& keeper_;
  Person& person_;
  int refreshes_ = 0;
};

}  // namespace seedmote::soak
