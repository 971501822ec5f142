#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QQuickWindow>
#include <functional>

namespace seedmote::bench {

// The longest time that a window went without a frame, and what its thread worked in that time: the rest of
// it is other programs'.
struct Gap {
  double milliseconds = 0;
  double worked = 0;  // processor time of the main thread, milliseconds
};

// Has a window paint without a pause and measures the time from each frame to the next. Main thread.
class FrameWatch final : public QObject {
 public:
  explicit FrameWatch(QQuickWindow& window);

  // Does `act` between two frames and goes on until `done`, which is asked after each frame, and for a moment
  // more. False when that takes more than a minute.
  bool watch(const std::function<void()>& act, const std::function<bool()>& done);

  const Gap& longest() const { return longest_; }

 private:
  void frame();
  bool paintUntil(const std::function<bool()>& done);

  QQuickWindow& window_;
  bool watching_ = false;
  QElapsedTimer sinceFrame_;
  double workedBefore_ = 0;
  Gap longest_;
};

}  // namespace seedmote::bench
