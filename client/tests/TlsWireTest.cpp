#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "client/RVTrans.h"
#include "client/_RVTrans.h"
#include "platform/core/CurlHttp.h"
#include "platform/core/LoginGuard.h"
#include "tests/support/Encodings.h"
#include "tests/support/LoopbackDaemon.h"
#include "tests/support/RealDaemon.h"
#include "tests/support/TestServices.h"
#include "tests/support/TlsFront.h"

namespace seedmote {
namespace {

using support::LoopbackDaemon;
using support::RealDaemon;
using support::TlsFront;
namespace replies = support::replies;

// The client over real sockets, with and without TLS, as the program runs it.
class TlsWireTest : public testing::Test {
 protected:
  ~TlsWireTest() override {
    services.main.quit();
    services.threads.join(std::chrono::minutes(1));
    RVTrans::drop();
  }

  // Connects anew, and says what it came to.
  DaemonCondition attempt(int port, const char* useSsl) {
    RVTrans::drop();
    services.setSetting("IP Address", "127.0.0.1");
    services.setSetting("Port", std::to_string(port).c_str());
    services.setSetting("Username", "");
    services.setSetting("Password", "");
    services.setSetting("UseSSL", useSsl);
    services.setSetting("Timeout", "20");
    RVTrans::init();
    services.finishThreads();
    return RVTrans::listOutcome().condition;
  }

  platform::CurlHttp curl;
  platform::LoginGuard http{curl};
  support::TestServices services{&http};
};

TEST_F(TlsWireTest, TheRealDaemonBehindASelfSignedFront) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  SEEDMOTE_NEEDS_TLS_FRONT();
  RealDaemon daemon;
  daemon.addTorrents(2);
  const TlsFront front(daemon.port());
  ASSERT_EQ(attempt(front.port(), "True"), DaemonCondition::answered) << RVTrans::listOutcome().detail;
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 2U);

  _RVTrans adding;
  adding.initTransDaemonInfo();
  const support::TinyTorrent torrent = support::makeTinyTorrent("through the front", 99);
  const std::string metainfo = "{\"metainfo\":\"" + support::base64(torrent.metainfo) + "\"}";
  adding.sendCommand({"torrent-add", metainfo, std::nullopt});
  RVTrans::updateAllTorrents();
  const json::Value list = RVTrans::getTorrentList();
  ASSERT_EQ(list->count(), 3U);
  EXPECT_EQ(list->at(2)["name"].text(), torrent.name);

  EXPECT_EQ(attempt(front.port(), "False"), DaemonCondition::closedUnanswered);
  EXPECT_EQ(attempt(daemon.port(), "True"), DaemonCondition::noTls);
  EXPECT_EQ(attempt(daemon.port(), "False"), DaemonCondition::answered);
}

TEST_F(TlsWireTest, PlainHttpWhereTlsIsExpectedIsSaidAsSurelyAsItIsKnown) {
  LoopbackDaemon tls({.tls = true});
  EXPECT_EQ(attempt(tls.port(), "False"), DaemonCondition::closedUnanswered);
  LoopbackDaemon other;
  other.setReply(replies::raw(std::string("\x15\x03\x03\x00\x02\x02\x0a", 7)));
  EXPECT_EQ(attempt(other.port(), "False"), DaemonCondition::needsTls);
  other.setReply(replies::closing(replies::html(400, "The plain HTTP request was sent to HTTPS port")));
  EXPECT_EQ(attempt(other.port(), "False"), DaemonCondition::needsTls);
}

}  // namespace
}  // namespace seedmote
