#include "platform/core/BackgroundPoll.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <stdexcept>
#include <thread>

#include "tests/support/TestServices.h"

namespace seedmote::platform {
namespace {

class BackgroundPollTest : public testing::Test {
 protected:
  BackgroundPoll::Job job() {
    return [this]() -> BackgroundPoll::Apply {
      ++started;
      while (!released) {
        std::this_thread::yield();
      }
      return [this] { ++applied; };
    };
  }

  std::atomic<int> started{0};
  std::atomic<bool> released{false};
  int applied = 0;
  support::TestServices services;
};

TEST_F(BackgroundPollTest, WhatItBroughtWaitsWhileTheMainThreadWaits) {
  BackgroundPoll poll(services.main, services.threads, "statistics", job());
  poll.tick();
  released = true;
  services.main.wait([this] { services.threads.join(std::chrono::minutes(1)); });
  EXPECT_EQ(applied, 0);
  services.settle();
  EXPECT_EQ(applied, 1);
}

TEST_F(BackgroundPollTest, ARequestThatRaisesOrOutlivesItsOwnerAppliesNothing) {
  std::optional<BackgroundPoll> poll(std::in_place, services.main, services.threads, "statistics", job());
  poll->tick();
  poll.reset();
  released = true;
  services.finishThreads();
  EXPECT_EQ(applied, 0);
  int tries = 0;
  int told = 0;
  services.main.setRaisedHandler([&told](const std::exception_ptr&) { ++told; });
  BackgroundPoll broken(services.main, services.threads, "broken", [&]() -> BackgroundPoll::Apply {
    ++tries;
    throw std::runtime_error("odd");
  });
  broken.tick();
  services.finishThreads();
  broken.tick();
  services.finishThreads();
  EXPECT_EQ(tries, 2) << "the next turn tries again";
  EXPECT_EQ(told, 0) << "somebody else's message must not end";
}

}  // namespace
}  // namespace seedmote::platform
