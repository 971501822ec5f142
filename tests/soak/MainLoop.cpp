#include "tests/soak/MainLoop.h"

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <memory>

#include "platform/core/MainThread.h"
#include "platform/core/Services.h"

namespace seedmote::soak {

bool MainLoop::run(const std::function<void(Shell&)>& work) {
  constexpr auto kFrozen = std::chrono::seconds(30);
  const auto start = std::chrono::steady_clock::now();
  const auto done = std::make_shared<std::promise<bool>>();
  std::future<bool> result = done->get_future();
  QMetaObject::invokeMethod(
      QCoreApplication::instance(),
      [this, work, done] {
        const bool runs = shell_ != nullptr && !platform::services().main.isQuitting();
        if (runs) work(*shell_);
        done->set_value(runs);
      },
      Qt::QueuedConnection);
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

void MainLoop::post(const std::function<void()>& work) {
  QMetaObject::invokeMethod(QCoreApplication::instance(), work, Qt::QueuedConnection);
}

}  // namespace seedmote::soak
