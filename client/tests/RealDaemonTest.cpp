// The client over real sockets, as the program runs it, before Debian's daemon.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <fstream>

#include "client/RVTrans.h"
#include "platform/core/CurlHttp.h"
#include "platform/core/LoginGuard.h"
#include "tests/support/LoopbackDaemon.h"
#include "tests/support/RealDaemon.h"
#include "tests/support/TestServices.h"
#include "tests/support/TlsFront.h"

namespace seedmote {
namespace {

using support::LoopbackDaemon;
using support::RealDaemon;
using support::TinyTorrent;

class RealDaemonTest : public testing::Test {
 protected:
  ~RealDaemonTest() override {
    services.main.quit();
    services.threads.join(std::chrono::minutes(1));
    RVTrans::drop();
  }
  // Connects anew, and says what it came to.
  DaemonCondition connect(int port, const char* useSsl = "False") {
    services.finishThreads();  // the countdown of the latest request may still look at its client
    RVTrans::drop();
    services.setSetting("IP Address", "127.0.0.1");
    services.setSetting("Port", std::to_string(port).c_str());
    services.setSetting("UseSSL", useSsl);
    RVTrans::init();
    services.finishThreads();
    return RVTrans::listOutcome().condition;
  }
  // The torrent of this name in a fresh list; absent when there is none.
  static json::Value listed(const std::string& name) {
    RVTrans::updateAllTorrents();
    const json::Value list = RVTrans::getTorrentList();
    for (const json::ValueRef torrent : list->elements()) {
      if (torrent["name"].text() == name) return list.share(torrent);
    }
    return {};
  }

  platform::CurlHttp curl;
  platform::LoginGuard http{curl};
  support::TestServices services{&http};
};

TEST_F(RealDaemonTest, TorrentsAreAddedEachWay) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon;
  connect(daemon.port());
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

TEST_F(RealDaemonTest, IsReachedThroughASelfSignedFront) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon;
  const support::TlsFront front(daemon.port());
  ASSERT_EQ(connect(front.port(), "True"), DaemonCondition::answered) << RVTrans::listOutcome().detail;
  const TinyTorrent torrent = support::makeTinyTorrent("through the front", 99);
  EXPECT_EQ(RVTrans::addTorrentData(torrent.metainfo)["result"].text(), "success");
  EXPECT_FALSE(listed(torrent.name).isAbsent());

  EXPECT_EQ(connect(front.port(), "False"), DaemonCondition::closedUnanswered);
  EXPECT_EQ(connect(daemon.port(), "True"), DaemonCondition::noTls);
  EXPECT_EQ(connect(daemon.port(), "False"), DaemonCondition::answered);
}

}  // namespace
}  // namespace seedmote
