#pragma once

#include <optional>

#include "platform/core/BackgroundPoll.h"
#include "platform/core/Clock.h"
#include "platform/core/Timers.h"

namespace seedmote {

// Sees that the daemon has given out another session id since the list was fetched (it does so at each start
// and once an hour), or that a connected client lacks a session id or the daemon's versions, and then lets
// the client catch up in the background, showing nothing. The request that meets the new id looks failed, and
// after a restart the old list's ids mean other torrents. A list that may have come too early is fetched
// again at each look. Main thread.
class SessionWatcher final {
 public:
  static constexpr double kLookSeconds = 2;    // between two looks
  static constexpr double kFetchSeconds = 30;  // at least, between two fetches

  // Watches until it is destroyed.
  SessionWatcher();

 private:
  void look();

  platform::BackgroundPoll fetch_;
  std::optional<platform::Clock::Duration> lastFetch_;
  platform::Timers::Handle timer_;
};

}  // namespace seedmote
