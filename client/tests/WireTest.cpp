#include <gmock/gmock.h>

#include "client/tests/FaultHarness.h"
#include "platform/core/BackgroundPoll.h"

namespace seedmote::faults {
namespace {

using testing::ElementsAre;

class WireTest : public testing::Test {
 protected:
  Harness house;
  LoopbackDaemon& daemon = house.daemon;
  support::TestServices& services = house.services;
};

TEST_F(WireTest, AStartSendsTheseRequestsOverOneConnection) {
  house.connect();
  const std::string session = daemon.sessionId();
  std::vector<std::string> sent;
  for (const auto& request : daemon.requests()) {
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.path, "/transmission/rpc");
    EXPECT_EQ(request.header("Authorization"), "Basic dXNlcjpzZWNyZXQ=");
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

TEST_F(WireTest, ATimersPollGivesUpARefusedLoginUntilTheUserActs) {
  daemon.model().setCredentials("user:secret");
  house.connect();
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

}  // namespace
}  // namespace seedmote::faults
