#include "platform/core/Threads.h"

#include <pthread.h>

#include <atomic>
#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/core/MainThread.h"
#include "platform/core/Origin.h"

namespace seedmote::platform {

class Threads::Impl {
 public:
  struct Entry {
    std::thread thread;
    bool ended = false;
  };

  Impl(Clock& clockInUse, MainThread& mainThread) : clock(clockInUse), main(mainThread) {}

  // Joins those that have ended. A thread marks itself as ended as the last thing it does with the list,
  // so the join is short.
  void reap(std::unique_lock<std::mutex>& lock) {
    std::list<Entry> gone;
    for (auto entry = entries.begin(); entry != entries.end();) {
      const auto next = std::next(entry);
      if (entry->ended) {
        gone.splice(gone.end(), entries, entry);
      }
      entry = next;
    }
    lock.unlock();
    for (Entry& entry : gone) {
      entry.thread.join();
    }
    lock.lock();
  }

  void end(Entry& entry) {
    const std::lock_guard lock(mutex);
    entry.ended = true;
    --running;
    changed.notify_all();
  }

  Clock& clock;
  MainThread& main;
  std::atomic<bool> stopping{false};
  mutable std::mutex mutex;
  std::condition_variable changed;
  std::list<Entry> entries;
  int running = 0;
};

Threads::Threads(Clock& clock, MainThread& main) : impl_(std::make_unique<Impl>(clock, main)) {}

Threads::~Threads() {
  stop();
  std::unique_lock lock(impl_->mutex);
  impl_->changed.wait(lock, [this] { return impl_->running == 0; });
  impl_->reap(lock);
}

void Threads::start(std::string name, std::function<void()> job) {
  std::unique_lock lock(impl_->mutex);
  impl_->reap(lock);
  if (impl_->stopping) {
    return;
  }
  Impl::Entry& entry = impl_->entries.emplace_back();
  ++impl_->running;
  try {
    entry.thread = std::thread(
        [this, &entry, name = std::move(name), job = std::move(job), origin = currentOrigin()]() mutable {
          const OriginScope scope(origin);
          pthread_setname_np(pthread_self(), name.substr(0, 15).c_str());
          impl_->main.guard(name, job);
          job = nullptr;
          impl_->end(entry);
        });
  } catch (...) {
    --impl_->running;
    impl_->entries.pop_back();
    throw;
  }
}

bool Threads::sleep(double duration) {
  return sleepUnless(duration, [] { return false; });
}

bool Threads::sleepUnless(double duration, const std::function<bool()>& done) {
  const Clock::Duration deadline = impl_->clock.now() + seconds(duration);
  impl_->clock.sleepUntil(deadline, [&] { return impl_->stopping || done(); });
  return !impl_->stopping;
}

void Threads::wakeSleepers() {
  impl_->clock.wake();
}

void Threads::stop() {
  {
    const std::lock_guard lock(impl_->mutex);
    impl_->stopping = true;
  }
  impl_->clock.wake();
}

bool Threads::isStopping() const {
  return impl_->stopping;
}

bool Threads::join(std::chrono::milliseconds patience) {
  std::unique_lock lock(impl_->mutex);
  const auto until = std::chrono::system_clock::now() + patience;
  const bool ended = impl_->changed.wait_until(lock, until, [this] { return impl_->running == 0; });
  impl_->reap(lock);
  return ended;
}

int Threads::running() const {
  const std::lock_guard lock(impl_->mutex);
  return impl_->running;
}

}  // namespace seedmote::platform
