#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

namespace seedmote::platform {

// The main thread's queue, its way to wait, and the gate to screen code.
//
// While the main thread waits for a job the window goes on painting: a nested event loop runs without
// user input. Screen code must not be entered meanwhile, so every entry goes through enter().
//
// One instance, made on the main thread after QCoreApplication and destroyed before it.
class MainThread final {
 public:
  using Work = std::function<void()>;

  // overlay: runs also while the main thread waits. ordinary: waits until the wait has ended.
  enum class Lane { ordinary, overlay };

  // layout: called from QML's event delivery, so the work is always queued to a clean stack.
  // code: called from C++, so the work runs at once when nobody waits.
  enum class From { code, layout };

  // Chooses an event loop that can wait; call it before the application object is made. GLib's loop stops
  // painting as soon as a touch arrives during a wait.
  static void prepareProcess();

  MainThread();
  ~MainThread();
  MainThread(const MainThread&) = delete;
  MainThread& operator=(const MainThread&) = delete;

  // Runs `work` on the main thread, later, in order. Any thread. Dropped after quit(). `where` names it in
  // the log when it raises.
  void post(Work work, Lane lane = Lane::ordinary, std::string_view where = "post");

  // Blocks the caller until `job` has run; raises in the caller what the job raised and returns what it
  // returned. On the main thread the job runs on a worker while the window paints; on any other thread
  // it runs right there. The job must not touch screens. A wait inside a wait raises std::logic_error.
  template <class Job>
  std::invoke_result_t<Job&> wait(Job&& job) {
    using Result = std::invoke_result_t<Job&>;
    if constexpr (std::is_void_v<Result>) {
      runAndWait([&] { job(); });
    } else {
      std::optional<Result> result;
      runAndWait([&] { result.emplace(job()); });
      return std::move(*result);
    }
  }

  // The gate: every entry into screen code. Main thread only. `where` names the entry in the log when
  // the work raises; nothing that is raised leaves this call.
  void enter(std::string_view where, Work work, From from = From::code);

  // True while the main thread waits. Main thread only.
  bool isWaiting() const;

  // True on the thread that made this object.
  bool isMainThread() const;

  // Called at the end of each wait and by whoever is about to stop swallowing touches: user input that
  // arrived so far is delivered now, to whatever is in front at this moment. Does nothing unless the
  // main thread waits.
  void deliverHeldInput();

  // Says whether something in front swallows touches now; asked at the end of a wait.
  void setSwallowsInput(std::function<bool()> swallows);
  // For what comes to a screen past that which lies in front, as accessibility actions do.
  bool swallowsInput() const;

  // Asked in every turn of a wait: true ends the program as quit() does.
  void setWantsToQuit(std::function<bool()> wantsToQuit);

  // Called with what an entry or a background thread raised, after its log line; on the main thread.
  void setRaisedHandler(std::function<void(std::exception_ptr)> handler);

  // Runs `work`; what it raises is logged and handed to the raised handler. Any thread.
  void guard(std::string_view where, const Work& work) noexcept;

  // Called once by quit(), in order of registration, before the event loop is told to end.
  void onQuit(Work work);

  // Ends the program with `code`: drops what is queued, runs the onQuit works, ends the event loops. Main
  // thread. Later calls do nothing.
  void quit(int code = 0);
  bool isQuitting() const;
  // What quit() was given; 0 before.
  int exitCode() const;

 private:
  void runAndWait(const Work& job);

  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace seedmote::platform
