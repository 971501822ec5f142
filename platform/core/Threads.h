#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "platform/core/Clock.h"

namespace seedmote::platform {

class MainThread;

// Starts background threads, one per job, names them, and knows them until they end. Thread-safe.
class Threads final {
 public:
  Threads(Clock& clock, MainThread& main);
  // Stops, and joins without limit; call stop() and join() first to bound it.
  ~Threads();
  Threads(const Threads&) = delete;
  Threads& operator=(const Threads&) = delete;

  // Runs `job` on a new thread called `name` (15 bytes reach the kernel), with the caller's origin. What the
  // job raises is logged and handed to the main thread's raised handler. Does nothing after stop().
  void start(std::string name, std::function<void()> job);

  // Sleeps; false when the sleep was cut short by stop(). Any thread.
  bool sleep(double seconds);

  // As sleep(), also cut short when `done` becomes true and wakeSleepers() is called.
  bool sleepUnless(double seconds, const std::function<bool()>& done);
  void wakeSleepers();

  // Ends every sleep; nothing new is started.
  void stop();
  bool isStopping() const;

  // Waits until every thread has ended; false when some still run after `patience` of real time.
  bool join(std::chrono::milliseconds patience);

  int running() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace seedmote::platform
