#include "tests/soak/MainLoop.h"

#include <sys/eventfd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <memory>

#include "platform/core/MainThread.h"
#include "platform/core/Services.h"

namespace seedmote::soak {

MainLoop::MainLoop()
    : wakeUp_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK | EFD_SEMAPHORE)),
      notifier_(wakeUp_.get(), QSocketNotifier::Read) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { carryOut(); });
}

bool MainLoop::run(const std::function<void(Shell&)>& work) {
  constexpr auto kFrozen = std::chrono::seconds(30);
  const auto start = std::chrono::steady_clock::now();
  const auto done = std::make_shared<std::promise<bool>>();
  std::future<bool> result = done->get_future();
  post([this, work, done] {
    const bool runs = shell_ != nullptr && !platform::services().main.isQuitting();
    if (runs) work(*shell_);
    done->set_value(runs);
  });
  if (result.wait_for(kFrozen) != std::future_status::ready) {
    std::puts("FAILED: the main thread has been frozen for half a minute");
    std::fflush(stdout);
    std::abort();
  }
  const auto took = std::chrono::steady_clock::now() - start;
  const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(took).count();
  longest_ = std::max<int>(longest_, static_cast<int>(milliseconds));
  return result.get();
}

void MainLoop::post(std::function<void()> work) {
  {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(work));
  }
  eventfd_write(wakeUp_.get(), 1);
}

// One for each turn of the event loop.
void MainLoop::carryOut() {
  eventfd_t one = 0;
  if (eventfd_read(wakeUp_.get(), &one) != 0) return;
  std::function<void()> work;
  {
    const std::lock_guard lock(mutex_);
    work = std::move(posted_.front());
    posted_.pop_front();
  }
  work();
}

}  // namespace seedmote::soak
