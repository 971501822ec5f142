#include "bench/FrameWatch.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <algorithm>
#include <chrono>

#include "bench/Figures.h"

namespace seedmote::bench {

namespace {
constexpr std::chrono::minutes kPatience{1};
constexpr std::chrono::milliseconds kMoment{300};
}  // namespace

FrameWatch::FrameWatch(QQuickWindow& window) : window_(window) {
  connect(&window, &QQuickWindow::frameSwapped, this, [this] { frame(); });
}

void FrameWatch::frame() {
  if (!watching_) return;
  const double worked = threadSeconds() * 1e3, waited = threadWaitedSeconds() * 1e3;
  if (sinceFrame_.isValid()) {
    const double passed = static_cast<double>(sinceFrame_.nsecsElapsed()) * 1e-6;
    gap_.longest = std::max(gap_.longest, passed);
    gap_.unhindered = std::max(gap_.unhindered, passed - (waited - waitedBefore_));
    gap_.busiest = std::max(gap_.busiest, worked - workedBefore_);
  }
  sinceFrame_.start();
  workedBefore_ = worked;
  waitedBefore_ = waited;
  window_.update();
}

bool FrameWatch::paintUntil(const std::function<bool()>& done) {
  const QDeadlineTimer patience(kPatience);
  while (!done() && !patience.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return !patience.hasExpired();
}

bool FrameWatch::watch(const std::function<void()>& act, const std::function<bool()>& done) {
  const auto moment = [this] {
    const QDeadlineTimer over(kMoment);
    paintUntil([&] { return over.hasExpired(); });
  };
  sinceFrame_.invalidate();
  watching_ = true;
  window_.update();
  moment();
  gap_ = {};
  act();
  const bool good = paintUntil(done);
  moment();
  watching_ = false;
  return good;
}

}  // namespace seedmote::bench
