#include "platform/core/MainThread.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QThread>
#include <atomic>
#include <deque>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/core/Log.h"
#include "platform/core/Origin.h"
#include "platform/core/WaitWorker.h"

namespace seedmote::platform {

class MainThread::Impl final : public QObject {
 public:
  struct Item {
    std::string where;
    Work work;
    std::uint64_t turn = 0;
  };

  explicit Impl(MainThread& owner);
  ~Impl() override;

  void push(std::string where, Work work, Lane lane);
  void drain();
  void waitFor(const Work& job);
  void clear();
  void handOn(const std::exception_ptr& raised);

  MainThread& owner_;
  std::atomic<bool> quitting{false};
  bool waiting = false;
  int exitCode = 0;
  std::function<bool()> swallows;
  std::function<bool()> wantsToQuit;
  std::vector<Work> quitWorks;

  std::mutex handlerMutex;
  std::function<void(std::exception_ptr)> raisedHandler;

 private:
  void wake() const;
  void woken();
  bool take(Item& item);
  bool hasRunnable();
  void wakeIfNeeded();

  std::mutex mutex_;
  std::deque<Item> ordinary_;
  std::deque<Item> overlay_;
  std::uint64_t turns_ = 0;
  bool wakePosted_ = false;
  const int wakeUp_;  // a counter that the event loop watches: no allocation, no lock of Qt's
  QSocketNotifier notifier_;
  WaitWorker worker_;
};

MainThread::Impl::Impl(MainThread& owner)
    : owner_(owner),
      wakeUp_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      notifier_(wakeUp_, QSocketNotifier::Read) {
  connect(&notifier_, &QSocketNotifier::activated, this, &Impl::woken);
}

MainThread::Impl::~Impl() {
  notifier_.setEnabled(false);
  close(wakeUp_);
}

void MainThread::Impl::wake() const {
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = write(wakeUp_, &one, sizeof one);
}

void MainThread::Impl::woken() {
  std::uint64_t count = 0;
  [[maybe_unused]] const ssize_t got = read(wakeUp_, &count, sizeof count);
  {
    const std::lock_guard lock(mutex_);
    wakePosted_ = false;
  }
  drain();
}

void MainThread::Impl::push(std::string where, Work work, Lane lane) {
  {
    const std::lock_guard lock(mutex_);
    if (quitting) {
      return;
    }
    auto& queue = lane == Lane::overlay ? overlay_ : ordinary_;
    queue.push_back({std::move(where), std::move(work), ++turns_});
  }
  wakeIfNeeded();
}

void MainThread::Impl::wakeIfNeeded() {
  {
    const std::lock_guard lock(mutex_);
    if (wakePosted_ || (ordinary_.empty() && overlay_.empty())) {
      return;
    }
    wakePosted_ = true;
  }
  wake();
}

bool MainThread::Impl::take(Item& item) {
  const std::lock_guard lock(mutex_);
  const bool ordinaryRuns = !waiting && !ordinary_.empty();
  const bool overlayFirst =
      !overlay_.empty() && (!ordinaryRuns || overlay_.front().turn < ordinary_.front().turn);
  auto& queue = overlayFirst ? overlay_ : ordinary_;
  if (!overlayFirst && !ordinaryRuns) {
    return false;
  }
  item = std::move(queue.front());
  queue.pop_front();
  return true;
}

bool MainThread::Impl::hasRunnable() {
  const std::lock_guard lock(mutex_);
  return !overlay_.empty() || (!waiting && !ordinary_.empty());
}

// Runs what is queued now; what the work queues gets a turn of its own, so that painting goes on.
void MainThread::Impl::drain() {
  std::size_t left = 0;
  {
    const std::lock_guard lock(mutex_);
    left = ordinary_.size() + overlay_.size();
  }
  Item item;
  while (left-- > 0 && take(item)) {
    owner_.guard(item.where, item.work);
    item.work = nullptr;  // what it holds goes before the next one runs
  }
  if (hasRunnable()) {
    wakeIfNeeded();
  }
}

void MainThread::Impl::waitFor(const Work& job) {
  if (waiting) {
    throw std::logic_error("the main thread waits already");
  }
  worker_.makeReady();
  waiting = true;
  std::exception_ptr raised;
  std::atomic<bool> done{false};
  worker_.run([&, origin = currentOrigin()] {
    const OriginScope scope(origin);
    try {
      job();
    } catch (...) {
      raised = std::current_exception();
    }
    done = true;
    wake();
  });
  const OriginScope others(Origin::user);  // what comes in meanwhile is not the waiting caller's
  while (!done && !quitting) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
    if (wantsToQuit && wantsToQuit()) {
      owner_.quit();
    }
  }
  worker_.finish();  // when the program quits the job is cancelled, and ends at once
  if (owner_.swallowsInput()) {
    owner_.deliverHeldInput();
  }
  waiting = false;
  wakeIfNeeded();
  if (raised) {
    std::rethrow_exception(raised);
  }
}

