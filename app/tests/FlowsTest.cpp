// What a person does with the program, and what the real daemon makes of it.
#include <fstream>

#include "AppFixture.h"
#include "settings/RVSettingsViewController.h"
#include "tests/support/RealDaemon.h"

namespace seedmote {
namespace {

using platform::Idiom;
using support::RealDaemon;
using testing::HasSubstr;
using testing::Not;
using Names = std::vector<std::string>;

class FlowsTest : public AppFixture, public testing::WithParamInterface<Idiom> {
 protected:
  // What the daemon says of its torrents.
  static std::string told(RealDaemon& daemon, const std::string& fields) {
    return daemon.rpc(R"({"method":"torrent-get","arguments":{"fields":[)" + fields + "]}}");
  }
  static std::string states(RealDaemon& daemon) { return told(daemon, R"("name","status")"); }
  // Opens the program before a daemon that has three torrents with their data.
  void openAt(RealDaemon& daemon) {
    for (int i = 0; i < 3; ++i) {
      const auto torrent = support::makeTinyTorrent("tiny-" + std::to_string(i), i);
      std::ofstream(daemon.downloads() / torrent.name) << torrent.content;
    }
    daemon.addTorrents(3);
    const std::string whole = R"({"percentDone":1,"status":0})";
    until("the daemon has found the data", [&] {
      const std::string answer = told(daemon, R"("percentDone","status")");
      return answer.find(whole + "," + whole + "," + whole) != std::string::npos;
    });
    install(GetParam());
    confirmSettings(daemon.port());
    openConnected();
  }
  // The names of the rows that are to be seen.
  Names shown(const platform::TableView& table) {
    until("the table is laid out", [&] { return !table.isReloading(); });
    Names all;
    for (const auto& row : table.liveRows()) {
      if (row.height > 0) all.push_back(row.cell->accessibleName().toStdString());
    }
    return all;
  }
  Names shown() { return shown(list()); }
  void tick() { advance(2); }

  const Names kAll{"tiny-0", "tiny-1", "tiny-2"};
};

INSTANTIATE_TEST_SUITE_P(On, FlowsTest, testing::Values(Idiom::phone, Idiom::tablet));

TEST_P(FlowsTest, AFirstStartAsksForTheDaemonAndListsItsTorrents) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon;
  daemon.addTorrents(3);
  install(GetParam());
  open();
  EXPECT_EQ(bar().settingsViewController(), nullptr);
  advance(1);
  ASSERT_NE(bar().settingsViewController(), nullptr) << "nobody has confirmed the settings";
  type("Host", "localhost");
  type("Port", std::to_string(daemon.port()));
  tap("Close");
  advance(1.1);
  EXPECT_FALSE(bar().settingsViewController()->bShown());
  EXPECT_EQ(services->defaults.string("FirstRun"), "3");
  EXPECT_EQ(lines.count("try to connect********\n"), 0) << "not before three seconds";
  advance(1);
  services->finishThreads();
  EXPECT_EQ(message(), "Daemon is connected!");
  EXPECT_EQ(shown(), Names{}) << "the list looks every two seconds";
  advance(1);
  EXPECT_EQ(shown(), kAll);
  auto* statistics = delegate->mainViewController().sessionStatController();
  EXPECT_EQ(statistics->downloadSpeed(), QStringLiteral("–")) << "for five seconds";
  advance(1);
  services->finishThreads();
  EXPECT_EQ(statistics->downloadSpeed(), QStringLiteral("0B/sec"));
}

TEST_P(FlowsTest, ATorrentIsStartedStoppedAndDeletedAndNoOther) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon;
  openAt(daemon);
  const RVTorrentDetailController* details = delegate->torrentInfoViewController();
  const auto endSleep = [this] { services->clock.advanceSeconds(1); };

  tap("tiny-1");
  if (isTablet()) {
    EXPECT_EQ(details->curPos(), RVTorrentDetailController::kHalfIn);
    auto* files = delegate->torrentInfoViewController()->fileListController();
    EXPECT_EQ(shown(*files->table()), Names{"tiny-1"});
  }
  duringWait([this] { return isAsleep(); }, endSleep);
  tap("Start");
  EXPECT_EQ(message(), "Started!");
  until("it seeds", [&] { return states(daemon).find(R"("tiny-1","status":6)") != std::string::npos; });
  tick();
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1) << "a refresh clears the selection";
  EXPECT_TRUE(!isTablet() || details->curPos() == RVTorrentDetailController::kHidden);

  tap("tiny-1");
  duringWait([this] { return isAsleep(); }, endSleep);
  tap("Stop");
  EXPECT_EQ(message(), "Stopped!");
  until("it rests", [&] { return states(daemon).find(R"("tiny-1","status":0)") != std::string::npos; });

  tap("tiny-1");
  tap("Delete");
  EXPECT_THAT(states(daemon), HasSubstr("tiny-1")) << "not before the second tap";
  tap("Confirm delete");
  services->finishThreads();
  EXPECT_EQ(message(), "Deleted!!");
  EXPECT_THAT(states(daemon), AllOf(HasSubstr("tiny-0"), HasSubstr("tiny-2"), Not(HasSubstr("tiny-1"))));
  until("its file is gone", [&] { return !exists(daemon.downloads() / "tiny-1"); });
  EXPECT_TRUE(exists(daemon.downloads() / "tiny-0") && exists(daemon.downloads() / "tiny-2"));
  tick();
  EXPECT_EQ(shown(), (Names{"tiny-0", "tiny-2"}));
}

TEST_P(FlowsTest, APullAddsTheCopiedLinkWithItsTracker) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon daemon;
  openAt(daemon);
  ui.pasteboard.text =
      "magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567&dn=A%20copied%20one"
      "&tr=http%3A%2F%2F127.0.0.1%3A9%2Fannounce";
  for (const char* answer : {"Cancel", "OK"}) {
    drag({300, 40}, {300, 340});
    ASSERT_TRUE(ui.alerts.isShown());
    EXPECT_THAT(states(daemon), Not(HasSubstr("copied"))) << "not before the answer";
    tap(answer);
  }
  EXPECT_EQ(message(), "Success!");
  EXPECT_THAT(told(daemon, R"("name","trackers")"),
              AllOf(HasSubstr("A copied one"), HasSubstr("http://127.0.0.1:9/announce")));
}

}  // namespace
}  // namespace seedmote
