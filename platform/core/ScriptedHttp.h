#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

#include "platform/core/Http.h"

namespace seedmote::platform {

// HTTP without sockets, for tests: records the requests and answers them from a queue, then by a function.
// With neither, an exchange fails as HttpError::other. Thread-safe.
class ScriptedHttp final : public Http {
 public:
  using Handler = std::function<HttpAnswer(const HttpRequest&)>;

  HttpAnswer exchange(const HttpRequest& request) override;
  void cancelAll() override;

  // The answer to the next request that has none yet.
  void enqueue(HttpAnswer answer);
  // Answers when the queue is empty; runs on the caller's thread, outside the lock.
  void setHandler(Handler handler);

  // Until release(), exchanges are recorded and then wait, and are cancelled by cancelAll() alone.
  void hold();
  void release();

  std::vector<HttpRequest> requests() const;
  void forgetRequests();
  // False when fewer than `count` came within `patience`.
  bool waitForRequests(std::size_t count, std::chrono::milliseconds patience) const;

  static HttpAnswer answer(int status, std::string body);
  static HttpAnswer failure(HttpError error, std::string message = "scripted");

 private:
  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  std::vector<HttpRequest> requests_;
  std::deque<HttpAnswer> answers_;
  Handler handler_;
  bool held_ = false;
  bool cancelled_ = false;
};

}  // namespace seedmote::platform
