#include "app/SignalWatcher.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <utility>

namespace seedmote {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};
volatile std::sig_atomic_t writeEnd = -1;

extern "C" void tellMainThread(int) {
  const int before = errno;  // what was interrupted may be about to read it
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
  errno = before;
}

}  // namespace

SignalWatcher::SignalWatcher(std::function<void()> asked) {
  if (pipe2(ends_, O_CLOEXEC | O_NONBLOCK) != 0) {
    throw std::runtime_error("no pipe for signals");
  }
  writeEnd = ends_[1];
  notifier_ = std::make_unique<QSocketNotifier>(ends_[0], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this, asked = std::move(asked)] {
                     char bytes[16];
                     while (read(ends_[0], bytes, sizeof bytes) > 0) {
                     }
                     asked();
                   });
  for (const int number : kSignals) {
    std::signal(number, tellMainThread);
  }
}

SignalWatcher::~SignalWatcher() {
  for (const int number : kSignals) {
    std::signal(number, SIG_DFL);
  }
  notifier_.reset();
  close(ends_[0]);
  close(ends_[1]);
}

}  // namespace seedmote
