// Torrents are removed while the daemon starts anew at every possible moment and deals its ids anew: what
// goes is what was meant, or nothing. SEEDMOTE_ROUNDS in the environment says how many removals before the
// model, and SEEDMOTE_REAL_ROUNDS how many before the real daemon; SEEDMOTE_SEED what happens.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <random>

#include "client/RVTrans.h"
#include "json/Log.h"
#include "platform/core/CurlHttp.h"
#include "platform/core/LoginGuard.h"
#include "tests/soak/DealingDaemon.h"
#include "tests/support/RealDaemon.h"
#include "tests/support/TestServices.h"

namespace seedmote::soak {
namespace {

using support::RealDaemon;

int fromEnvironment(const char* name, int otherwise) {
  const char* const text = std::getenv(name);
  return text != nullptr ? std::atoi(text) : otherwise;
}

class RemovalSafetyTest : public testing::Test {
 protected:
  RemovalSafetyTest() {
    json::setLogFunction([](std::string_view) {});
    platform::silenceLog();
    std::printf("SEEDMOTE_SEED=%u\n", seed);
  }
  ~RemovalSafetyTest() override {
    services.main.quit();
    services.threads.join(std::chrono::minutes(1));
    RVTrans::drop();
  }
  void connect(int port) {
    services.setSetting("IP Address", "127.0.0.1");
    services.setSetting("Port", std::to_string(port).c_str());
    services.setSetting("UseSSL", "False");
    services.setSetting("Timeout", "5");
    for (int turn = 0; turn < 100 && !RVTrans::isConnected(); ++turn) {
      RVTrans::init();
      finish();
    }
    ASSERT_TRUE(RVTrans::isConnected());
  }
  // Pauses between requests that meet ever new sessions end at once.
  void finish() {
    services.spinUntil([this] {
      services.clock.advanceSeconds(1);
      return services.threads.join(std::chrono::milliseconds(2));
    });
    services.settle();
  }
  int any(int from, int to) { return std::uniform_int_distribution(from, to)(random); }
  // The list that the client has after a refresh or several; never empty.
  json::Value list() {
    deal = RVTrans::torrentDeal();
    json::Value torrents = RVTrans::getTorrentList();
    for (int turn = 0; torrents->count() == 0 || RVTrans::isOutOfStep(); ++turn) {
      if (turn > 200) throw std::runtime_error("the client never gets a list");
      services.threads.start("refresh", [] { RVTrans::updateAllTorrents(); });
      finish();
      RVTrans::catchUp();
      deal = RVTrans::torrentDeal();
      torrents = RVTrans::getTorrentList();
    }
    return torrents;
  }
  // As a tap does; maybe from a daemon that has started anew.
  void learnDetails() {
    services.threads.start("details", [] {
      try {
        RVTrans::getTorrentInfo();
      } catch (const std::out_of_range&) {  // the daemon has none under this id
      }
    });
    finish();
  }
  json::Value selectAny(const json::Value& torrents) {
    const json::ValueRef torrent =
        torrents->at(static_cast<std::size_t>(any(0, static_cast<int>(torrents->count()) - 1)));
    if (!RVTrans::selectTorrent(TorrentIdentity::of(torrent), deal)) return {};
    if (any(0, 1) == 0) learnDetails();
    return torrents.share(torrent);
  }

  const unsigned seed =
      static_cast<unsigned>(fromEnvironment("SEEDMOTE_SEED", std::random_device()() % 100000));
  std::mt19937 random{seed};
  std::uint64_t deal = 0;  // of the ids of the list
  platform::CurlHttp curl;
  platform::LoginGuard http{curl};
  support::TestServices services{&http};
};

TEST_F(RemovalSafetyTest, WhateverTheMomentNoOtherTorrentGoes) {
  const int rounds = fromEnvironment("SEEDMOTE_ROUNDS", 300);
  DealingDaemon daemon(seed, 12);
  connect(daemon.port());
  int gone = 0;
  for (int round = 0; round < rounds; ++round) {
    daemon.setUnrest(0);
    daemon.replenish();
    services.threads.start("refresh", [] { RVTrans::updateAllTorrents(); });
    finish();
    const json::Value torrents = list();
    std::set<int> allowed = daemon.numbers();
    const double unrest[] = {0, 0.1, 0.3, 0.5};
    daemon.setUnrest(unrest[any(0, 3)]);
    const int restartAt = any(0, 3);
    for (int removals = any(1, 2); removals > 0; --removals) {
      const json::Value meant = selectAny(torrents);
      if (restartAt == 0) daemon.restart();
      if (restartAt == 1) services.threads.start("background", [] { RVTrans::fetchTorrentList(); });
      if (any(0, 1) == 0) services.threads.start("poll", [] { RVTrans::getSessionStatus(); });
      RVTrans::deleteTorrent();
      if (!meant.isAbsent()) allowed.erase(meant["uploadedEver"].intValue());
    }
    if (restartAt == 2) daemon.restart();
    finish();
    const std::set<int> left = daemon.numbers();
    ASSERT_TRUE(std::includes(left.begin(), left.end(), allowed.begin(), allowed.end()))
        << "another torrent is gone in round " << round;
    gone += 12 - static_cast<int>(left.size());
  }
  std::printf("%d rounds, %d restarts, %d torrents removed\n", rounds, daemon.restarts(), gone);
  EXPECT_GT(gone, rounds / 10);
}

// Names and ids, as the real daemon deals them now.
std::set<std::string> namesOf(RealDaemon& daemon) {
  const std::string answer = daemon.rpc(R"({"method":"torrent-get","arguments":{"fields":["name"]}})");
  std::set<std::string> names;
  const std::string key = "\"name\":\"";
  for (std::size_t at = answer.find(key); at != std::string::npos; at = answer.find(key, at)) {
    at += key.size();
    names.insert(answer.substr(at, answer.find('"', at) - at));
  }
  return names;
}

TEST_F(RemovalSafetyTest, TheRealDaemonLosesNoOtherTorrent) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  const int rounds = fromEnvironment("SEEDMOTE_REAL_ROUNDS", 3);
  RealDaemon daemon;
  connect(daemon.port());
  int gone = 0;
  for (int round = 0; round < rounds; ++round) {
    const int missing = 12 - static_cast<int>(namesOf(daemon).size());
    daemon.addTorrents(std::max(1, missing), "round " + std::to_string(round));  // the folder's order changes
    services.threads.start("refresh", [] { RVTrans::updateAllTorrents(); });
    finish();
    std::set<std::string> allowed = namesOf(daemon);
    const json::Value meant = selectAny(list());
    const int phase = any(0, 3);
    if (phase == 0) daemon.restart();
    if (phase == 1) {
      daemon.restart();
      services.threads.start("poll", [] { RVTrans::getSessionStatus(); });
      finish();
    }
    RVTrans::deleteTorrent();
    if (phase >= 2) {
      std::this_thread::sleep_for(std::chrono::microseconds(any(0, 4000)));
      daemon.restart();
    }
    finish();
    if (!meant.isAbsent()) allowed.erase(std::string(meant["name"].text().value_or("")));
    const std::set<std::string> left = namesOf(daemon);
    ASSERT_TRUE(std::includes(left.begin(), left.end(), allowed.begin(), allowed.end()))
        << "another torrent is gone in round " << round;
    gone += allowed.size() + 1 - left.size();
  }
  std::printf("%d restarts of the real daemon, %d torrents removed\n", rounds, gone);
}

}  // namespace
}  // namespace seedmote::soak
