#include <condition_variable>
#include <mutex>
#include <utility>

#include "platform/core/Clock.h"

namespace seedmote::platform {

struct ManualClock::State {
  mutable std::mutex mutex;
  std::condition_variable changed;
  Duration now{0};
  int sleeping = 0;
  std::function<void()> jumped;
};

ManualClock::ManualClock() : state_(std::make_unique<State>()) {}

ManualClock::~ManualClock() = default;

Clock::Duration ManualClock::now() const {
  const std::lock_guard lock(state_->mutex);
  return state_->now;
}

void ManualClock::sleepUntil(Duration deadline, const std::function<bool()>& stop) {
  std::unique_lock lock(state_->mutex);
  ++state_->sleeping;
  state_->changed.wait(lock, [&] { return state_->now >= deadline || stop(); });
  --state_->sleeping;
}

void ManualClock::wake() {
  const std::lock_guard lock(state_->mutex);
  state_->changed.notify_all();
}

void ManualClock::onJump(std::function<void()> listener) {
  const std::lock_guard lock(state_->mutex);
  state_->jumped = std::move(listener);
}

void ManualClock::advance(Duration by) {
  std::function<void()> jumped;
  {
    const std::lock_guard lock(state_->mutex);
    state_->now += by;
    state_->changed.notify_all();
    jumped = state_->jumped;
  }
  if (jumped) {
    jumped();
  }
}

void ManualClock::advanceSeconds(double value) {
  advance(seconds(value));
}

int ManualClock::sleeping() const {
  const std::lock_guard lock(state_->mutex);
  return state_->sleeping;
}

}  // namespace seedmote::platform
