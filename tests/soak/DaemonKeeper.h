#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>

#include "tests/support/RealDaemon.h"

namespace seedmote::soak {

// The real daemon, and the one thread on which it is looked after. Thread-safe.
class DaemonKeeper final {
 public:
  static constexpr const char* kUser = "keeper";
  static constexpr int kMostTorrents = 2000;

  using Work = std::function<void(support::RealDaemon&)>;
  using Torrents = std::map<std::int64_t, std::string>;  // names by ids

  DaemonKeeper();
  ~DaemonKeeper();
  DaemonKeeper(const DaemonKeeper&) = delete;
  DaemonKeeper& operator=(const DaemonKeeper&) = delete;

  // In their order, later. A daemon on which one fails is started anew, once: it has been seen to give no
  // answer for long on a busy machine, and is not what is on trial.
  void later(Work work);
  // Whether something is still to be done, or being done.
  bool isBusy() const { return pending_ > 0; }
  // Returns when it, and all before it, is done.
  void now(const Work& work);

  // What can happen to a daemon; later.
  void restart();
  void stopFor(double seconds);
  void changePassword();  // and starts anew
  void fill(int count);   // up to kMostTorrents in all
  // Adds or removes torrents until there are so many; returns when it is done.
  void bringTo(int count);

  // What it says itself, to a request of its own.
  Torrents torrents();
  std::string password() const;
  std::string port();

 private:
  void keep();
  static void carryOut(const Work& work, support::RealDaemon& daemon);
  std::string credentials() const;
  static Torrents torrentsOf(support::RealDaemon& daemon);

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Work> works_;
  std::atomic<int> pending_{0};
  bool over_ = false;
  int passwords_ = 0;
  int fills_ = 0;
  std::thread thread_;
};

}  // namespace seedmote::soak
