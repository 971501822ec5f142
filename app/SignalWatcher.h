#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace seedmote {

// Turns SIGTERM, SIGINT and SIGHUP into a call on the main thread, also while that waits. One at a time.
class SignalWatcher final {
 public:
  explicit SignalWatcher(std::function<void()> asked);
  ~SignalWatcher();
  SignalWatcher(const SignalWatcher&) = delete;
  SignalWatcher& operator=(const SignalWatcher&) = delete;

 private:
  int ends_[2] = {-1, -1};
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace seedmote
