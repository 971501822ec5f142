#include "platform/core/Origin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

#include "platform/core/BackgroundPoll.h"
#include "tests/support/TestServices.h"

namespace seedmote::platform {
namespace {

using testing::Pair;
using testing::UnorderedElementsAre;

class OriginTest : public testing::Test {
 protected:
  void note(const std::string& where) {
    const std::lock_guard lock(mutex);
    seen[where] = currentOrigin();
  }
  std::function<void()> noting(const std::string& where) {
    return [this, where] { note(where); };
  }
  // Works in as many ways as there are.
  void act() {
    note("itself");
    services.threads.start("thread", [this] {
      note("thread");
      services.threads.start("thread's thread", noting("thread's thread"));
    });
    poll.tick();
    services.main.enter("code", noting("code"));
    services.main.enter("touch", noting("touch"), MainThread::From::layout);
    services.main.post(noting("post"));
    services.main.post(noting("overlay's post during the wait"), MainThread::Lane::overlay);
    services.main.wait([this] {
      note("job");
      while (!noted("overlay's post during the wait")) {
        std::this_thread::yield();
      }
    });
    note("itself, after the wait");
  }
  bool noted(const std::string& where) {
    const std::lock_guard lock(mutex);
    return seen.contains(where);
  }

  support::TestServices services;
  BackgroundPoll poll{services.main, services.threads, "poll", [this] {
                        note("poll");
                        return noting("what the poll brought");
                      }};
  std::mutex mutex;
  std::map<std::string, Origin> seen;
};

TEST_F(OriginTest, FollowsATimersWorkButNoTouchAndNoPost) {
  for (const Origin origin : {Origin::timer, Origin::user, Origin::timer}) {
    seen.clear();
    if (origin == Origin::timer) {
      const auto timer = services.timers.once("timer", 1, [this] { act(); });
      services.clock.advanceSeconds(1);
    } else {
      services.main.enter(
          "tap", [this] { act(); }, MainThread::From::layout);
    }
    services.settle();
    services.finishThreads();
    EXPECT_THAT(seen, UnorderedElementsAre(Pair("itself", origin), Pair("thread", origin),
                                           Pair("thread's thread", origin), Pair("poll", origin),
                                           Pair("what the poll brought", origin), Pair("code", origin),
                                           Pair("touch", Origin::user), Pair("post", Origin::user),
                                           Pair("overlay's post during the wait", Origin::user),
                                           Pair("job", origin), Pair("itself, after the wait", origin)));
    EXPECT_EQ(currentOrigin(), Origin::user);
  }
}

TEST_F(OriginTest, AHeldTimerAndOneThatRaisesKeepToThemselves) {
  const auto held = services.timers.once("held", 1, noting("held"));
  const auto odd = services.timers.once("odd", 2, [] { throw std::runtime_error("odd"); });
  services.main.wait([this] { services.clock.advanceSeconds(1); });
  services.settle();
  services.clock.advanceSeconds(1);
  EXPECT_THAT(seen, UnorderedElementsAre(Pair("held", Origin::timer)));
  EXPECT_EQ(currentOrigin(), Origin::user);
}

}  // namespace
}  // namespace seedmote::platform
