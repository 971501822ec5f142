#include <gmock/gmock.h>

#include <QTemporaryDir>
#include <fstream>

#include "client/tests/WireFixture.h"
#include "tests/support/LoopbackDaemon.h"
#include "tests/support/RealDaemon.h"
#include "tests/support/Replies.h"

namespace seedmote {
namespace {

using support::LoopbackDaemon;
using support::RealDaemon;
using support::TinyTorrent;

class RealDaemonTest : public WireFixture {
 protected:
  // The torrent of this name in a fresh list; absent when there is none.
  static json::Value listed(const std::string& name) {
    RVTrans::updateAllTorrents();
    const json::Value list = RVTrans::getTorrentList();
    for (const json::ValueRef torrent : list->elements()) {
      if (torrent["name"].text() == name) return list.share(torrent);
    }
    return {};
  }
  static std::int64_t statusOf(const std::string& name) { return listed(name)["status"].longLongValue(); }
  // The daemon needs a moment to stop a torrent, and to verify one that was added.
  bool comesToStatus(const std::string& name, std::int64_t status) {
    for (int i = 0; i < 400 && statusOf(name) != status; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(25));
    }
    return statusOf(name) == status;
  }
  static void select(const std::string& name) { RVTrans::selectTorrent(torrentID(listed(name)["id"])); }
};

TEST_F(RealDaemonTest, ItsListIsReadAlsoAfterItsRestart) {
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

TEST_F(RealDaemonTest, ItRefusesAWrongPassword) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon({.credentials = "user:söcrét:x"});
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

TEST_F(RealDaemonTest, TorrentsAreAddedEachWay) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon;
  useDaemonAt(daemon.port());
  attempt();
  const QTemporaryDir folder;
  const TinyTorrent file = support::makeTinyTorrent("by file", 1);
  const TinyTorrent bytes = support::makeTinyTorrent("by bytes", 2);
  const TinyTorrent link = support::makeTinyTorrent("by link", 3);
  const std::string path = folder.filePath(QStringLiteral("a b.torrent")).toStdString();
  std::ofstream(path) << file.metainfo;
  LoopbackDaemon server;
  server.setReply(support::replies::answer(200, link.metainfo));

  const auto key = [](const json::Value& answer) {
    EXPECT_EQ(answer["statuscode"].text(), "200");
    std::string keys(answer["result"].text().value_or("no result"));
    for (const json::Entry entry : answer["arguments"].entries()) keys += " " + std::string(entry.key);
    return keys;
  };
  EXPECT_EQ(key(RVTrans::addTorrentFile(path)), "success torrent-added");
  EXPECT_EQ(key(RVTrans::addTorrentData(bytes.metainfo)), "success torrent-added");
  EXPECT_EQ(key(RVTrans::addTorrentData(bytes.metainfo)), "success torrent-duplicate");
  EXPECT_EQ(key(RVTrans::addTorrentURL(server.url("/l.torrent"))), "success torrent-added");
  EXPECT_EQ(
      key(RVTrans::addTorrentURL("magnet:?xt=urn:btih:8104c519cb299e16aa1fd678bfa04cd1b9b936b8&dn=m%20g")),
      "success torrent-added");
  EXPECT_EQ(key(RVTrans::addTorrentFile(path + "x")), "invalid or corrupt torrent file");
  EXPECT_EQ(key(RVTrans::addTorrentURL("no link")), "invalid or corrupt torrent file");
  for (const char* name : {"by file", "by bytes", "by link", "m g"}) {
    EXPECT_FALSE(listed(name).isAbsent()) << name;
  }
}

TEST_F(RealDaemonTest, TheSelectedTorrentIsStoppedStartedAndRemovedWithItsData) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon;
  const TinyTorrent torrent = support::makeTinyTorrent("complete.bin", 1);
  const std::filesystem::path data = daemon.downloads() / torrent.name;
  std::filesystem::create_directories(daemon.downloads());
  std::ofstream(data) << torrent.content;
  daemon.addTorrents(2, "other");
  useDaemonAt(daemon.port());
  attempt();
  RVTrans::addTorrentData(torrent.metainfo);
  ASSERT_TRUE(comesToStatus(torrent.name, 6)) << "it seeds what is there";
  select(torrent.name);
  RVTrans::startTorrent(false);
  EXPECT_TRUE(comesToStatus(torrent.name, 0));
  RVTrans::startTorrent(true);
  EXPECT_TRUE(comesToStatus(torrent.name, 6));
  EXPECT_TRUE(std::filesystem::exists(data));
  RVTrans::deleteTorrent();
  services.finishThreads();
  EXPECT_EQ(overlayText(), "Deleted!!");
  EXPECT_FALSE(std::filesystem::exists(data));
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 2U);
  RVTrans::deleteTorrent();
  services.finishThreads();
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 2U) << "with nothing selected nothing is removed";
}

TEST_F(RealDaemonTest, AfterARestartNoOtherTorrentIsRemoved) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon;
  daemon.addTorrents(8);
  useDaemonAt(daemon.port());
  attempt();
  bool dealtAnew = false;
  for (int i = 0; i < 10 && !dealtAnew; ++i) {
    select("tiny-3");
    const std::int64_t before = RVTrans::getTorrentSelection();
    daemon.restart();
    const bool sameID =
        daemon.rpc(R"({"method":"torrent-get","arguments":{"fields":["id","name"]}})")
            .find("{\"id\":" + std::to_string(before) + ",\"name\":\"tiny-3\"}") != std::string::npos;
    if (sameID) {
      listed("");  // meets the new session id
      continue;
    }
    dealtAnew = true;
    RVTrans::deleteTorrent();
    services.finishThreads();
    EXPECT_NE(overlayText().find("Not deleted!"), std::string::npos);
    EXPECT_EQ(OvProgressHUD::sharedView()->image(), QStringLiteral("error"));
    EXPECT_EQ(RVTrans::getTorrentList()->count(), 8U);
  }
  EXPECT_TRUE(dealtAnew);
  select("tiny-3");
  RVTrans::deleteTorrent();
  services.finishThreads();
  EXPECT_EQ(overlayText(), "Deleted!!");
  EXPECT_TRUE(listed("tiny-3").isAbsent());
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 7U);
}

}  // namespace
}  // namespace seedmote
