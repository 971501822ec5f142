#include "platform/core/MainThread.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "platform/core/Log.h"
#include "tests/support/TestServices.h"

namespace seedmote::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Lane = MainThread::Lane;
using From = MainThread::From;

class MainThreadTest : public testing::Test {
 protected:
  // Holds the main thread in a wait until `over` says so on the worker.
  void waitUntil(const std::function<bool()>& over) {
    main.wait([&] {
      while (!over()) {
        std::this_thread::yield();
      }
    });
  }
  std::function<void()> note(const std::string& what) {
    return [this, what] { happened.push_back(what); };
  }

  support::TestServices services;
  MainThread& main = services.main;
  Threads& threads = services.threads;
  std::vector<std::string> happened;
};

TEST_F(MainThreadTest, WaitGivesBackWhatTheJobReturnedOrRaised) {
  std::thread::id worker;
  EXPECT_EQ(main.wait([&] {
    worker = std::this_thread::get_id();
    return std::string("answer");
  }),
            "answer");
  EXPECT_NE(worker, std::this_thread::get_id());
  EXPECT_THROW(main.wait([]() -> int { throw std::out_of_range("no row"); }), std::out_of_range);
  EXPECT_FALSE(main.isWaiting());
  std::thread([&] {
    main.wait([&] { worker = std::this_thread::get_id(); });
    EXPECT_EQ(worker, std::this_thread::get_id()) << "on another thread the job runs right there";
  }).join();
}

TEST_F(MainThreadTest, AWaitInsideAWaitIsRefused) {
  std::string refused;
  std::atomic<bool> tried{false};
  main.post(
      [&] {
        try {
          main.wait([] {});
        } catch (const std::logic_error& problem) {
          refused = problem.what();
        }
        tried = true;
      },
      Lane::overlay);
  waitUntil([&] { return tried.load(); });
  EXPECT_EQ(refused, "the main thread waits already");
}

TEST_F(MainThreadTest, PostsRunInOrderAcrossLanesAndThreads) {
  std::thread([&] {
    main.post(note("one"));
    main.post(note("two"), Lane::overlay);
    main.post(note("three"));
  }).join();
  EXPECT_THAT(happened, IsEmpty());
  services.settle();
  EXPECT_THAT(happened, ElementsAre("one", "two", "three"));
}

TEST_F(MainThreadTest, WhileItWaitsOnlyTheOverlayIsServed) {
  std::atomic<bool> overlayServed{false};
  main.post(note("ordinary"));
  main.enter("tap", note("tap"), From::layout);
  main.post(
      [&] {
        happened.push_back("overlay");
        main.enter("entry from code", note("entry from code"));
        overlayServed = true;
      },
      Lane::overlay);
  waitUntil([&] { return overlayServed.load(); });
  EXPECT_THAT(happened, ElementsAre("overlay"));
  services.settle();
  EXPECT_THAT(happened, ElementsAre("overlay", "ordinary", "tap", "entry from code"));
}

TEST_F(MainThreadTest, EntriesFromCodeRunAtOnceAndThoseFromLayoutsOneByOneOnACleanStack) {
  main.enter("code", note("code"));
  main.enter(
      "first",
      [&] {
        happened.push_back("first begins");
        main.wait([] {});
        happened.push_back("first ends");
      },
      From::layout);
  main.enter("second", note("second"), From::layout);
  EXPECT_THAT(happened, ElementsAre("code"));
  services.settle();
  EXPECT_THAT(happened, ElementsAre("code", "first begins", "first ends", "second"));
}

TEST_F(MainThreadTest, WhatAnEntryRaisesIsLoggedAndHandedOn) {
  LogRecorder lines;
  int raised = 0;
  main.setRaisedHandler([&](const std::exception_ptr& problem) {
    ++raised;
    EXPECT_THROW(std::rethrow_exception(problem), std::out_of_range);
  });
  main.enter("a row", [] { throw std::out_of_range("no such row"); });
  services.settle();
  EXPECT_EQ(raised, 1);
  EXPECT_TRUE(lines.contains("Raised in a row: no such row\n"));
}

TEST_F(MainThreadTest, QuittingEndsAWaitAndDropsWhatIsQueued) {
  main.post(note("dropped"));
  main.post([&] { main.quit(); }, Lane::overlay);
  const bool slept = main.wait([&] { return threads.sleep(3600); });
  EXPECT_FALSE(slept);
  EXPECT_TRUE(main.isQuitting());
  main.post(note("too late"));
  main.enter("too late", note("too late"));
  QCoreApplication::processEvents();
  EXPECT_THAT(happened, IsEmpty());
}

class TimersTest : public MainThreadTest {
 protected:
  ManualClock& clock = services.clock;
  Timers& timers = services.timers;
};

