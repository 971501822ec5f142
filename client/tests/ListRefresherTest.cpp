#include "client/ListRefresher.h"

#include "client/tests/ClientFixture.h"

namespace seedmote {
namespace {

class ListRefresherTest : public ClientFixture {
 protected:
  // How many lists were asked for meanwhile.
  std::size_t pass(double seconds) {
    const std::size_t before = bodies().size();
    services.clock.advanceSeconds(seconds);
    services.finishThreads();
    return bodies().size() - before;
  }

  void answerWith(int status) {
    services.scripted.setHandler([status](const platform::HttpRequest&) {
      return page(status, status == 200 ? R"({"arguments":{"torrents":[{"id":2,"name":"two"}]}})" : "");
    });
  }

  bool seen = true;
  int fetched = 0;
};

TEST_F(ListRefresherTest, OnlyAListThatIsAnotherIsNew) {
  answerLikeADaemon();
  ListRefresher refresher(
      5, [this] { return seen; }, [this] { ++fetched; });
  EXPECT_EQ(pass(5), 0U) << "not connected";
  connect();
  RVTrans::selectTorrent(2);
  RVTrans::isNewData();
  seen = false;
  EXPECT_EQ(pass(5), 0U);
  seen = true;
  EXPECT_EQ(pass(4.9), 0U);
  EXPECT_EQ(pass(0.1), 1U);
  EXPECT_FALSE(RVTrans::isNewData());
  answerWith(200);
  EXPECT_EQ(pass(5), 1U);
  EXPECT_TRUE(RVTrans::isNewData());
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 1U);
  EXPECT_EQ(RVTrans::getTorrentSelection(), 2);
  EXPECT_EQ(overlayText(), "") << "nothing is said";
  EXPECT_EQ(fetched, 2);
  answerWith(500);
  EXPECT_EQ(pass(5), 1U);
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 1U) << "a list that did not come takes none away";
  RVTrans::updateAllTorrents();
  RVTrans::isNewData();
  answerWith(200);
  EXPECT_EQ(pass(5), 1U);
  EXPECT_TRUE(RVTrans::isNewData()) << "the list that a failed update took away is back";
}

TEST_F(ListRefresherTest, ThePeriodIsThatOfTheStartElseTheStoredOne) {
  const struct {
    std::optional<double> asked;
    const char* stored;
    std::optional<double> period;
  } cases[] = {{{}, "", {}},    {{}, "7.5", 7.5}, {3, "7.5", 3},    {0, "7.5", {}},
               {{}, "oft", {}}, {{}, "-1", {}},   {1e-9, "", 0.25}, {{}, "1e300", 86400}};
  for (const auto& c : cases) {
    services.defaults.setObject("Refresh", c.stored);
    EXPECT_EQ(ListRefresher::period(c.asked), c.period) << c.stored;
  }
}

}  // namespace
}  // namespace seedmote
