#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <utility>

#include "platform/core/Http.h"

namespace seedmote::faults {

// HTTP on whose way a request may get lost: to another place, or with less patience than was asked for.
// Whatever it is told, nothing leaves this machine. Thread-safe.
class FaultyHttp final : public platform::Http {
 public:
  using Which = std::function<bool(const std::string& body)>;

  void setNext(platform::Http& next) { next_ = &next; }

  // From now on those requests go to `url` (empty: where they were to), and in a hurry if `hurried`.
  void mislead(Which which, std::string url, bool hurried) {
    const std::lock_guard lock(mutex_);
    which_ = std::move(which);
    met_ = 0;
    url_ = std::move(url);
    hurried_ = hurried;
  }
  void letPass() { mislead({}, {}, false); }

  platform::HttpAnswer exchange(const platform::HttpRequest& request) override {
    const platform::HttpRequest changed = misled(request);
    ++underWay_;
    platform::HttpAnswer answer = next_->exchange(changed);
    --underWay_;
    return answer;
  }
  void cancelAll() override { next_->cancelAll(); }
  void userActed() override { next_->userActed(); }
  int underWay() const { return underWay_; }
  // How many of those requests there were.
  int met() const { return met_; }

 private:
  platform::HttpRequest misled(platform::HttpRequest request) {
    constexpr double kHurry = 0.06;
    const std::lock_guard lock(mutex_);
    if (which_ && which_(request.body)) {
      ++met_;
      request.url = url_.empty() ? request.url : url_;
      request.timeoutSeconds = hurried_ ? kHurry : request.timeoutSeconds;
    } else if (request.url.find("://127.0.0.1:") == std::string::npos) {
      request.url = "http://nowhere.invalid/x";
    }
    return request;
  }

  platform::Http* next_ = nullptr;
  std::mutex mutex_;
  Which which_;
  std::string url_;
  bool hurried_ = false;
  std::atomic<int> underWay_{0};
  std::atomic<int> met_{0};
};

}  // namespace seedmote::faults
