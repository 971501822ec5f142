#include <future>

#include "ListFixture.h"

namespace seedmote {
namespace {

class TorrentListTest : public ListFixture {
 protected:
  std::vector<int> shaking() {
    std::vector<int> rows;
    for (const platform::TableView::LiveRow& live : table().liveRows()) {
      if (cell(live.row)->isShaking()) {
        rows.push_back(live.row);
      }
    }
    return rows;
  }
};

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

TEST_F(TorrentListTest, ListsWhatTheClientHasOnceThereIsSomethingNew) {
  controller->viewDidLoad();
  table().setViewport(0, 600);
  settle();
  EXPECT_EQ(services.defaults.string("ServerChanged"), "NO");
  EXPECT_EQ(services.scripted.requests().size(), 0u) << "an unconnected list asks for nothing";
  connect();
  EXPECT_EQ(table().rowCount(), 0);
  tick();
  ASSERT_EQ(table().rowCount(), 4);
  EXPECT_EQ(table().contentHeight(), 4 * 78);
  EXPECT_EQ(cell(1)->labelTorrnetName(), QStringLiteral("loads"));
  EXPECT_EQ(lines.count("count = 4\n"), 1);
  EXPECT_EQ(lines.count("heightForRowAtIndexPath:3\n"), 1);
  EXPECT_EQ(lines.count("status = 4\n"), 2) << "each row is built for its height and for the screen";

  lines.clear();
  tick();
  EXPECT_EQ(lines.count("refreshAll finished"), 0) << "nothing new";
  EXPECT_EQ(lines.count("Detailview torrent update finished"), 1);
}

// The sentences that are no fault of a daemon; those that are stand in tests/faults.
TEST_F(TorrentListTest, AnEmptyListSaysWhatIsTheMatter) {
  using platform::HttpError;
  const struct {
    const char* begin;
    HttpError error;
    const char* firstRun;
  } cases[] = {
      {"There is no way to this host.", HttpError::unreachable, "3"},
      {"The request was cancelled.", HttpError::cancelled, "3"},
      {"The daemon has no torrents.", HttpError::none, "3"},
      {"The daemon is connected. Its torrents appear once", HttpError::none, "2"},
  };
  torrents = "";
  for (const auto& [begin, error, firstRun] : cases) {
    RVTrans::drop();
    services.defaults.setObject("FirstRun", firstRun);
    controller = std::make_unique<RVTorrentListController>();
    controller->viewDidLoad();
    tick();
    EXPECT_THAT(controller->emptyState().toStdString(), StartsWith("The daemon has not been asked yet."));
    if (error != HttpError::none) enqueue({failure(error)});
    RVTrans::init();
    services.finishThreads();
    tick();
    EXPECT_TRUE(table().isEmpty()) << begin;
    EXPECT_THAT(controller->emptyState().toStdString(), StartsWith(begin));
  }
}

TEST_F(TorrentListTest, FilterCollapsesRowsOfOtherStates) {
  torrents += R"(,{"id":15,"name":"unknown","status":99})";
  show();
  for (const auto& [filter, row] : std::vector<std::pair<int, int>>{{5, 0}, {3, 1}, {2, 2}}) {
    controller->doFilter(filter);
    settle();
    ASSERT_GE(table().liveRows().size(), 1u);
    EXPECT_EQ(table().liveRows()[0].row, row);
    EXPECT_EQ(table().liveRows()[0].height, 78);
    EXPECT_FALSE(cell(row)->isContentHidden());
  }
  controller->doFilter(6);
  settle();
  EXPECT_TRUE(table().isEmpty());
  EXPECT_NE(controller->emptyState().indexOf(QStringLiteral("\"Verifying\"")), -1);
  EXPECT_EQ(table().rowCount(), 5);
  controller->doFilter(1);
  settle();
  EXPECT_EQ(table().liveRows().size(), 5u);
}

// A flick goes on while the main thread waits.
TEST_F(TorrentListTest, RowsThatComeIntoViewDuringAWaitSendNothing) {
  for (int id = 100; id < 200; ++id) {
    torrents += R"(,{"id":)" + std::to_string(id) + R"(,"name":"more","status":6})";
  }
  show();
  const auto scrollDuringWait = [this](double offset) {
    services.main.wait([&] {
      std::promise<void> scrolled;
      const auto lane = platform::MainThread::Lane::overlay;
      services.main.post([&] { table().setViewport(offset, 600); }, lane);
      // After what the first one asks for in its turn.
      services.main.post([&] { services.main.post([&] { scrolled.set_value(); }, lane); }, lane);
      scrolled.get_future().wait();
    });
  };
  const auto requests = services.scripted.requests().size();
  scrollDuringWait(50 * 78);
  ASSERT_NE(cell(50), nullptr);
  EXPECT_EQ(cell(50)->torrentidx(), 146);

  // A client that is not connected would begin to connect.
  RVTrans::drop();
  scrollDuringWait(0);
  EXPECT_EQ(cell(0), nullptr);
  EXPECT_EQ(services.scripted.requests().size(), requests);
}

TEST_F(TorrentListTest, TapsToggleTheSelection) {
  FakePanel panel;
  controller->setTorrentInfoViewController(&panel);
  show();
  EXPECT_EQ(panel.reset, 1) << "a reload without a selection hides the panel";
  tap(1);
  EXPECT_EQ(RVTrans::getTorrentSelection(), 12);
  EXPECT_EQ(panel.comment, "details");
  EXPECT_THAT(shaking(), ElementsAre(1));
  EXPECT_TRUE(cell(1)->isSelected());
  tap(2);
  EXPECT_EQ(RVTrans::getTorrentSelection(), 13);
  EXPECT_THAT(shaking(), ElementsAre(2));
  EXPECT_EQ(lines.count("didDeselectRowAtIndexPath:1\n"), 1);

  // A reload brings new cells and forgets the table's selection; the torrent's stays.
  controller->refreshAll();
  settle();
  EXPECT_EQ(panel.reset, 1);
  EXPECT_THAT(shaking(), ElementsAre(2));
  tap(3);
  EXPECT_THAT(shaking(), ElementsAre(3));
  tap(3);
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1);
  EXPECT_THAT(shaking(), IsEmpty());
  EXPECT_EQ(panel.shown, 3);

