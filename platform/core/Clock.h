#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace seedmote::platform {

// Monotonic time for everything that waits or counts. Thread-safe.
class Clock {
 public:
  using Duration = std::chrono::nanoseconds;

  virtual ~Clock() = default;

  // Time since an arbitrary start; never goes back.
  virtual Duration now() const = 0;

  // Blocks until `deadline` or until `stop` is true. `stop` is looked at whenever wake() was called.
  virtual void sleepUntil(Duration deadline, const std::function<bool()>& stop) = 0;

  // Makes every sleeper look at its `stop` again.
  virtual void wake() = 0;

  // Called when time has jumped (a driven clock was moved). A running clock never calls it.
  virtual void onJump(std::function<void()> listener) = 0;
};

class SystemClock final : public Clock {
 public:
  SystemClock();
  ~SystemClock() override;
  Duration now() const override;
  void sleepUntil(Duration deadline, const std::function<bool()>& stop) override;
  void wake() override;
  void onJump(std::function<void()> listener) override;

 private:
  struct Sleepers;
  std::unique_ptr<Sleepers> sleepers_;
};

// The in-memory twin: time stands still until advance() moves it.
class ManualClock final : public Clock {
 public:
  ManualClock();
  ~ManualClock() override;
  Duration now() const override;
  void sleepUntil(Duration deadline, const std::function<bool()>& stop) override;
  void wake() override;
  void onJump(std::function<void()> listener) override;

  // Moves time forward, wakes sleepers whose deadline has come, and tells the listener.
  void advance(Duration by);
  void advanceSeconds(double seconds);

  // How many threads sleep now; tests wait for this before they advance.
  int sleeping() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

inline Clock::Duration seconds(double value) {
  return std::chrono::duration_cast<Clock::Duration>(std::chrono::duration<double>(value));
}

}  // namespace seedmote::platform
