#include "AppFixture.h"
#include "tests/support/LoopbackDaemon.h"

namespace seedmote {
namespace {

class AtRestTest : public AppFixture, public testing::WithParamInterface<platform::Idiom> {};

INSTANTIATE_TEST_SUITE_P(On, AtRestTest, testing::Values(platform::Idiom::phone, platform::Idiom::tablet));

TEST_P(AtRestTest, NothingIsPaintedButWhatAPollBrings) {
  support::LoopbackDaemon daemon;
  daemon.model().setTorrents(
      R"({"arguments":{"torrents":[{"id":1,"name":"one","status":4,"percentDone":0.5}]},"result":"success"})");
  install(GetParam());
  confirmSettings(daemon.port());
  openConnected();
  int frames = 0;
  QObject::connect(&window(), &QQuickWindow::afterRendering, &window(), [&] { ++frames; });
  until("the launch has come to rest", [&] {
    const int before = frames;
    QTest::qWait(1000);
    return frames == before;
  });
  for (int poll = 1; poll <= 5; ++poll) {
    daemon.model().setStats(R"({"arguments":{"downloadSpeed":)" + std::to_string(poll) + "}}");
    daemon.forgetRequests();
    frames = 0;
    advance(10);
    services->finishThreads();
    EXPECT_EQ(daemon.requests().size(), 1U);
    until("the new speed is painted", [&] { return frames > 0; });
    QTest::qWait(300);
    EXPECT_LE(frames, 2);
  }
}

}  // namespace
}  // namespace seedmote
