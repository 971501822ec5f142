#pragma once

#include <cstdint>

namespace seedmote::platform {

// Who is behind what a thread does: a person, or a timer by itself. A callback of Timers is a timer's, and so
// is what it hands to other threads (Threads, BackgroundPoll, a job that the main thread waits for).
// Everything else, touches and posts above all, is the user's.
enum class Origin : std::uint8_t { user, timer };

// Of what this thread does now.
Origin currentOrigin();

// Sets this thread's origin for its lifetime.
class OriginScope final {
 public:
  explicit OriginScope(Origin origin);
  ~OriginScope();
  OriginScope(const OriginScope&) = delete;
  OriginScope& operator=(const OriginScope&) = delete;

 private:
  const Origin before_;
};

}  // namespace seedmote::platform
