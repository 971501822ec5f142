#include "platform/core/Clock.h"

#include <condition_variable>
#include <mutex>
#include <utility>

namespace seedmote::platform {

struct SystemClock::Sleepers {
  std::mutex mutex;
  std::condition_variable changed;
};

SystemClock::SystemClock() : sleepers_(std::make_unique<Sleepers>()) {}

SystemClock::~SystemClock() = default;

Clock::Duration SystemClock::now() const {
  return std::chrono::steady_clock::now().time_since_epoch();
}

void SystemClock::sleepUntil(Duration deadline, const std::function<bool()>& stop) {
  const std::chrono::steady_clock::time_point until{
      std::chrono::duration_cast<std::chrono::steady_clock::duration>(deadline)};
  std::unique_lock lock(sleepers_->mutex);
  sleepers_->changed.wait_until(lock, until, stop);
}

void SystemClock::wake() {
  // Under the lock, so that nobody who has just looked at its stop misses this.
  const std::lock_guard lock(sleepers_->mutex);
  sleepers_->changed.notify_all();
}

void SystemClock::onJump(std::function<void()>) {}

}  // namespace seedmote::platform