  tap(0);
  RVTrans::selectTorrent(-1);
  tick();
  EXPECT_THAT(shaking(), IsEmpty()) << "the selection was cleared elsewhere";

  details.clear();  // the daemon does not know the torrent any more
  tap(2);
  EXPECT_EQ(RVTrans::getTorrentSelection(), 13);
  EXPECT_THAT(shaking(), ElementsAre(2));
}

TEST_F(TorrentListTest, TheShakeFollowsTheTorrentToItsNewRow) {
  show();
  tap(1);
  torrents = R"({"id":10,"status":4},{"id":11,"status":4},{"id":12,"status":4})";
  RVTrans::updateAllTorrents();
  tap(1);  // on what is still on screen, while the client has another list
  EXPECT_EQ(RVTrans::getTorrentSelection(), 12) << "the row stands for another torrent now";
  tick();
  EXPECT_THAT(shaking(), ElementsAre(2));
}

TEST_F(TorrentListTest, ARowThatIsOlderThanTheListSelectsNoOtherTorrent) {
  torrents = R"({"id":11,"name":"alpha"},{"id":12,"name":"beta"})";
  show();
  torrents = R"({"id":11,"name":"beta"},{"id":12,"name":"alpha"})";  // the ids were dealt anew
  RVTrans::fetchTorrentList();
  tap(1);
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1) << "the row still shows beta, and 12 is alpha now";
  EXPECT_THAT(shaking(), IsEmpty());
  tick();
  tap(1);
  EXPECT_EQ(RVTrans::getTorrentSelection(), 12);
}

TEST_F(TorrentListTest, TorrentsWithoutAnIdCannotBeSelected) {
  torrents = R"({"id":2.5,"name":"broken","status":4},7)";
  show();
  ASSERT_EQ(table().rowCount(), 2);
  tap(0);
  tap(1);
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1);
  EXPECT_THAT(shaking(), IsEmpty());
  EXPECT_THAT(lines.records(), testing::Each(testing::Not(testing::StartsWith("Raised"))));
}

TEST_F(TorrentListTest, SurvivesAListThatShrinksInTheMiddleOfAPass) {
  show();
  table().setSlice({1e9, 2});
  table().reload();
  services.settle();
  torrents = R"({"id":11,"status":6})";
  RVTrans::updateAllTorrents();
  settle();
  EXPECT_EQ(table().rowCount(), 4);
  EXPECT_EQ(controller->cellForRowAtIndexPath(2), nullptr);
  EXPECT_EQ(controller->heightForRowAtIndexPath(2), 0);
  tick();
  EXPECT_EQ(table().rowCount(), 1);
}

// A tap moves the selection away from what was selected, also when the row is older than the client's list.
TEST_F(TorrentListTest, ATapThatComesTooLateLeavesNothingSelected) {
  show();
  tap(0);
  ASSERT_EQ(RVTrans::getTorrentSelection(), 11);
  torrents.replace(torrents.find("loads"), 5, "other");
  RVTrans::fetchTorrentList();
  table().tapRow(1);
  settle();
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1);
  tap(1);
  EXPECT_EQ(RVTrans::getTorrentSelection(), 12) << "the new row is there for the next tap";
}

}  // namespace
}  // namespace seedmote
