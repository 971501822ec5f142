#include "client/ListRefresher.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <utility>

#include "client/RVTrans.h"
#include "platform/core/Services.h"
#include "platform/core/UserDefaults.h"

namespace seedmote {

using platform::services;

namespace {

std::optional<double> storedPeriod() {
  const std::string text = services().defaults.string("Refresh").value_or("");
  double seconds = 0;
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  const bool isNumber = problem == std::errc() && end == text.data() + text.size();
  return isNumber ? std::optional(seconds) : std::nullopt;
}

}  // namespace

std::optional<double> ListRefresher::period(std::optional<double> asked) {
  const std::optional<double> seconds = asked ? asked : storedPeriod();
  if (!seconds || !std::isfinite(*seconds) || *seconds <= 0) {
    return std::nullopt;
  }
  return std::clamp(*seconds, kShortest, kLongest);
}

ListRefresher::ListRefresher(double seconds, std::function<bool()> isSeen, std::function<void()> fetched)
    : isSeen_(std::move(isSeen)),
      fetch_(services().main, services().threads, "listRefresher",
             [fetched = std::move(fetched)] {
               RVTrans::fetchTorrentList();
               return fetched;
             }),
      timer_(services().timers.repeat("listRefresher", seconds, [this] { look(); })) {}

void ListRefresher::look() {
  if (RVTrans::isConnected() && !RVTrans::isUpdating() && isSeen_()) {
    fetch_.tick();
  }
}

}  // namespace seedmote