TEST_F(TimersTest, FireWhenTheirTimeHasComeAndMakeUpForNoMissedTurn) {
  auto once = timers.once("once", 3, note("once"));
  auto often = timers.repeat("often", 2, note("often"));
  clock.advanceSeconds(1.9);
  EXPECT_THAT(happened, IsEmpty());
  clock.advanceSeconds(0.1);
  clock.advanceSeconds(1);
  clock.advanceSeconds(1);
  EXPECT_THAT(happened, ElementsAre("often", "once", "often"));
  EXPECT_FALSE(once.isActive());
  EXPECT_TRUE(often.isActive());
  clock.advanceSeconds(7);
  clock.advanceSeconds(0.5);
  EXPECT_EQ(happened.size(), 4U);
  clock.advanceSeconds(0.5);
  EXPECT_EQ(happened.size(), 5U) << "the rhythm is kept";
}

TEST_F(TimersTest, AStoppedOrReplacedTimerNeverFires) {
  auto timer = timers.once("first", 1, note("first"));
  timer = timers.once("second", 1, note("second"));
  auto stopped = timers.repeat("stopped", 1, note("stopped"));
  stopped.stop();
  clock.advanceSeconds(5);
  EXPECT_THAT(happened, ElementsAre("second"));
}

TEST_F(TimersTest, DuringAWaitScreensAreHeldForOneTurnAndTheOverlayIsNot) {
  auto screen = timers.repeat("screen", 2, note("screen"));
  auto overlay = timers.once("overlay", 2, note("overlay"), Lane::overlay);
  std::atomic<bool> jumped{false};
  main.post(
      [&] {
        for (int turn = 0; turn < 5; ++turn) {
          clock.advanceSeconds(2);
        }
        jumped = true;
      },
      Lane::overlay);
  waitUntil([&] { return jumped.load(); });
  EXPECT_THAT(happened, ElementsAre("overlay"));
  services.settle();
  EXPECT_THAT(happened, ElementsAre("overlay", "screen"));
}

TEST_F(TimersTest, WhatATimerRaisesLeavesTheOthersAlone) {
  auto broken = timers.repeat("broken", 1, [] { throw std::runtime_error("odd"); });
  auto sound = timers.repeat("sound", 1, note("sound"));
  clock.advanceSeconds(1);
  clock.advanceSeconds(1);
  EXPECT_THAT(happened, ElementsAre("sound", "sound"));
}

TEST_F(TimersTest, TheOverlaysTimersRunWhileTheCallbackOfAScreensTimerWaits) {
  SystemClock real;
  Timers realTimers(real, main);
  std::atomic<bool> faded{false};
  auto overlay = realTimers.once(
      "overlay", 0.002, [&] { faded = true; }, Lane::overlay);
  bool waited = false;
  auto screen = realTimers.once("screen", 0.001, [&] {
    waitUntil([&] { return faded.load(); });
    waited = true;
  });
  services.spinUntil([&] { return waited; });
}

// Both have their turn in the same moment, as on a busy machine.
TEST_F(TimersTest, TheOverlaysTimersRunWhileWhatWasDueBeforeThemWaits) {
  std::atomic<bool> faded{false};
  const auto screen = timers.once("screen", 1, [&] { waitUntil([&] { return faded.load(); }); });
  const auto overlay = timers.once(
      "overlay", 2, [&] { faded = true; }, Lane::overlay);
  services.clock.advanceSeconds(3);
  EXPECT_TRUE(faded);
}

TEST_F(MainThreadTest, ThreadsAreNamedCountedAndEndTheirSleepAtStop) {
  std::atomic<bool> slept{true};
  std::atomic<bool> asleep{false};
  threads.start("a-name-longer-than-the-kernel-takes", [&] {
    asleep = true;
    slept = threads.sleep(3600);
  });
  while (!asleep) {
    std::this_thread::yield();
  }
  EXPECT_EQ(threads.running(), 1);
  EXPECT_FALSE(threads.join(std::chrono::milliseconds(1)));
  threads.stop();
  EXPECT_TRUE(threads.join(std::chrono::seconds(30)));
  EXPECT_FALSE(slept);
  threads.start("too late", note("too late"));
  EXPECT_EQ(threads.running(), 0);
  EXPECT_THAT(happened, IsEmpty());
}

TEST_F(MainThreadTest, ASleepCanBeCutShortByItsOwnCondition) {
  std::atomic<bool> over{false};
  std::atomic<bool> returned{false};
  threads.start("sleeper", [&] { returned = threads.sleepUnless(1, [&] { return over.load(); }); });
  while (services.clock.sleeping() == 0) {
    std::this_thread::yield();
  }
  over = true;
  threads.wakeSleepers();
  EXPECT_TRUE(threads.join(std::chrono::seconds(30)));
  EXPECT_TRUE(returned);
}

}  // namespace
}  // namespace seedmote::platform
