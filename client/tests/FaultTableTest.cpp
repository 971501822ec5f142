// Every request of the client against every fault of a daemon: what goes over the wire, what the user is
// told, what state is left, and that the client goes on afterwards.
#include <gmock/gmock.h>

#include <QTimer>

#include "client/tests/FaultHarness.h"

namespace seedmote::faults {
namespace {

enum class Kind {
  failed,        // no JSON came
  wrongKinds,    // JSON, but its values are of other kinds than a daemon's
  missingKeys,   // JSON without what was asked for
  conflict,      // 409 that the re-send heals
  conflictOnly,  // 409 for ever
  unreadable     // 409 without a session id
};

struct Fault {
  std::string name;
  Kind kind;
  std::function<Reply(const LoopbackDaemon& other)> reply;
  const char* status;  // as the client tells it
  DaemonCondition condition;
  bool slow = false;                                      // the client gives up when the time is over
  std::optional<DaemonCondition> atFirst = std::nullopt;  // in the hand-shake, when that differs
};

std::ostream& operator<<(std::ostream& out, const Fault& fault) {
  return out << fault.name;
}

Reply trickling() {
  return replies::slowly(replies::json(kTorrents));
}

const char* const kWrongKinds =
    R"({"arguments":{"torrents":{"id":7},"version":3,"rpc-version":"x","torrentCount":[1],"current-stats":"no"},)"
    R"("result":{"success":true}})";

const std::vector<Fault>& faultTable() {
  using C = DaemonCondition;
  static const std::vector<Fault> table = {
      {"refused", Kind::failed, nullptr, "0", C::nobodyListens},
      {"reset", Kind::failed, [](auto&) { return replies::reset(); }, "0", C::brokenOff, false,
       C::closedUnanswered},
      {"closed", Kind::failed, [](auto&) { return replies::nothing(); }, "0", C::brokenOff, false,
       C::closedUnanswered},
      {"hang", Kind::failed, [](auto&) { return replies::hang(); }, "0", C::noAnswer, true},
      {"oneByteASecond", Kind::failed, [](auto&) { return trickling(); }, "0", C::noAnswer, true},
      {"garbage", Kind::failed, [](auto&) { return replies::raw("garbage\r\n\r\n"); }, "0",
       C::notTransmission},
      {"notUtf8", Kind::failed, [](auto&) { return replies::json("{\"arguments\":\"\xff\"}"); }, "200",
       C::unreadable, false, C::answered},
      {"notJson", Kind::failed, [](auto&) { return replies::json("{\"arguments\":{\"torrents\":[}"); }, "200",
       C::unreadable, false, C::answered},
      {"wrongKinds", Kind::wrongKinds, [](auto&) { return replies::json(kWrongKinds); }, "200", C::unreadable,
       false, C::answered},
      {"missingKeys", Kind::missingKeys, [](auto&) { return replies::json("{\"result\":\"success\"}"); },
       "200", C::unreadable, false, C::answered},
      {"truncated", Kind::failed, [](auto&) { return replies::truncated("{\"arg", 1000); }, "0",
       C::brokenOff},
      {"409Truncated", Kind::failed,
       [](auto&) { return replies::raw("HTTP/1.1 409 Conflict\r\nContent-Length: 581\r\n\r\n<h1>409"); }, "0",
       C::brokenOff},
      {"empty", Kind::failed, [](auto&) { return replies::json(""); }, "200", C::notTransmission},
      {"300MiB", Kind::failed, [](auto&) { return replies::huge(std::uint64_t{300} << 20); }, "0",
       C::unreadable},
      {"401", Kind::failed, [](auto&) { return replies::unauthorized(1); }, "401", C::loginRefused},
      {"403", Kind::failed, [](auto&) { return replies::addressRefused(); }, "403", C::addressNotAllowed},
      {"lockedOut", Kind::failed, [](auto&) { return replies::lockedOut(); }, "403", C::lockedOut},
      {"421", Kind::failed, [](auto&) { return replies::misdirected(); }, "421", C::hostNotAllowed},
      {"500", Kind::failed, [](auto&) { return replies::html(500, "no"); }, "500", C::notTransmission},
      {"redirectToAnotherHost", Kind::failed,
       [](auto& other) { return replies::redirect(302, other.url("/elsewhere")); }, "200",
       C::notTransmission},
      {"redirectOfThePost", Kind::failed,
       [](auto& other) { return replies::redirect(307, other.url("/elsewhere")); }, "200",
       C::notTransmission},
      {"redirectToAFile", Kind::failed, [](auto&) { return replies::redirect(302, "file:///etc/passwd"); },
       "0", C::notTransmission},
      {"409Once", Kind::conflict, [](auto&) { return replies::conflict("next"); }, "409", C::newSession},
      {"409WithALineFeed", Kind::conflict, [](auto&) { return replies::conflict("ab\nX-Evil: 1"); }, "409",
       C::newSession},
      {"409ForEver", Kind::conflictOnly, [](auto&) { return replies::conflict("next"); }, "409",
       C::newSession},
      {"409WithoutMarkers", Kind::unreadable, [](auto&) { return replies::conflictWithBody("no"); }, "409",
       C::newSession, false, C::notTransmission},
  };
  return table;
}

// One request of the client. `act` raises what the client raises.
struct Request {
  std::string name;
  std::string part;  // what its body holds and no other one's
  std::function<void(Harness&)> act;
  // What is there afterwards.
  std::function<void(Harness&, const Fault&)> expect;
  bool connects = false;  // it is part of the hand-shake
};

std::ostream& operator<<(std::ostream& out, const Request& request) {
  return out << request.name;
}

json::Value added;  // what the last add returned

void expectRaisedOrFailed(Harness& house, const Fault& fault) {
  const std::string failed =
      "Failed to connecting daemon!\nhttp://" + house.daemon.address() + "\nError: Timeout";
  EXPECT_EQ(house.message(), fault.kind == Kind::unreadable
                                 ? "The daemon's answer could not be used.\nPlease try again."
                                 : failed);
  EXPECT_FALSE(RVTrans::isConnected());
  EXPECT_EQ(RVTrans::listOutcome().condition, fault.atFirst.value_or(fault.condition));
}

const std::vector<Request>& requestTable() {
  static const std::vector<Request> table = {
      {"connect", "session-stats", [](Harness&) { RVTrans::init(); },
       [](Harness& house, const Fault& fault) {
         if (fault.kind == Kind::conflict) {
           EXPECT_TRUE(RVTrans::isConnected());
           EXPECT_EQ(house.message(), "Daemon is connected!");
         } else {
           expectRaisedOrFailed(house, fault);
         }
       },
       true},
      {"daemonInfo", "session-get", [](Harness&) { RVTrans::init(); },
       [](Harness& house, const Fault&) {
         EXPECT_TRUE(RVTrans::isConnected());
         EXPECT_TRUE(house.isError()) << house.message();
         EXPECT_EQ(RVTrans::getRPCVersion(), -1);
         EXPECT_TRUE(RVTrans::isOutOfStep()) << "so that it is fetched later";
       },
       true},
      {"firstList", "torrent-get", [](Harness&) { RVTrans::init(); },
       [](Harness& house, const Fault& fault) {
         EXPECT_TRUE(RVTrans::isConnected());
         EXPECT_EQ(house.isError(), fault.kind == Kind::unreadable);
         EXPECT_TRUE(RVTrans::isOutOfStep());
       },
       true},
      {"statistics", "session-stats",
       [](Harness&) {
         const auto session = RVTrans::getSessionStatus();
         ASSERT_NE(session, nullptr);
         EXPECT_EQ(session->torrentCount, 0) << "a failed answer zeroes";
       },
       [](Harness&, const Fault&) { EXPECT_EQ(RVTrans::getTorrentList()->count(), 1U); }},
      {"list", "torrent-get", [](Harness&) { RVTrans::updateAllTorrents(); },
       [](Harness& house, const Fault& fault) {
         EXPECT_FALSE(RVTrans::isUpdating());
         if (fault.kind == Kind::unreadable) {
           EXPECT_EQ(RVTrans::listOutcome().condition, DaemonCondition::notTransmission);
           EXPECT_TRUE(house.isError());
           EXPECT_EQ(RVTrans::getTorrentList()->count(), 1U);
           return;
         }
         EXPECT_EQ(house.message(), "Updated!");
         EXPECT_EQ(RVTrans::getTorrentList()->count(), 0U);
         EXPECT_EQ(RVTrans::listOutcome().condition, fault.condition);
       }},
      {"listInTheBackground", "torrent-get", [](Harness&) { RVTrans::fetchTorrentList(); },
       [](Harness& house, const Fault&) {
         EXPECT_EQ(RVTrans::getTorrentList()->count(), 1U) << "the old one stays, or the new one came";
         EXPECT_FALSE(RVTrans::isUpdating());
         EXPECT_FALSE(house.isMessageShown());
       }},
      {"detail", "webseedsSendingToUs",
       [](Harness&) {
         const auto info = RVTrans::getTorrentInfo();
         ASSERT_NE(info, nullptr);
         EXPECT_TRUE(info->files.empty());
       },
       [](Harness& house, const Fault&) {
         EXPECT_EQ(RVTrans::getTorrentSelection(), 7);
         EXPECT_FALSE(house.isMessageShown());
       }},
      {"start", "torrent-start", [](Harness&) { RVTrans::startTorrent(true); },
       [](Harness& house, const Fault&) { EXPECT_FALSE(house.isMessageShown()); }},
      {"remove", "torrent-remove", [](Harness&) { RVTrans::deleteTorrent(); },
       [](Harness& house, const Fault& fault) {
         EXPECT_EQ(house.isError(), fault.kind == Kind::unreadable);
         EXPECT_EQ(house.message() == "Deleted!!", fault.kind != Kind::unreadable);
       }},
      {"addLink", "torrent-add", [](Harness&) { added = RVTrans::addTorrentURL("magnet:?xt=x"); },
       [](Harness&, const Fault& fault) {
         if (fault.kind != Kind::unreadable) {
           EXPECT_EQ(added["statuscode"].text(), fault.status);
           EXPECT_EQ(added["result"].text() == "success", fault.kind == Kind::missingKeys);
         }
       }},
  };
  return table;
}

std::size_t expectedSends(const Request& request, const Fault& fault) {
  if (fault.reply == nullptr) return 0;
  if (fault.kind != Kind::conflict) return 1;
  const std::size_t once = fault.name == "409Once" ? 2 : 3;
  return request.name == "listInTheBackground" ? once + 1 : once;
}

class FaultTableTest : public testing::TestWithParam<std::tuple<Request, Fault>> {
 protected:
  // What the client's request meets; `misbehaved` counts.
  std::optional<Reply> misbehave() {
    const bool isConflict = fault.kind == Kind::conflict;
    if (isConflict && misbehaved > 0) {
      return std::nullopt;
    }
    ++misbehaved;
    if (isConflict && fault.name == "409Once") {
      house.daemon.model().setSessionId("next");
    }
    return fault.reply(house.other);
  }

