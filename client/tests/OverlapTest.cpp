// Attempts to connect, removals, messages and refreshes at once, while the daemon changes its session and
// drops connections. Worth most under the thread sanitizer.
#include <gtest/gtest.h>

#include <random>

#include "client/RVUtility.h"
#include "client/SessionWatcher.h"
#include "client/tests/FaultHarness.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote::faults {
namespace {

class OverlapTest : public testing::Test {
 protected:
  void onAThread(std::function<void()> work) { house.services.threads.start("overlap", std::move(work)); }

  void doOneThing() {
    switch (random() % 12) {
      case 0:
        return RVTrans::init();
      case 1:
        return onAThread([] { RVTrans::updateAllTorrents(); });
      case 2:
        return RVTrans::updateAllTorrents();
      case 3:
        return RVTrans::deleteTorrent();
      case 4:
        return RVUtility::showMessage("Something else");
      case 5:
        return onAThread([] { RVTrans::getSessionStatus(); });
      case 6:
        return onAThread([] { RVTrans::fetchTorrentList(); });
      case 7:
        return RVTrans::selectTorrent(7);
      case 8:
        return onAThread([] { RVTrans::getTorrentInfo(); });
      case 9:
        return house.daemon.changeSessionId();
      case 10:
        return house.daemon.dropConnections();
      default:
        return OvProgressHUD::dismissWithSuccess("Done");
    }
  }

  // A re-send may pause, so time has to pass.
  void finish() {
    house.services.spinUntil([this] {
      house.services.clock.advanceSeconds(0.1);
      return house.services.threads.join(std::chrono::milliseconds(1));
    });
    house.services.settle();
  }

  // Long enough for the watcher to make good what was left.
  void letAllHeal() {
    for (int second = 0; second < 70; second += 2) {
      house.services.clock.advanceSeconds(2);
      finish();
    }
  }

  Harness house;
  SessionWatcher watcher;
  std::mt19937 random{20261121};
};

TEST_F(OverlapTest, WhateverOverlapsTheClientEndsUpWithTheDaemonsList) {
  for (int i = 0; i < 400; ++i) {
    house.services.main.guard("the overlap", [this] { doOneThing(); });
    house.services.clock.advanceSeconds(0.1);
    if (random() % 3 == 0) house.services.settle();
  }
  finish();
  RVTrans::init();
  finish();
  letAllHeal();
  EXPECT_FALSE(RVTrans::isUpdating());
  RVTrans::updateAllTorrents();  // the last one may have met a dropped connection
  finish();
  EXPECT_TRUE(RVTrans::isConnected());
  EXPECT_FALSE(RVTrans::isOutOfStep());
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 1U);
  EXPECT_EQ(house.services.threads.running(), 0);
}

}  // namespace
}  // namespace seedmote::faults
