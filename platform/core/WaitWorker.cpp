#include "platform/core/WaitWorker.h"

#include <pthread.h>

#include <utility>

namespace seedmote::platform {

WaitWorker::~WaitWorker() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  changed_.notify_all();
  if (thread_.joinable()) {
    thread_.join();
  }
}

void WaitWorker::makeReady() {
  if (!thread_.joinable()) {
    thread_ = std::thread([this] { loop(); });
  }
}

void WaitWorker::run(std::function<void()> job) {
  {
    const std::lock_guard lock(mutex_);
    job_ = std::move(job);
  }
  changed_.notify_all();
}

void WaitWorker::finish() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return !job_; });
}

void WaitWorker::loop() {
  pthread_setname_np(pthread_self(), "main-wait");
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return ending_ || job_; });
    if (!job_) {
      return;
    }
    const std::function<void()>& job = job_;  // nobody replaces it before finish() has seen it go
    lock.unlock();
    job();
    lock.lock();
    job_ = nullptr;
    changed_.notify_all();
  }
}

}  // namespace seedmote::platform
