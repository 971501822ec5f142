#include "client/_RVTrans.h"
#include "client/tests/ClientFixture.h"

namespace seedmote {
namespace {

using platform::HttpError;

class ConnectionTest : public ClientFixture {};

// The lines of one request that is sent and answered.
std::vector<std::string> exchangeLines(const std::string& text, const std::string& body, const char* status) {
  return {"sendCommandStringRetry = 30 Sec",
          "sendCommandString\n",
          "soapMessage = " + text + "\n",
          "url = http://10.0.0.7:9091/transmission/rpc\n",
          "real timeout = 30.000000\n",
          "sending... data by sendSynchronousRequest\n",
          "sent data by sendSynchronousRequest\n",
          "resString = \n" + body + "\n",
          std::string("satuscode = ") + status + "\n"};
}

TEST_F(ConnectionTest, AStartIsLoggedLineByLineAndNothingIsAskedBefore) {
  answerLikeADaemon();
  EXPECT_FALSE(RVTrans::isConnected() || RVTrans::isUpdating() || RVTrans::isNewData());
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1);
  EXPECT_EQ(RVTrans::listOutcome().condition, DaemonCondition::notAsked);
  RVTrans::init();
  EXPECT_EQ(overlayText(), "Connecting to daemon\nhttp://10.0.0.7:9091");
  services.finishThreads();
  EXPECT_EQ(overlayText(), "Daemon is connected!");
  EXPECT_EQ(RVTrans::getRPCVersion(), 16);
  EXPECT_EQ(RVTrans::getDaemonVersion(), "3.00 (bb6b5a062e)");
  std::vector<std::string> start;  // without the lines of the countdown's own threads
  for (const std::string& line : lines.records()) {
    if (!line.starts_with("Ov timeout")) start.push_back(line);
  }
  std::vector<std::string> expected;
  const auto add = [&expected](const std::vector<std::string>& more) {
    expected.insert(expected.end(), more.begin(), more.end());
  };
  const std::string list = bodies().back();
  add({"initTransmission\n", "finished initTransmission\n", "try to connect********\n",
       "initTransDaemonInfo\n", "Connecting to 10.0.0.7:9091", "finished initTransDaemonInfo\n",
       "Going to dispatch showWithStatus\n", "Start to show message\n",
       "Finished to dispatch showWithStatus\n", "connect to daemon\n"});
  add(exchangeLines(kStats, sessionPage("abc"), "409"));
  add({"getSessionID\n", "New session-id: \"abc\"\n", "updated new session id = abc\n"});
  add(exchangeLines(kStats, kStatsAnswer, "200"));
  add({"finished sendCommandString\n", "finished sendCommandString\n",
       "-JSONValue failed. Error is: Illegal start of token [<]", "getSessionID\n",
       "New session-id: \"abc\"\n", "Finished connect deamon, new session id = abc\n",
       "bConnected = TRUE\n"});
  add(exchangeLines(kStats, kStatsAnswer, "200"));
  add({"finished sendCommandString\n", kStatsAnswer, "getDaemonInfo\n"});
  add(exchangeLines(kInfo, kInfoAnswer, "200"));
  add({"finished sendCommandString\n", "version = 3.00 (bb6b5a062e)\n", "rpc-version = 16\n",
       "rpc-version-minimum = 1\n", "updateAllTorrents\n", "sendCommand\n",
       "sendCommand:soapMessage = " + list + "\n", "finished sendCommand\n"});
  add(exchangeLines(list, kListAnswer, "200"));
  add({"finished sendCommandString\n", "finished updateAllTorrents\n", "finished connectDaemon\n"});
  EXPECT_EQ(start, expected);
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 2U);
}

TEST_F(ConnectionTest, EveryOtherFirstAnswerEndsTheAttemptWithItsCode) {
  const std::string timeout = "Failed to connecting daemon!\nhttp://10.0.0.7:9091\nError: Timeout";
  const std::string refused = "Failed to connecting daemon!\nhttp://10.0.0.7:9091\nError: Unauthorized User";
  struct Case {
    const char* what;
    platform::HttpAnswer answer;
    std::int64_t code;
    std::string text;
    std::string session;
  };
  const Case cases[] = {
      {"nobody listens", failure(HttpError::refused), 5, timeout, ""},
      {"accepted at once", page(200, kStatsAnswer), 5, timeout, ""},
      {"an old daemon's refusal", page(401, "<h1>401: Unauthorized</h1>Unauthorized User"), 4, refused,
       "kept"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    _RVTrans client;
    client.initTransDaemonInfo();
    client.sessionInfo()->sessionID.set("kept");
    OvProgressHUD::showWithStatus("Connecting");
    enqueue({c.answer});
    const json::Value result = client.connectDaemon();
    services.finishThreads();
    EXPECT_EQ(result.ref()["errorcode"].longLongValue(), c.code);
    EXPECT_EQ(overlayText(), c.text);
    EXPECT_EQ(OvProgressHUD::sharedView()->image(), QStringLiteral("success"));
    EXPECT_EQ(client.sessionInfo()->sessionID.get(), c.session);
    EXPECT_FALSE(client.isConnected());
    EXPECT_TRUE(lines.contains("bConnected = FALSE\n"));
  }
}

TEST_F(ConnectionTest, WhileNotConnectedEachListReadTriesAgain) {
  services.scripted.setHandler([](const auto&) { return failure(HttpError::refused); });
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 0U);
  EXPECT_EQ(RVTrans::getTorrentInfo(), nullptr);
  RVTrans::updateAllTorrents();
  services.finishThreads();
  EXPECT_EQ(bodies().size(), 3U);
  EXPECT_EQ(lines.count("try to connect********\n"), 3);
  EXPECT_EQ(RVTrans::getRPCVersion(), -1);
  EXPECT_EQ(RVTrans::getDaemonVersion(), std::nullopt);
  EXPECT_EQ(RVTrans::getSessionStatus(), nullptr);
}

}  // namespace
}  // namespace seedmote
