#include <gmock/gmock.h>

#include "client/tests/FaultHarness.h"

namespace seedmote::faults {
namespace {

using testing::ElementsAre;

TEST(WireTest, AStartSendsTheseRequestsOverOneConnection) {
  Harness house;
  LoopbackDaemon& daemon = house.daemon;
  RVTrans::init();
  house.services.finishThreads();
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

}  // namespace
}  // namespace seedmote::faults
