#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/core/Clock.h"
#include "platform/core/MainThread.h"

namespace seedmote::platform {

// Timers of the main thread, driven by a clock. Main thread only.
//
// A timer of a screen (Lane::ordinary) goes through the main thread's gate: while the main thread waits
// it is held, and fires once afterwards however many turns it missed. A timer of the overlay
// (Lane::overlay) fires also during a wait.
class Timers final {
 public:
  using Lane = MainThread::Lane;

  // Keeps its timer going; destroying or replacing it stops the timer.
  class Handle {
   public:
    Handle() = default;
    ~Handle() { stop(); }
    Handle(Handle&&) noexcept = default;
    Handle& operator=(Handle&& other) noexcept;
    // True while the timer can still fire.
    bool isActive() const;
    void stop();

   private:
    friend class Timers;
    explicit Handle(std::shared_ptr<bool> active) : active_(std::move(active)) {}
    std::shared_ptr<bool> active_;
  };

  Timers(Clock& clock, MainThread& main);
  ~Timers();
  Timers(const Timers&) = delete;
  Timers& operator=(const Timers&) = delete;

  // `name` stands in the log when the callback raises. Seconds above 0.
  [[nodiscard]] Handle once(std::string name, double seconds, std::function<void()> fire,
                            Lane lane = Lane::ordinary);
  [[nodiscard]] Handle repeat(std::string name, double seconds, std::function<void()> fire,
                              Lane lane = Lane::ordinary);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace seedmote::platform
