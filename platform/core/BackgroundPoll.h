#pragma once

#include <functional>
#include <memory>
#include <string>

namespace seedmote::platform {

class MainThread;
class Threads;

// A request that timers make again and again. It runs on a thread of its own, for a request born of a
// timer must never hold the main thread: with a silent host that would wait nearly all the time. What it
// brings is applied on the main thread, through the gate. Main thread only.
class BackgroundPoll final {
 public:
  using Apply = std::function<void()>;
  // Runs on a background thread; returns what is then to be done on the main thread, or null.
  using Job = std::function<Apply()>;

  // `name` is the thread's, and stands in the log when the job raises, which is told to nobody else.
  BackgroundPoll(MainThread& main, Threads& threads, std::string name, Job job);
  // What is under way is not applied any more; the job must not use what goes with its owner.
  ~BackgroundPoll();
  BackgroundPoll(const BackgroundPoll&) = delete;
  BackgroundPoll& operator=(const BackgroundPoll&) = delete;

  // Starts the job; does nothing while one is under way. What it brings has the origin of this call.
  void tick();

 private:
  struct State;
  MainThread& main_;
  Threads& threads_;
  std::string name_;
  Job job_;
  std::shared_ptr<State> state_;
};

}  // namespace seedmote::platform
