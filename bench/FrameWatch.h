#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QQuickWindow>
#include <functional>

namespace seedmote::bench {

// What came between one frame and the next, in milliseconds: the longest in real time, which other programs
// make longer, and the most that the main thread itself worked there, which they do not.
struct Gap {
  double longest = 0;
  double busiest = 0;
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
  Gap gap_;
};

}  // namespace seedmote::bench
