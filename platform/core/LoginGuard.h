#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>

#include "platform/core/Http.h"

namespace seedmote::platform {

// Keeps timers from trying a refused login for ever: a server may lock everybody out after a hundred. Once
// kMostRefused logins in a row were refused (status 401), a timer's request is answered 401 here and nothing
// is sent, until the user acts. The user's own requests are always sent, and are acts.
//
// A timer's request that could be one refusal too many waits until those under way are answered; that wait
// counts against its time-out. Thread-safe.
class LoginGuard final : public Http {
 public:
  static constexpr int kMostRefused = 3;

  // What may be sent is exchanged by `http`, which outlives this.
  explicit LoginGuard(Http& http) : http_(http) {}

  HttpAnswer exchange(const HttpRequest& request) override;
  void cancelAll() override;
  void userActed() override;

 private:
  using Lock = std::unique_lock<std::mutex>;

  bool mayBeSent() const { return refused_ + underWay_ < kMostRefused; }
  void startAnew();
  HttpAnswer exchangeLater(const HttpRequest& request, Lock& lock);
  HttpAnswer send(const HttpRequest& request, Lock& lock);
  void count(const HttpAnswer& answer, std::uint64_t act);

  Http& http_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::uint64_t act_ = 0;  // the user's acts so far
  int refused_ = 0;        // refusals in a row since then
  int underWay_ = 0;       // requests sent since then that are not answered yet
  bool cancelled_ = false;
};

}  // namespace seedmote::platform
