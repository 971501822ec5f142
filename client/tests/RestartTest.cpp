#include <gmock/gmock.h>

#include <atomic>
#include <mutex>
#include <thread>

#include "client/SessionWatcher.h"
#include "client/tests/ClientFixture.h"

namespace seedmote {
namespace {

using platform::HttpAnswer;
using platform::HttpError;
using platform::HttpRequest;

// A daemon that can be started anew, with its torrents under other ids.
class RestartTest : public ClientFixture {
 protected:
  RestartTest() {
    services.scripted.setHandler([this](const HttpRequest& request) { return reply(request); });
  }

  HttpAnswer reply(const HttpRequest& request) {
    const std::lock_guard lock(mutex);
    const bool isRemoval = request.body.find("torrent-remove") != std::string::npos;
    if (isRemoval && restartBeforeRemoval) {
      session = "second";
      torrents = afterRestart;
      restartBeforeRemoval = false;
    }
    if (request.headers.at(0).value != session) return page(409, sessionPage(session));
    if (request.body == kStats) return page(200, kStatsAnswer);
    if (request.body == kInfo) return page(200, kInfoAnswer);
    const bool isQuestion = request.body.find("\"ids\":[") != std::string::npos;
    if (isRemoval) ++removals;
    if (isQuestion) ++questions;
    if (isQuestion && questionAnswer) return *questionAnswer;
    return page(200, R"({"arguments":{"torrents":)" + torrents + R"(},"result":"success"})");
  }
  void restart() {
    const std::lock_guard lock(mutex);
    session = "second";
    torrents = afterRestart;
  }

  std::mutex mutex;
  std::string session = "first";
  const std::string beta = R"({"id":2,"name":"beta","totalSize":9})";
  const std::string gamma = R"({"id":2,"name":"gamma","totalSize":9})";
  std::string torrents = "[" + beta + "]";
  std::string afterRestart = torrents;
  bool restartBeforeRemoval = false;
  std::optional<HttpAnswer> questionAnswer;
  int removals = 0;  // carried out
  int questions = 0;
};

TEST_F(RestartTest, ARemovalNeverHitsAnotherTorrent) {
  struct Case {
    const char* what;
    std::string afterRestart;
    std::optional<HttpAnswer> question;
    int removals;
    const char* message;
  };
  const std::string refused =
      "Not deleted!\nThe daemon has numbered its torrents anew. Please select the torrent again.";
  const std::string gone = "Not deleted!\nThe daemon no longer has this torrent.";
  const Case cases[] = {
      {"the same torrent", "[" + beta + "]", {}, 1, "Deleted!!"},
      {"another one", "[" + gamma + "]", {}, 0, refused.c_str()},
      {"another size", R"([{"id":2,"name":"beta","totalSize":10}])", {}, 0, refused.c_str()},
      {"none", "[]", {}, 0, gone.c_str()},
      {"no answer to the question", "[" + beta + "]", failure(HttpError::timedOut), 1, "Deleted!!"},
      {"an answer without torrents", "[" + beta + "]", page(200, "{}"), 1, "Deleted!!"},
  };
  for (const bool restartFirst : {true, false}) {
    for (const Case& c : cases) {
      SCOPED_TRACE(std::string(c.what) + (restartFirst ? ", known before" : ", met by the removal"));
      RVTrans::drop();
      session = "first";
      torrents = "[" + beta + "]";
      afterRestart = c.afterRestart;
      questionAnswer = c.question;
      removals = questions = 0;
      connect();
      RVTrans::selectTorrent(2);
      if (restartFirst) {
        restart();
        RVTrans::getSessionStatus();  // meets the new session id
      } else {
        restartBeforeRemoval = true;
      }
      RVTrans::deleteTorrent();
      services.finishThreads();
      EXPECT_EQ(questions, 1);
      EXPECT_EQ(removals, c.removals);
      EXPECT_EQ(overlayText(), c.message);
      EXPECT_EQ(bodies().back().find("torrent-remove"), std::string::npos) << "the list comes last";
    }
  }
}

TEST_F(RestartTest, AListThatComesBetweenTheTapAndTheRemovalChangesNothing) {
  connect();
  RVTrans::selectTorrent(2);
  afterRestart = "[" + gamma + "]";
  restart();
  // The message is laid out before the removal's thread starts.
  OvProgressHUD::sharedView()->setTextMeasure([](const QString&, QSizeF) {
    std::thread([] { RVTrans::fetchTorrentList(); }).join();
    return OvProgressHUD::MeasuredText();
  });
  RVTrans::deleteTorrent();
  OvProgressHUD::sharedView()->setTextMeasure(nullptr);
  services.finishThreads();
  EXPECT_EQ(removals, 0);
  EXPECT_NE(overlayText().find("Not deleted!"), std::string::npos);
}

// The watcher.

class SessionWatcherTest : public RestartTest {
 protected:
  void pass(double seconds) {
    services.clock.advanceSeconds(seconds);
    services.finishThreads();
  }

