#include <gmock/gmock.h>

#include "client/tests/WireFixture.h"
#include "platform/core/BackgroundPoll.h"
#include "tests/support/LoopbackDaemon.h"
#include "tests/support/Replies.h"

namespace seedmote {
namespace {

using support::LoopbackDaemon;
using testing::ElementsAre;
namespace replies = support::replies;

class WireTest : public WireFixture {};

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
      {"reset", replies::reset(), DaemonCondition::closedUnanswered},
      {"closed", replies::nothing(), DaemonCondition::closedUnanswered},
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

TEST_F(WireTest, ATimersPollGivesUpARefusedLoginUntilTheUserActs) {
  LoopbackDaemon daemon;
  user = "user";
  password = "secret";
  daemon.model().setCredentials("user:secret");
  useDaemonAt(daemon.port());
  attempt();
  daemon.model().setCredentials("user:another");
  daemon.forgetRequests();
  platform::BackgroundPoll poll(services.main, services.threads, "statistics", [] {
    RVTrans::getSessionStatus();
    return nullptr;
  });
  const auto timer = services.timers.repeat("statistics", 10, [&poll] { poll.tick(); });
  const auto pass = [this](int turns) {
    for (int turn = 0; turn < turns; ++turn) {
      services.clock.advanceSeconds(10);
      services.finishThreads();
    }
  };
  pass(6);
  EXPECT_EQ(daemon.requests().size(), 3U);
  RVTrans::updateAllTorrents();
  EXPECT_EQ(daemon.requests().size(), 4U) << "the user's own request is sent";
  EXPECT_EQ(RVTrans::listOutcome().condition, DaemonCondition::loginRefused);
  pass(6);
  EXPECT_EQ(daemon.requests().size(), 6U);
  daemon.model().setCredentials("user:secret");
  RVTrans::updateAllTorrents();
  pass(2);
  EXPECT_EQ(daemon.requests().size(), 9U) << "a login that is taken ends it";
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

}  // namespace
}  // namespace seedmote
