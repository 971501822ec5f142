// The sentences of an empty list that are no fault of a daemon; those that are stand in tests/faults.
#include <gmock/gmock.h>

#include <functional>
#include <memory>

#include "client/tests/FaultHarness.h"
#include "screens/RVTorrentListController.h"
#include "tests/support/DaemonTexts.h"
#include "tests/support/TestUiServices.h"

namespace seedmote {
namespace {

struct Case : faults::Harness {
  Case() {
    services.defaults.setObject("FirstRun", "3");
    list->viewDidLoad();
    tick();
  }
  ~Case() { list.reset(); }
  Case(const Case&) = delete;
  Case& operator=(const Case&) = delete;

  void tick() {
    services.clock.advanceSeconds(2);
    do {
      services.settle();
    } while (list->table()->isReloading());
  }
  std::string sentence() const { return list->emptyState().toStdString(); }

  support::TestUiServices ui;
  std::unique_ptr<RVTorrentListController> list = std::make_unique<RVTorrentListController>();
};

const struct {
  const char* begin;
  std::function<void(Case&)> arrange;
} kCases[] = {
    {"There is no way to this host.",
     [](auto& c) { c.services.setSetting("IP Address", "255.255.255.255"); }},
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