  void prepare() {
    if (!request.connects) {
      house.connect();
    }
    house.misbehaveOn(request.part, [this](const RecordedRequest&) { return misbehave(); });
    if (fault.reply == nullptr) {
      house.daemon.stopListening();
      house.daemon.dropConnections();
    }
    if (fault.slow) {
      house.http.hurry();
    }
  }

  // As the gate of the screens runs it.
  void act() {
    house.services.main.guard("the table", [this] { request.act(house); });
  }

  Harness house;
  const Request request = std::get<0>(GetParam());
  const Fault fault = std::get<1>(GetParam());
  std::atomic<int> misbehaved{0};
};

// The wire, the message and the state are as the tables say; then the daemon behaves again.
TEST_P(FaultTableTest, EndsAndTheClientGoesOn) {
  prepare();
  act();
  house.services.finishThreads();
  request.expect(house, fault);
  if (request.name != "connect" || fault.kind != Kind::conflict) {
    EXPECT_EQ(house.sent(request.part), expectedSends(request, fault));
  }
  EXPECT_EQ(house.services.threads.running(), 0);
  for (const RecordedRequest& sent : house.daemon.requests()) {
    EXPECT_EQ(sent.header("X-Evil"), std::nullopt);
  }
  for (const RecordedRequest& sent : house.other.requests()) {
    EXPECT_EQ(sent.header("Authorization"), std::nullopt);
    EXPECT_EQ(sent.header("X-Transmission-Session-Id"), std::nullopt);
  }
  house.letMessageGo();
  EXPECT_FALSE(house.isMessageShown()) << house.message();

  house.daemon.setHandler({});
  if (fault.reply == nullptr) house.daemon.listenAgain();
  for (int i = 0; i < 2; ++i) {
    RVTrans::updateAllTorrents();
    house.services.finishThreads();
  }
  EXPECT_TRUE(RVTrans::isConnected());
  EXPECT_EQ(RVTrans::getTorrentList()->count(), 1U) << "the client goes on when the daemon does";
}

using FaultThatLasts = FaultTableTest;

TEST_P(FaultThatLasts, IsLeftWithinASecond) {
  prepare();
  using Time = std::chrono::steady_clock;
  Time::time_point left;
  const int enough = fault.kind == Kind::conflictOnly ? 6 : 1;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&] {
    house.services.clock.advanceSeconds(0.5);
    if (misbehaved >= enough && !house.services.main.isQuitting()) {
      left = Time::now();
      house.services.main.quit();
    }
  });
  look.start(1);
  act();
  house.services.spinUntil([this] { return house.services.main.isQuitting(); });
  EXPECT_TRUE(house.services.threads.join(std::chrono::seconds(20)));
  EXPECT_LT(Time::now() - left, std::chrono::seconds(1));
  EXPECT_EQ(house.sent(request.part), static_cast<std::size_t>(misbehaved)) << "nothing more is sent";
}

