#pragma once

#include <QSocketNotifier>
#include <atomic>
#include <deque>
#include <functional>
#include <mutex>

#include "tests/soak/Shell.h"
#include "tests/support/FileDescriptor.h"

namespace seedmote::soak {

// The way from the thread that plays the person to the main thread, which it lets do as it likes: what is
// asked is carried out between two of its events, also while the program waits for a request. When that takes
// half a minute the window is frozen: says so and ends the process. Made on the main thread. Its own queue,
// for a thread sanitizer cannot follow Qt's.
class MainLoop final {
 public:
  MainLoop();

  // False, and nothing was done, while no program runs. Any thread but the main one.
  bool run(const std::function<void(Shell&)>& work);

  // As it comes; not waited for.
  void post(std::function<void()> work);

  // The longest that anything took so far, in milliseconds: some of it is the machine's.
  int longest() const { return longest_; }

  // Main thread: what is asked is asked of this program from now on; null for none.
  void attach(Shell* shell) { shell_ = shell; }

 private:
  void carryOut();

  std::mutex mutex_;
  std::deque<std::function<void()>> posted_;
  const support::FileDescriptor wakeUp_;  // a counter that the event loop watches
  QSocketNotifier notifier_;
  Shell* shell_ = nullptr;
  std::atomic<int> longest_{0};
};

}  // namespace seedmote::soak
