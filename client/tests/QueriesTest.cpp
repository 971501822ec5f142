#include <gmock/gmock.h>

#include <stdexcept>

#include "client/_RVTrans.h"
#include "client/tests/ClientFixture.h"

namespace seedmote {
namespace {

using platform::HttpError;

class QueriesTest : public ClientFixture {
 protected:
  QueriesTest() { client.sessionInfo()->sessionID.set("abc"); }

  _RVTrans client;
};

TEST_F(QueriesTest, StatisticsAreReadZeroedByAFailureAndHandedOutOnce) {
  enqueue({page(200, kStatsAnswer)});
  client.getSessionStats();
  const RVSessionStatus& session = *client.sessionInfo();
  EXPECT_TRUE(session.dirty);
  EXPECT_EQ(session.torrentCount, 7);
  EXPECT_EQ(session.downloadSpeed, 2000);
  EXPECT_EQ(session.cumStats->uploadedBytes, 9007199254740993);
  EXPECT_EQ(session.curStats->secondsActive, 10);
  EXPECT_EQ(session.downloadCount, 0);
  enqueue({failure(HttpError::timedOut)});
  client.getSessionStats();
  EXPECT_TRUE(session.dirty);
  EXPECT_EQ(session.torrentCount, 0);
  EXPECT_EQ(session.cumStats->uploadedBytes, 0);
  EXPECT_TRUE(lines.contains("(null)"));
}

TEST_F(QueriesTest, WithoutASessionNothingIsSent) {
  client.sessionInfo()->sessionID.set("");
  client.getSessionStats();
  client.updateAllTorrents();
  EXPECT_TRUE(bodies().empty());
  EXPECT_FALSE(client.sessionInfo()->dirty);
  EXPECT_TRUE(lines.contains("Tried to get stats, but session is is empty!!!"));
  EXPECT_TRUE(lines.contains("Tried to update all torrents, but session is is empty!!!"));
  EXPECT_TRUE(client.isUpdating()) << "only a later update that gets further clears it";
  EXPECT_FALSE(client.isNewData());
  client.sessionInfo()->sessionID.set("abc");
  enqueue({page(200, kListAnswer)});
  client.updateAllTorrents();
  EXPECT_FALSE(client.isUpdating());
}

TEST_F(QueriesTest, TheDaemonsVersionsAreTakenAndAMissingNumberIsZero) {
  enqueue({page(200, R"({"arguments":{"version":"2.94","rpc-version-minimum":1.9}})")});
  client.getDaemonInfo();
  EXPECT_EQ(client.rpc_version(), 0);
  EXPECT_EQ(client.daemonInfo().rpc_version_minimum, 1);
  EXPECT_EQ(client.version(), "2.94");
  EXPECT_EQ(client.sessionInfo()->daemonversion.get(), "2.94");
  for (const char* body : {"", "[]", "{\"arguments\":{}}", "{\"arguments\":{\"version\":3}}"}) {
    enqueue({page(200, body)});
    EXPECT_THROW(client.getDaemonInfo(), std::invalid_argument) << body;
  }
  EXPECT_EQ(client.version(), "2.94");
}

TEST_F(QueriesTest, AListThatWasHandedOutOutlivesItsSuccessors) {
  enqueue({page(200, kListAnswer), failure(HttpError::unreachable), page(200, kStatsAnswer)});
  client.updateAllTorrents();
  const json::Value kept = client.getTorrentList();
  EXPECT_TRUE(client.isNewData());
  client.updateAllTorrents();
  EXPECT_EQ(client.getTorrentList()->count(), 0U);
  EXPECT_TRUE(client.isNewData());
  EXPECT_FALSE(client.isNewData());
  client.getSessionStats();
  EXPECT_EQ(client.listOutcome().condition, DaemonCondition::unreachable)
      << "other requests say nothing of the list";
  EXPECT_EQ(kept->at(1)["name"].text(), "two");
}

TEST_F(QueriesTest, ADetailAnswerFillsItsPartOfTheRecord) {
  enqueue({page(
      200,
      R"({"arguments":{"torrents":[{"activityDate":1795236994,"addedDate":4294967301,)"
      R"("bandwidthPriority":1,"bandwidthPrioritys":0,"comment":"c","corruptEver":9,"creator":"w",)"
      R"("dateCreated":1700000000,"downloadDir":"/data","downloadLimit":100,"downloadLimited":true,)"
      R"("downloadedEver":1000,"error":3,"errorString":"gone","eta":-2,"hashString":"ab",)"
      R"("haveUnchecked":5,"name":"n","files":[{"name":"f","length":5000000000,"bytesCompleted":7}]}]}})")});
  const auto info = client.getTorrentInfo(7);
  EXPECT_EQ(info->activityDate, RVDate{1795236994});
  EXPECT_EQ(info->addedDate, RVDate{5}) << "dates are read as 32-bit numbers";
  EXPECT_EQ(info->doneDate, RVDate{0});
  EXPECT_EQ(info->bandwidthPrioritys, 0);
  EXPECT_EQ(info->corruptEvers, 0);
  EXPECT_EQ(info->comment, "c");
  EXPECT_TRUE(info->downloadLimited);
  EXPECT_EQ(info->downloadedEver, 3);
  EXPECT_EQ(info->error, 0);
  EXPECT_EQ(info->eta, -2);
  EXPECT_EQ(info->name, std::nullopt);
  ASSERT_EQ(info->files.size(), 1U);
  EXPECT_EQ(info->files[0].name, "f");
  EXPECT_EQ(info->files[0].length->longLongValue(), 5000000000);
  const std::string body = bodies().at(0);
  EXPECT_NE(body.find("\"webseedsSendingToUs\"],\"ids\":[7]} \n}"), std::string::npos) << body;
  EXPECT_EQ(std::count(body.begin(), body.end(), ','), 68) << "67 fields, then ids";
}

TEST_F(QueriesTest, ADetailQueryWithoutItsTorrent) {
  enqueue({failure(HttpError::refused), page(200, R"({"arguments":{"torrents":[]}})"),
           page(200, R"({"arguments":{"torrents":[{"files":[]}]}})")});
  const auto none = client.getTorrentInfo(7);
  EXPECT_TRUE(none->files.empty());
  EXPECT_EQ(none->activityDate, RVDate{0});
  EXPECT_EQ(none->comment, std::nullopt);
  EXPECT_THROW(client.getTorrentInfo(-1), std::out_of_range);
  EXPECT_TRUE(client.getTorrentInfo(7)->files.empty());
}

class FacadeTest : public ClientFixture {};

TEST_F(FacadeTest, ARefreshShowsItsMessagesAndIsSkippedWhileOneRuns) {
  answerLikeADaemon();
  connect();
  EXPECT_TRUE(RVTrans::isNewData());
  RVTrans::updateAllTorrents();
  services.settle();
  EXPECT_EQ(overlayText(), "Updated!");
  EXPECT_TRUE(RVTrans::isNewData());

  const std::size_t before = bodies().size();
  services.scripted.hold();
  services.threads.start("refresh", [] { RVTrans::updateAllTorrents(); });
  ASSERT_TRUE(services.scripted.waitForRequests(before + 1, std::chrono::minutes(1)));
  EXPECT_TRUE(RVTrans::isUpdating());
  RVTrans::updateAllTorrents();
  EXPECT_EQ(bodies().size(), before + 1);
  services.scripted.release();
  services.finishThreads();
  EXPECT_FALSE(RVTrans::isUpdating());
  const auto session = RVTrans::getSessionStatus();
  ASSERT_NE(session, nullptr);
  EXPECT_FALSE(session->dirty);
  EXPECT_EQ(session->ipaddress.get(), "10.0.0.7:9091");
}

}  // namespace
}  // namespace seedmote
