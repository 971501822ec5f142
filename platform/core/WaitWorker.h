#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace seedmote::platform {

// The one thread that runs the jobs for which the main thread waits, one at a time. Kept between jobs: a
// wait is too common to start a thread each time.
class WaitWorker final {
 public:
  WaitWorker() = default;
  ~WaitWorker();
  WaitWorker(const WaitWorker&) = delete;
  WaitWorker& operator=(const WaitWorker&) = delete;

  // Before the first job. Raises std::system_error when the system has no thread left.
  void makeReady();

  // Starts `job`, which must not raise. The one before must have been finished.
  void run(std::function<void()> job);

  // Blocks until the job has ended.
  void finish();

 private:
  void loop();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::function<void()> job_;
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace seedmote::platform