void MainThread::Impl::clear() {
  std::deque<Item> ordinary;
  std::deque<Item> overlay;
  const std::lock_guard lock(mutex_);
  ordinary.swap(ordinary_);
  overlay.swap(overlay_);
}

void MainThread::Impl::handOn(const std::exception_ptr& raised) {
  std::function<void(std::exception_ptr)> handler;
  {
    const std::lock_guard lock(handlerMutex);
    handler = raisedHandler;
  }
  if (handler) {
    handler(raised);
  }
}

void MainThread::prepareProcess() {
  qputenv("QT_NO_GLIB", "1");
}

MainThread::MainThread() : impl_(std::make_unique<Impl>(*this)) {}

MainThread::~MainThread() {
  impl_->clear();
}

void MainThread::post(Work work, Lane lane, std::string_view where) {
  impl_->push(std::string(where), std::move(work), lane);
}

void MainThread::enter(std::string_view where, Work work, From from) {
  if (from == From::layout || impl_->waiting) {
    impl_->push(std::string(where), std::move(work), Lane::ordinary);
  } else if (!impl_->quitting) {
    guard(where, work);
  }
}

void MainThread::runAndWait(const Work& job) {
  if (!isMainThread() || impl_->quitting) {
    job();
  } else {
    impl_->waitFor(job);
  }
}

bool MainThread::isWaiting() const {
  return impl_->waiting;
}

bool MainThread::isMainThread() const {
  return QThread::currentThread() == impl_->thread();
}

void MainThread::deliverHeldInput() {
  if (impl_->waiting) {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
  }
}

bool MainThread::swallowsInput() const {
  return impl_->swallows && impl_->swallows();
}

void MainThread::setSwallowsInput(std::function<bool()> swallows) {
  impl_->swallows = std::move(swallows);
}

void MainThread::setWantsToQuit(std::function<bool()> wantsToQuit) {
  impl_->wantsToQuit = std::move(wantsToQuit);
}

void MainThread::setRaisedHandler(std::function<void(std::exception_ptr)> handler) {
  const std::lock_guard lock(impl_->handlerMutex);
  impl_->raisedHandler = std::move(handler);
}

void MainThread::guard(std::string_view where, const Work& work) noexcept {
  std::exception_ptr raised;
  try {
    work();
    return;
  } catch (const std::exception& problem) {
    raised = std::current_exception();
    log("Raised in %@: %@\n", where, problem.what());
  } catch (...) {
    raised = std::current_exception();
    log("Raised in %@: something that is no exception\n", where);
  }
  post([impl = impl_.get(), raised] { impl->handOn(raised); }, Lane::overlay);
}

void MainThread::onQuit(Work work) {
  impl_->quitWorks.push_back(std::move(work));
}

void MainThread::quit(int code) {
  if (impl_->quitting.exchange(true)) {
    return;
  }
  impl_->exitCode = code;
  impl_->clear();
  for (const Work& work : impl_->quitWorks) {
    guard("quit", work);
  }
  QCoreApplication::exit(code);
}

int MainThread::exitCode() const {
  return impl_->exitCode;
}

bool MainThread::isQuitting() const {
  return impl_->quitting;
}

}  // namespace seedmote::platform
