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
  const double worked = threadSeconds();
  if (sinceFrame_.isValid()) {
    gap_.longest = std::max(gap_.longest, static_cast<double>(sinceFrame_.nsecsElapsed()) * 1e-6);
    gap_.busiest = std::max(gap_.busiest, (worked - workedBefore_) * 1e3);
  }
  sinceFrame_.start();
  workedBefore_ = worked;
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
