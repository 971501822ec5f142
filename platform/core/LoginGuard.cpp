#include "platform/core/LoginGuard.h"

#include <algorithm>
#include <chrono>

namespace seedmote::platform {
namespace {

using std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr int kUnauthorized = 401;
constexpr double kShortestTimeout = 0.001;  // seconds; 0 would mean the default

HttpAnswer ownRefusal() {
  HttpAnswer answer;
  answer.status = kUnauthorized;
  answer.hasBody = true;
  answer.body =
      "<h1>401: Unauthorized</h1><p>Not sent: the last logins were refused, one after the other. Nothing is "
      "sent by itself until the user asks again or changes a setting.</p>";
  return answer;
}

HttpAnswer failure(HttpError error, const char* message) {
  HttpAnswer answer;
  answer.error = error;
  answer.message = message;
  return answer;
}

}  // namespace

HttpAnswer LoginGuard::exchange(const HttpRequest& request) {
  Lock lock(mutex_);
  if (request.origin == Origin::user) {
    startAnew();
  } else if (!mayBeSent()) {
    return exchangeLater(request, lock);
  }
  return send(request, lock);
}

void LoginGuard::cancelAll() {
  {
    const Lock lock(mutex_);
    cancelled_ = true;
    changed_.notify_all();
  }
  http_.cancelAll();
}

void LoginGuard::userActed() {
  const Lock lock(mutex_);
  startAnew();
}

// What is under way was sent before the act: it may have carried another password.
void LoginGuard::startAnew() {
  ++act_;
  refused_ = 0;
  underWay_ = 0;
  changed_.notify_all();
}

HttpAnswer LoginGuard::exchangeLater(const HttpRequest& request, Lock& lock) {
  const Seconds patience(realTimeout(request.timeoutSeconds));
  const auto deadline = steady_clock::now() + std::chrono::duration_cast<steady_clock::duration>(patience);
  const auto decided = [this] { return cancelled_ || refused_ >= kMostRefused || mayBeSent(); };
  if (!changed_.wait_until(lock, deadline, decided)) {
    return failure(HttpError::timedOut, "The time was over while earlier requests had no answer.");
  }
  if (cancelled_) {
    return failure(HttpError::cancelled, "The exchange was cancelled.");
  }
  if (!mayBeSent()) {
    return ownRefusal();
  }
  HttpRequest late = request;
  late.timeoutSeconds = std::max(kShortestTimeout, Seconds(deadline - steady_clock::now()).count());
  return send(late, lock);
}

HttpAnswer LoginGuard::send(const HttpRequest& request, Lock& lock) {
  const std::uint64_t act = act_;
  ++underWay_;
  lock.unlock();
  HttpAnswer answer = http_.exchange(request);
  lock.lock();
  count(answer, act);
  return answer;
}

// A refusal of what was sent before the user's latest act says nothing about the login of now; an answer that
// is none does, for the server, too, counts anew after it.
void LoginGuard::count(const HttpAnswer& answer, std::uint64_t act) {
  const bool sentSince = act == act_;
  if (sentSince) {
    --underWay_;
  }
  if (answer.status == kUnauthorized) {
    refused_ += sentSince ? 1 : 0;
  } else if (answer.error == HttpError::none) {
    refused_ = 0;
  }
  changed_.notify_all();
}

}  // namespace seedmote::platform
