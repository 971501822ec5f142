#pragma once

#include <functional>
#include <optional>

#include "platform/core/BackgroundPoll.h"
#include "platform/core/Timers.h"

namespace seedmote {

// Fetches the list of a connected client again and again, behind the user's back. A turn is skipped while the
// fetch of an earlier one or an update is under way, or nobody sees the list. Main thread.
class ListRefresher final {
 public:
  static constexpr double kShortest = 0.25;  // seconds between two turns; others are cut to these
  static constexpr double kLongest = 86400;

  // The seconds between two turns: those `asked` for at the start, else the stored ones. Absent for none.
  static std::optional<double> period(std::optional<double> asked);

  // Goes on until it is destroyed. `isSeen` says whether anybody can see the list; `fetched` is told after
  // each fetch, whatever it brought.
  ListRefresher(double seconds, std::function<bool()> isSeen, std::function<void()> fetched);

 private:
  void look();

  std::function<bool()> isSeen_;
  platform::BackgroundPoll fetch_;
  platform::Timers::Handle timer_;
};

}  // namespace seedmote
