#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "client/RVTrans.h"
#include "platform/core/CurlHttp.h"
#include "tests/support/LoopbackDaemon.h"
#include "tests/support/RealDaemon.h"
#include "tests/support/Replies.h"
#include "tests/support/TestServices.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {
namespace {

using support::LoopbackDaemon;
using support::RealDaemon;
using testing::ElementsAre;
namespace replies = support::replies;

// The client over real sockets.
class WireTest : public testing::Test {
 protected:
  ~WireTest() override {
    services.main.quit();
    services.threads.join(std::chrono::minutes(1));
    RVTrans::drop();
  }

  void useDaemonAt(int port, const char* useSsl = "False") {
    services.setSetting("IP Address", "127.0.0.1");
    services.setSetting("Port", std::to_string(port).c_str());
    services.setSetting("Username", user.c_str());
    services.setSetting("Password", password.c_str());
    services.setSetting("UseSSL", useSsl);
    services.setSetting("Timeout", "20");
  }
  void attempt() {
    RVTrans::init();
    services.finishThreads();
  }
  std::string overlayText() const { return OvProgressHUD::sharedView()->text().toStdString(); }

  std::string user;
  std::string password;
  platform::CurlHttp http;
  support::TestServices services{&http};
};

TEST_F(WireTest, AStartSendsTheseRequestsOverOneConnection) {
  LoopbackDaemon daemon;
  user = "al";
  password = "ice";
  useDaemonAt(daemon.port());
  attempt();
  ASSERT_TRUE(RVTrans::isConnected());
  const std::string session = daemon.sessionId();
  std::vector<std::string> sent;
  for (const auto& request : daemon.requests()) {
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.path, "/transmission/rpc");
    EXPECT_EQ(request.header("Authorization"), "Basic YWw6aWNl");
    EXPECT_EQ(request.header("Expect"), std::nullopt);
    EXPECT_NE(request.raw.find("X-Transmission-Session-Id:"), std::string::npos);
    sent.push_back(request.header("X-Transmission-Session-Id").value_or("none") + " " + request.body);
  }
  EXPECT_THAT(
      sent, ElementsAre(R"( {"method":"session-stats"})", session + R"( {"method":"session-stats"})",
                        session + R"( {"method":"session-stats"})", session + R"( {"method":"session-get"})",
                        session + " {\n \"method\" : \"torrent-get\" ,\n\"arguments\" : {\"fields\":["
                                  "\"rateUpload\",\"rateDownload\",\"totalSize\",\"percentDone\","
                                  "\"name\",\"uploadedEver\",\"status\",\"id\",\"isFinished\","
                                  "\"leftUntilDone\"]} \n}"));
  EXPECT_EQ(daemon.connections(), 1);
}

TEST_F(WireTest, AnyCertificateIsAccepted) {
  LoopbackDaemon daemon({.tls = true});
  useDaemonAt(daemon.port(), "True");
  attempt();
  EXPECT_TRUE(RVTrans::isConnected());
}

TEST_F(WireTest, WhateverAnswersFirstTheAttemptEndsWithAMessageAndACause) {
  struct Case {
    const char* what;
    support::Reply reply;
    DaemonCondition cause;
  };
  const Case cases[] = {
      {"reset", replies::reset(), DaemonCondition::brokenOff},
      {"closed", replies::nothing(), DaemonCondition::brokenOff},
      {"garbage", replies::raw("garbage\r\n\r\n"), DaemonCondition::notTransmission},
      {"truncated", replies::truncated("{\"arg", 1000), DaemonCondition::brokenOff},
      {"empty", replies::json(""), DaemonCondition::notTransmission},
      {"401", replies::unauthorized(2), DaemonCondition::loginRefused},
      {"403 for the address", replies::addressRefused(), DaemonCondition::addressNotAllowed},
      {"403 for too many logins", replies::lockedOut(), DaemonCondition::lockedOut},
      {"421", replies::misdirected(), DaemonCondition::hostNotAllowed},
      {"500", replies::html(500, "no"), DaemonCondition::notTransmission},
      {"redirect to a file", replies::redirect(302, "file:///etc/passwd"), DaemonCondition::notTransmission},
  };
  LoopbackDaemon daemon;
  useDaemonAt(daemon.port());
  const std::string failed = "Failed to connecting daemon!\nhttp://" + daemon.address() + "\nError: Timeout";
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    daemon.setReply(c.reply);
    attempt();
    EXPECT_FALSE(RVTrans::isConnected());
    EXPECT_EQ(overlayText(), failed);
    EXPECT_EQ(RVTrans::listOutcome().condition, c.cause) << RVTrans::listOutcome().detail;
  }
  daemon.setReply(replies::conflictWithBody("no markers"));
  attempt();
  EXPECT_FALSE(RVTrans::isConnected());
  EXPECT_EQ(OvProgressHUD::sharedView()->image(), QStringLiteral("error"));
  daemon.setHandler({});
  attempt();
  EXPECT_TRUE(RVTrans::isConnected()) << "a daemon that behaves again is connected";
}

TEST_F(WireTest, QuittingEndsAHangingRequest) {
  LoopbackDaemon daemon;
  daemon.setReply(replies::hang());
  useDaemonAt(daemon.port());
  RVTrans::init();
  ASSERT_TRUE(daemon.waitForRequests(1));
  services.main.quit();
  EXPECT_TRUE(services.threads.join(std::chrono::seconds(20)));
  EXPECT_EQ(daemon.requests().size(), 1U) << "nothing more is sent";
}

TEST_F(WireTest, TheRealDaemonsListIsReadAlsoAfterItsRestart) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon;
  daemon.addTorrents(3, "größe 日本");
  useDaemonAt(daemon.port());
  attempt();
  ASSERT_TRUE(RVTrans::isConnected());
  EXPECT_EQ(RVTrans::getRPCVersion(), 16);
  const json::Value list = RVTrans::getTorrentList();
  ASSERT_EQ(list->count(), 3U);
  EXPECT_EQ(list->at(0)["name"].text()->substr(0, 8), "größe ");
  const auto session = RVTrans::getSessionStatus();
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(session->torrentCount, 3);
  RVTrans::selectTorrent(*list->at(1)["id"].exactInteger());
  EXPECT_EQ(RVTrans::getTorrentInfo()->files.size(), 1U);

  daemon.restart();
  RVTrans::updateAllTorrents();
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 0U) << "the request that meets the new session is lost";
  RVTrans::updateAllTorrents();
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 3U);
}

TEST_F(WireTest, TheRealDaemonRefusesAWrongPassword) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon({.credentials = "user:söcrét:x", .moreSettings = ""});
  user = "user";
  password = "wrong";
  useDaemonAt(daemon.port());
  attempt();
  EXPECT_FALSE(RVTrans::isConnected());
  EXPECT_EQ(RVTrans::listOutcome().condition, DaemonCondition::loginRefused);
  password = "söcrét:x";
  useDaemonAt(daemon.port());
  attempt();
  EXPECT_TRUE(RVTrans::isConnected());
}

}  // namespace
}  // namespace seedmote