  SessionWatcher watcher;
};

TEST_F(SessionWatcherTest, WithNothingWrongNothingIsSent) {
  pass(40);
  EXPECT_TRUE(bodies().empty()) << "not connected";
  connect();
  const std::size_t before = bodies().size();
  for (int i = 0; i < 20; ++i) pass(2);
  EXPECT_EQ(bodies().size(), before);
}

TEST_F(SessionWatcherTest, ANewSessionsListIsFetchedAtMostEveryHalfMinute) {
  connect();
  RVTrans::selectTorrent(2);
  afterRestart = R"([{"id":1,"name":"alpha","totalSize":1},)" + beta + "]";
  restart();
  RVTrans::updateAllTorrents();
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 0U);
  RVTrans::isNewData();
  services.settle();
  const QString message = OvProgressHUD::sharedView()->text();
  pass(2);
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 2U);
  EXPECT_TRUE(RVTrans::isNewData());
  EXPECT_EQ(RVTrans::getTorrentSelection(), 2) << "the torrent still has its name and size";
  EXPECT_EQ(OvProgressHUD::sharedView()->text(), message);

  const std::size_t before = bodies().size();
  {
    const std::lock_guard lock(mutex);
    session = "third";
  }
  RVTrans::getSessionStatus();
  const std::size_t asked = bodies().size();
  EXPECT_GT(asked, before);
  pass(28);
  EXPECT_EQ(bodies().size(), asked);
  pass(2);
  EXPECT_EQ(bodies().size(), asked + 1);
}

// A daemon that has just started answers before it has loaded its torrents.
TEST_F(SessionWatcherTest, AnEmptyListOfANewSessionIsLookedAtAgain) {
  connect();
  afterRestart = "[]";
  restart();
  RVTrans::updateAllTorrents();
  pass(2);
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 0U);
  RVTrans::isNewData();
  torrents = "[" + beta + "]";
  pass(2);
  EXPECT_TRUE(RVTrans::isNewData());
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 1U);

  session = "third";
  torrents = "[]";
  RVTrans::getSessionStatus();
  pass(30);
  const std::size_t before = bodies().size();
  for (int i = 0; i < 60; ++i) pass(2);
  EXPECT_EQ(bodies().size(), before + 5) << "it has none indeed";
}

TEST_F(SessionWatcherTest, WhatAConnectedClientLacksIsFetched) {
  bool broken = true;
  services.scripted.setHandler([&](const HttpRequest& request) {
    if (broken && request.body == kInfo) return failure(HttpError::timedOut);
    return reply(request);
  });
  connect();
  EXPECT_EQ(RVTrans::getRPCVersion(), -1);
  RVTrans::isNewData();
  broken = false;
  pass(2);
  EXPECT_EQ(RVTrans::getRPCVersion(), 16);
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 1U);
  EXPECT_TRUE(RVTrans::isNewData()) << "the rows' states were read without it";

  // A new session whose first answer is no text: the client knows no session id at all.
  enqueue({platform::ScriptedHttp::answer(409, "\xff"), failure(HttpError::refused)});
  RVTrans::updateAllTorrents();
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 0U);
  pass(30);
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 1U);
}

TEST_F(SessionWatcherTest, AConnectedClientWithoutASessionHeals) {
  // Two attempts: the second one's request goes out under the session id that the first one has just learnt,
  // is accepted, and takes the id away from the first one when that has connected.
  std::atomic<int> stats{0};
  services.scripted.setHandler([&](const HttpRequest& request) {
    const int turn = request.body == kStats ? ++stats : 0;
    if (turn == 2) {
      RVTrans::init();
      while (stats < 3) std::this_thread::yield();
    }
    if (turn == 3) {
      while (!lines.contains("getDaemonInfo\n")) std::this_thread::yield();
    }
    if (request.body == kInfo) {
      while (!lines.contains("Failed to connect deamon\n")) std::this_thread::yield();
    }
    return reply(request);
  });
  RVTrans::init();
  services.finishThreads();
  ASSERT_TRUE(RVTrans::isConnected());
  ASSERT_TRUE(RVTrans::isUpdating()) << "the flag stands since the update without a session";
  ASSERT_EQ(RVTrans::getTorrentList()->count(), 0U);
  pass(2);
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 1U);
  EXPECT_FALSE(RVTrans::isUpdating());
  EXPECT_TRUE(RVTrans::isNewData());
  ASSERT_NE(RVTrans::getSessionStatus(), nullptr);
  EXPECT_EQ(RVTrans::getSessionStatus()->torrentCount, 7);
}

}  // namespace
}  // namespace seedmote
