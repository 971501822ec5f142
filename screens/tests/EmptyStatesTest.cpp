// Each sentence of an empty list, brought about by a daemon that behaves so.
#include <gmock/gmock.h>

#include <memory>
#include <optional>

#include "client/tests/FaultHarness.h"
#include "screens/RVTorrentListController.h"
#include "tests/support/DaemonTexts.h"
#include "tests/support/DeafPort.h"
#include "tests/support/FakeNames.h"
#include "tests/support/TestUiServices.h"

namespace seedmote {
namespace {

using support::Reply;
namespace replies = support::replies;

struct Case : faults::Harness {
  Case() {
    services.defaults.setObject("FirstRun", "3");
    list->viewDidLoad();
    tick();
  }
  ~Case() { list.reset(); }
  Case(const Case&) = delete;
  Case& operator=(const Case&) = delete;

  void set(const char* key, const std::string& value) { services.setSetting(key, value.c_str()); }
  void atPort(int port) { set("Port", std::to_string(port)); }
  void secured() { set("UseSSL", "True"); }
  // Before that the client gets connected.
  void onListQuery(const std::function<std::optional<Reply>()>& reply) {
    misbehaveOn("torrent-get", [reply](const support::RecordedRequest&) { return reply(); });
  }
  void tick() {
    services.clock.advanceSeconds(2);
    do {
      services.settle();
    } while (list->table()->isReloading());
  }
  std::string sentence() const { return list->emptyState().toStdString(); }

  support::TestUiServices ui;
  support::FakeNames names;
  support::DeafPort deaf;
  support::LoopbackDaemon tls{{.tls = true}};
  support::LoopbackDaemon demanding{{.tls = true, .demandClientCertificate = true}};
  std::unique_ptr<RVTorrentListController> list = std::make_unique<RVTorrentListController>();
};

void unpack(Case& c) {
  c.daemon.setReply(replies::answer(200, "no gzip", {{"Content-Encoding", "gzip"}}));
}

void renew(Case& c) {
  c.onListQuery([&c] {
    if (c.sent("torrent-get") == 1) c.daemon.changeSessionId();
    return std::nullopt;
  });
}

constexpr std::string_view kTlsAlert("\x15\x03\x03\x00\x02\x02\x46", 7);

const struct {
  const char* begin;
  std::function<void(Case&)> arrange;
} kCases[] = {
    {"Something answered there, but not as a", [](auto& c) { c.daemon.setReply(replies::json("{}")); }},
    {"The daemon has begun a new session.", renew},
    {"The daemon refused the user name", [](auto& c) { c.daemon.model().setCredentials("user:another"); }},
    {"The daemon lets nobody in any more", [](auto& c) { c.daemon.setReply(replies::lockedOut()); }},
    {"The daemon does not let this device in", [](auto& c) { c.daemon.setReply(replies::addressRefused()); }},
    {"The daemon does not know itself by this", [](auto& c) { c.daemon.setReply(replies::misdirected()); }},
    {"The daemon does not speak SSL", [](auto& c) { c.secured(); }},
    {"The daemon expects SSL", [](auto& c) { c.daemon.setReply(replies::raw(kTlsAlert)); }},
    {"No secure connection", [](auto& c) { c.secured(), c.atPort(c.demanding.port()); }},
    {"Nobody listens", [](auto& c) { c.atPort(support::closedPort()); }},
    {"This address and port cannot be", [](auto& c) { c.atPort(99999); }},
    {"There is no host of this name.", [](auto& c) { c.set("IP Address", "nas.invalid"); }},
    {"There is no way to this host.", [](auto& c) { c.set("IP Address", "255.255.255.255"); }},
    {"The daemon did not answer in time.", [](auto& c) { c.http.hurry(), c.atPort(c.deaf.port()); }},
    {"The connection was closed without", [](auto& c) { c.atPort(c.tls.port()); }},
    {"The connection was closed without", [](auto& c) { c.daemon.setReply(replies::nothing()); }},
    {"The connection broke off", [](auto& c) { c.daemon.setReply(replies::truncated("{\"arg", 1000)); }},
    {"What answers there is not a Trans", [](auto& c) { c.daemon.setReply(replies::html(200, "<p>Hi")); }},
    {"The daemon's answer could not be read. Refresh to try again.\n(",
     [](auto& c) { c.onListQuery([] { return replies::json("{\"arguments\":["); }); }},
    {"The request failed. Refresh to try again.\n(", unpack},
    {"The request was cancelled.", [](auto& c) { c.http.cancelAll(); }},
    {"The daemon has no torrents.",
     [](auto& c) { c.daemon.model().setTorrents(std::string(support::texts::kNoTorrents)); }},
    {"No torrent is in the state \"Seeding\" now. Choose \"All\"", [](auto& c) { c.list->doFilter(5); }},
    {"The daemon is connected. Its torrents appear once",
     [](auto& c) { c.services.defaults.setObject("FirstRun", "2"); }},
};

TEST(EmptyStates, SayWhatIsTheMatter) {
  for (const auto& [begin, arrange] : kCases) {
    Case c;
    EXPECT_THAT(c.sentence(), testing::StartsWith("The daemon has not been asked yet."));
    arrange(c);
    RVTrans::init();
    c.services.finishThreads();
    c.tick();
    EXPECT_TRUE(c.list->table()->isEmpty()) << begin;
    EXPECT_THAT(c.sentence(), testing::StartsWith(begin));
  }
}

}  // namespace
}  // namespace seedmote
