#include "platform/core/ScriptedHttp.h"

#include <utility>

namespace seedmote::platform {

HttpAnswer ScriptedHttp::exchange(const HttpRequest& request) {
  std::unique_lock lock(mutex_);
  if (!cancelled_) {
    requests_.push_back(request);
    changed_.notify_all();
    changed_.wait(lock, [this] { return !held_ || cancelled_; });
  }
  if (cancelled_) {
    return failure(HttpError::cancelled);
  }
  if (!answers_.empty()) {
    HttpAnswer next = std::move(answers_.front());
    answers_.pop_front();
    return next;
  }
  const Handler handler = handler_;
  lock.unlock();
  return handler ? handler(request) : failure(HttpError::other, "no answer is scripted");
}

void ScriptedHttp::cancelAll() {
  const std::lock_guard lock(mutex_);
  cancelled_ = true;
  changed_.notify_all();
}

void ScriptedHttp::enqueue(HttpAnswer answer) {
  const std::lock_guard lock(mutex_);
  answers_.push_back(std::move(answer));
}

void ScriptedHttp::setHandler(Handler handler) {
  const std::lock_guard lock(mutex_);
  handler_ = std::move(handler);
}

void ScriptedHttp::hold() {
  const std::lock_guard lock(mutex_);
  held_ = true;
}

void ScriptedHttp::release() {
  const std::lock_guard lock(mutex_);
  held_ = false;
  changed_.notify_all();
}

std::vector<HttpRequest> ScriptedHttp::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void ScriptedHttp::forgetRequests() {
  const std::lock_guard lock(mutex_);
  requests_.clear();
}

bool ScriptedHttp::waitForRequests(std::size_t count, std::chrono::milliseconds patience) const {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, patience, [&] { return requests_.size() >= count; });
}

HttpAnswer ScriptedHttp::answer(int status, std::string body) {
  HttpAnswer answer;
  answer.status = status;
  answer.hasBody = true;
  answer.body = std::move(body);
  return answer;
}

HttpAnswer ScriptedHttp::failure(HttpError error, std::string message) {
  HttpAnswer answer;
  answer.error = error;
  answer.message = std::move(message);
  return answer;
}

}  // namespace seedmote::platform
