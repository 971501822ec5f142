// The longest time that the window goes without a frame: the whole program but main() in this process, its
// own clock, a prepared daemon in another, and a window that is made to paint without a pause, so that
// whatever holds the main thread shows as a longer way from one frame to the next. bench/run.sh starts the X
// server; the log goes to standard error, which wants to be a file.
//
//   frame-bench [ROUNDS]   as a section of docs/performance.md
#include <QGuiApplication>
#include <QPointingDevice>
#include <QtTest/QTest>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "app/RVRightBarController.h"
#include "bench/Figures.h"
#include "bench/FrameWatch.h"
#include "bench/Shell.h"
#include "json/Log.h"
#include "platform/core/Log.h"

namespace seedmote::bench {

namespace {

constexpr int kFilters[] = {4, 5, 2, 3, 1};
constexpr double kRefreshEvery = 1;  // seconds
constexpr QPoint kFinger{400, 600};
constexpr int kStroke = -50;  // points from one of the finger's moves to the next
constexpr int kMoves = 10;
constexpr int kMoveEvery = 8;  // milliseconds
constexpr int kFlickLasts = 2000;
constexpr int kIdle = 1000;
constexpr double kFarEnough = 1000;  // points that a flick must have come at least

struct Limits {
  const char* reach = "";
  const char* aim = "";
};
constexpr Limits kLimits{"33 ms", "16 ms"};

class Frames {
 public:
  Frames(Section& section, int torrents, int rounds)
      : section_(section),
        rounds_(rounds),
        of_(", " + std::to_string(torrents) + " torrents"),
        shell_(torrents),
        watch_(shell_.delegate().window()) {
    QObject::connect(&shell_.table(), &platform::TableView::laidOut, &watch_, [this] { laidOut_ = true; });
  }

  void measureAll() {
    measure("nothing but painting", [this](int) { watchFor(kIdle, [] {}); }, {});
    measure("filter change", [this](int round) { change(kFilters[round % std::size(kFilters)]); });
    shell_.delegate().filterBarController().doFilter(1);
    runFor(1);
    measure("refresh", [this](int) { refresh(); });
    measure("fetch by --refresh", [this](int) { fetch(); });
    measure("flick", [this](int) { flick(); });
  }

 private:
  void measure(const std::string& what, const std::function<void(int)>& step, Limits limits = kLimits) {
    std::vector<double> longest, unhindered, busiest;
    for (int round = 0; round < rounds_; ++round) {
      step(round);
      longest.push_back(watch_.gap().longest);
      unhindered.push_back(watch_.gap().unhindered);
      busiest.push_back(watch_.gap().busiest);
    }
    const auto both = [](const std::vector<double>& of) {
      return format("%.1f", median(of)) + format(" (%.1f)", *std::max_element(of.begin(), of.end()));
    };
    section_.row(
        what + of_, limits.reach, limits.aim, both(longest) + " ms",
        both(unhindered) + " without waiting for a processor; " + both(busiest) + " of work at most");
  }

  void watch(const std::function<void()>& act, const std::function<bool()>& done) {
    if (!watch_.watch(act, done)) throw std::runtime_error("it takes too long");
  }

  void watchFor(int milliseconds, const std::function<void()>& act) {
    QElapsedTimer timer;
    timer.start();
    watch(act, [&] { return timer.elapsed() > milliseconds; });
  }

  void change(int filter) {
    watch([&] { shell_.delegate().filterBarController().doFilter(filter); },
          [&] { return !shell_.table().isReloading(); });
  }

  // What is fetched is listed with the list's next look.
  void refresh() {
    laidOut_ = false;
    watch([&] { shell_.delegate().mainViewController().rightBarViewController()->doRefresh(); },
          [&] { return laidOut_; });
  }

  void fetch() {
    laidOut_ = false;
    watch([&] { shell_.delegate().refreshEvery(kRefreshEvery); }, [&] { return laidOut_; });
    shell_.delegate().refreshEvery(std::nullopt);
    runFor(1);
  }

  // Where the machine is busy a finger may come too late with its last move to throw anything.
  void flick() {
    for (int tries = 0; tries < 10; ++tries) {
      const double before = shell_.table().contentOffset();
      watchFor(kFlickLasts, [this] { stroke(); });
      if (shell_.table().contentOffset() - before > kFarEnough) return;
    }
    throw std::runtime_error("a flick does not move");
  }

  void stroke() {
    static QPointingDevice* const finger = QTest::createTouchDevice();
    QQuickWindow& window = shell_.delegate().window();
    QTest::touchEvent(&window, finger).press(0, kFinger, &window);
    for (int move = 1; move <= kMoves; ++move) {
      QTest::qWait(kMoveEvery);
      QTest::touchEvent(&window, finger).move(0, kFinger + QPoint(0, kStroke * move), &window);
    }
    QTest::touchEvent(&window, finger).release(0, kFinger + QPoint(0, kStroke * kMoves), &window);
  }

  Section& section_;
  const int rounds_;
  const std::string of_;
  Shell shell_;
  FrameWatch watch_;
  bool laidOut_ = false;
};

int run(int rounds) {
  json::setLogFunction([](std::string_view text) { platform::log("%@", text); });
  Section section(
      "Frames",
      "The longest way from one frame to the next while a window that paints without a pause is used, in "
      "milliseconds: real time; the same without what the main thread waited for a processor that other programs "
      "had; and the most that it worked itself from one frame to the next. The row without an action shows what "
      "this way of measuring brings by itself. Software renderer, Xvfb, log to a file. Medians, and in brackets "
      "the worst, of " +
          std::to_string(rounds) + " rounds.");
  for (const int torrents : {10'000, 100'000}) {
    Frames(section, torrents, rounds).measureAll();
  }
  return 0;
}

}  // namespace

}  // namespace seedmote::bench

int main(int argc, char** argv) {
  seedmote::platform::MainThread::prepareProcess();
  const QGuiApplication application(argc, argv);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  try {
    return seedmote::bench::run(argc > 1 ? std::atoi(argv[1]) : 7);
  } catch (const std::exception& problem) {
    std::cerr << "frame-bench: " << problem.what() << '\n';
    return 1;
  }
}
