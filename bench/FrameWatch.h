#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QQuickWindow>
#include <functional>

namespace seedmote::bench {

// The most between one frame and the next, in milliseconds.
struct Gap {
  double longest = 0;     // real time
  double unhindered = 0;  // the same without what the main thread waited for a processor, which others had
  double busiest = 0;     // what the main thread worked
};

// Has a window paint without a pause and measures the time from each frame to the next. Main thread.
class FrameWatch final : public QObject {
 public:
  explicit FrameWatch(QQuickWindow& window);

  // Does `act` between two frames and goes on until `done`, which is asked after each frame, and for a moment
  // more. False when that takes more than a minute.
  bool watch(const std::function<void()>& act, const std::function<bool()>& done);

  const Gap& gap() const { return gap_; }

 private:
  void frame();
  bool paintUntil(const std::function<bool()>& done);

  QQuickWindow& window_;
  bool watching_ = false;
  QElapsedTimer sinceFrame_;
  double workedBefore_ = 0;
  double waitedBefore_ = 0;
  Gap gap_;
};

}  // namespace seedmote::bench
