#include "client/tests/WireFixture.h"
#include "tests/support/RealDaemon.h"
#include "tests/support/TlsFront.h"

namespace seedmote {
namespace {

using support::RealDaemon;
using support::TlsFront;

class TlsWireTest : public WireFixture {
 protected:
  // Connects anew, and says what it came to.
  DaemonCondition connectAnew(int port, const char* useSsl) {
    services.finishThreads();  // the countdown of the latest request may still look at its client
    RVTrans::drop();
    useDaemonAt(port, useSsl);
    attempt();
    return RVTrans::listOutcome().condition;
  }
};

TEST_F(TlsWireTest, TheRealDaemonBehindASelfSignedFront) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon;
  daemon.addTorrents(2);
  const TlsFront front(daemon.port());
  ASSERT_EQ(connectAnew(front.port(), "True"), DaemonCondition::answered) << RVTrans::listOutcome().detail;
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 2U);

  const support::TinyTorrent torrent = support::makeTinyTorrent("through the front", 99);
  EXPECT_EQ(RVTrans::addTorrentData(torrent.metainfo)["result"].text(), "success");
  RVTrans::updateAllTorrents();
  const json::Value list = RVTrans::getTorrentList();
  ASSERT_EQ(list->count(), 3U);
  EXPECT_EQ(list->at(2)["name"].text(), torrent.name);

  EXPECT_EQ(connectAnew(front.port(), "False"), DaemonCondition::closedUnanswered);
  EXPECT_EQ(connectAnew(daemon.port(), "True"), DaemonCondition::noTls);
  EXPECT_EQ(connectAnew(daemon.port(), "False"), DaemonCondition::answered);
}

}  // namespace
}  // namespace seedmote