// What fits of each request with each fault.
std::vector<std::tuple<Request, Fault>> pairs(bool (*fits)(const Request&, const Fault&)) {
  std::vector<std::tuple<Request, Fault>> rows;
  for (const Request& request : requestTable()) {
    for (const Fault& fault : faultTable()) {
      if (fits(request, fault)) rows.emplace_back(request, fault);
    }
  }
  return rows;
}

bool ends(const Request& request, const Fault& fault) {
  // Nobody can refuse the connection in the middle of a hand-shake.
  const bool canBeRefused = !request.connects || request.name == "connect";
  return fault.kind != Kind::conflictOnly && (fault.reply != nullptr || canBeRefused);
}
bool lasts(const Request& /*request*/, const Fault& fault) {
  return fault.slow || fault.kind == Kind::conflictOnly || fault.name == "300MiB";
}

std::string nameOf(const testing::TestParamInfo<std::tuple<Request, Fault>>& info) {
  return std::get<0>(info.param).name + "_" + std::get<1>(info.param).name;
}

INSTANTIATE_TEST_SUITE_P(Each, FaultTableTest, testing::ValuesIn(pairs(ends)), nameOf);
INSTANTIATE_TEST_SUITE_P(Each, FaultThatLasts, testing::ValuesIn(pairs(lasts)), nameOf);

}  // namespace
}  // namespace seedmote::faults
