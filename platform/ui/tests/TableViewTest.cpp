#include "platform/ui/TableView.h"

#include <QSignalSpy>
#include <limits>
#include <stdexcept>

#include "TableFixture.h"
#include "platform/core/Log.h"

namespace seedmote::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TableViewTest : public TableFixture {
 protected:
  void show(int rows, double viewport = 500) {
    controller.rows = rows;
    table.setViewport(0, viewport);
    table.reload();
    settle();
  }

  void expectEachRowsTitle() const {
    for (const TableView::LiveRow& live : table.liveRows()) {
      EXPECT_EQ(static_cast<FakeCell*>(live.cell)->title, QStringLiteral("torrent %1").arg(1000 + live.row));
    }
  }

  std::vector<int> liveRows() const {
    std::vector<int> rows;
    for (const TableView::LiveRow& live : table.liveRows()) {
      rows.push_back(live.row);
    }
    return rows;
  }
};

TEST_F(TableViewTest, MeasuresEveryRowButKeepsCellsForWhatIsVisible) {
  show(100000);
  EXPECT_EQ(controller.measured, 100000);
  EXPECT_EQ(table.contentHeight(), 5e6);
  EXPECT_EQ(liveRows().front(), 0);
  EXPECT_EQ(liveRows().size(), 15u);  // ten in the viewport, five beyond it
  EXPECT_EQ(table.cellCount(), 16u);  // and the one that measures

  table.setViewport(2.5e6, 500);
  settle();
  EXPECT_EQ(liveRows().front(), 49995);
  EXPECT_EQ(liveRows().back(), 50014);
  for (int step = 0; step < 200; ++step) {
    table.setViewport(2.5e6 + step * 333, 500);
    settle();
  }
  EXPECT_LE(table.cellCount(), 23u);
  expectEachRowsTitle();
}

TEST_F(TableViewTest, RowsOfHeightZeroHaveNeitherRoomNorCell) {
  controller.heightOf = [](int row) { return row == 7 || row == 99999 ? 50.0 : 0.0; };
  show(100000);
  EXPECT_THAT(liveRows(), ElementsAre(7, 99999));
  EXPECT_EQ(table.contentHeight(), 100);
  EXPECT_EQ(table.rowAt(0), 7);
  EXPECT_EQ(table.rowAt(99.5), 99999);
  EXPECT_EQ(table.rowAt(100), -1);
  EXPECT_EQ(table.rowAt(-1), -1);

  controller.heightOf = [](int) { return 0.0; };
  show(1000);
  EXPECT_TRUE(table.isEmpty());
  EXPECT_THAT(liveRows(), IsEmpty());
}

TEST_F(TableViewTest, OldRowsStayUntilAPassIsComplete) {
  show(10);
  TableViewCell* const third = table.visibleCell(3);
  table.setSlice({1e9, 3});
  controller.rows = 20;
  controller.measured = 0;
  table.reload();
  EXPECT_EQ(controller.measured, 0) << "a reload is a request";
  QCoreApplication::processEvents();
  EXPECT_EQ(controller.measured, 3);
  EXPECT_EQ(table.rowCount(), 10);
  EXPECT_EQ(table.contentHeight(), 500);
  EXPECT_EQ(liveRows().size(), 10u);
  settle();
  EXPECT_EQ(controller.measured, 20);
  EXPECT_EQ(table.rowCount(), 20);
  EXPECT_EQ(table.visibleCell(3), third);
}

TEST_F(TableViewTest, ANewerReloadReplacesARunningPass) {
  table.setSlice({1e9, 4});
  controller.rows = 10;
  table.reload();
  QCoreApplication::processEvents();
  controller.rows = 6;
  table.reload();
  settle();
  EXPECT_EQ(controller.measured, 4 + 6);
  EXPECT_EQ(controller.counted, 2);
  EXPECT_EQ(table.rowCount(), 6);

  // A data source that reloads while it is asked.
  bool again = true;
  controller.heightOf = [&](int row) {
    if (row == 2 && std::exchange(again, false)) {
      table.reload();
    }
    return 10.0;
  };
  show(5);
  EXPECT_EQ(table.contentHeight(), 50);
}

TEST_F(TableViewTest, SurvivesAnyAnswerOfItsDataSource) {
  LogRecorder log;
  const double infinity = std::numeric_limits<double>::infinity();
  const std::vector<double> heights{50, -1, std::nan(""), infinity, -infinity, 1e308, 50};
  controller.heightOf = [&](int row) { return heights.at(static_cast<std::size_t>(row)); };
  show(9);  // the last two rows raise
  EXPECT_EQ(table.rowCount(), 9);
  EXPECT_EQ(table.contentHeight(), 2 * 50 + 2 * TableLayout::kHighestRow);
  EXPECT_EQ(log.count("Raised in table row height: 1 more rows\n"), 1);
  EXPECT_EQ(log.records().size(), 2u);

  controller.heightOf = [](int) -> double { throw std::out_of_range("no such row"); };
  show(100000);
  EXPECT_TRUE(table.isEmpty());
  EXPECT_EQ(log.count("Raised in table row height: 99999 more rows\n"), 1);
  EXPECT_EQ(log.records().size(), 4u) << "a broken list is one message, not one for each row";

  show(-5);
  EXPECT_EQ(table.rowCount(), 0);
  table.setViewport(std::nan(""), -infinity);
  table.selectRow(3, false, TableView::ScrollPosition::bottom);
  EXPECT_EQ(table.selectedRow(), -1);
}

TEST_F(TableViewTest, TapsReportTheOldRowBeforeTheNewOne) {
  show(5);
  for (const int row : {1, 3, 3}) {
    const auto before = controller.notes.size();
    table.tapRow(row);
    EXPECT_EQ(controller.notes.size(), before) << "a tap is carried out on a clean stack";
    settle();
  }
  EXPECT_THAT(controller.notes, ElementsAre("select 1", "deselect 1", "select 3", "select 3"));

  controller.notes.clear();
  table.reload();
  settle();
  EXPECT_EQ(table.selectedRow(), -1);
  table.visibleCell(2)->press();
  settle();
  EXPECT_THAT(controller.notes, ElementsAre("select 2")) << "a reload clears the selection silently";
}

TEST_F(TableViewTest, AWaitingTapIsDroppedWhenTheRowShowsSomethingElse) {
  show(5);
  table.tapRow(1);
  table.tapRow(4);
  controller.tokenOf = [](int row) { return row == 4 ? 1004 : 7; };
  settle();
  EXPECT_THAT(controller.notes, ElementsAre("select 4"));

  services.main.setSwallowsInput([] { return true; });  // a message lies in front
  table.tapRow(4);
  services.main.setSwallowsInput(nullptr);
  settle();
  EXPECT_THAT(controller.notes, ElementsAre("select 4"));

  controller.notes.clear();
  table.tapRow(4);
  controller.rows = 3;
  table.reload();
  table.layoutIfNeeded();
  settle();
  EXPECT_THAT(controller.notes, IsEmpty()) << "the row is gone";
}

TEST_F(TableViewTest, ARowThatWaitsIsNotBuiltIntoByOthers) {
  show(100);
  controller.tokenOf = [&](int row) {
    if (row == 40 && !services.main.isWaiting()) {
      services.main.wait([&] {
        duringWait([&] { table.setViewport(3000, 500); });
        duringWait([] {});
      });
    }
    return 1000 + row;
  };
  table.setViewport(2000, 500);
  settle();
  EXPECT_EQ(liveRows().front(), 55);
  EXPECT_EQ(liveRows().size(), 20u);
  expectEachRowsTitle();
}

TEST_F(TableViewTest, ATapOnARowThatIsCarriedAwayChangesNothing) {
  show(100);
  services.main.wait([&] {
    duringWait([&] {
      table.tapRow(1);
      table.setViewport(3000, 500);
    });
    duringWait([] {});
  });
  settle();
  EXPECT_THAT(controller.notes, IsEmpty());
}

TEST_F(TableViewTest, LiveRowsReachBeyondWhatIsInView) {
  show(100);
  table.setContentInset(10, 34);
  for (const auto& [offset, rows] :
       std::vector<std::pair<double, std::vector<int>>>{{-10, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}},
                                                        {2045, {41, 42, 43, 44, 45, 46, 47, 48, 49, 50}},
                                                        {4534, {90, 91, 92, 93, 94, 95, 96, 97, 98, 99}}}) {
    table.setViewport(offset, 500);
    settle();
    std::vector<int> inView;
    for (const TableView::LiveRow& live : table.liveRows()) {
      if (table.isInView(live)) {
        inView.push_back(live.row);
      }
    }
    EXPECT_EQ(inView, rows);
    EXPECT_GT(table.liveRows().size(), rows.size());
  }
  table.setViewport(5300, 500);  // pulled beyond the end
  settle();
  EXPECT_EQ(liveRows().front(), 85);
  table.setContentInset(0, 300);
  settle();
  EXPECT_EQ(liveRows().front(), 91) << "an inset brings the rows that it uncovers";
}

TEST_F(TableViewTest, ScrollsToRowsWithinTheInsets) {
  struct Case {
    int row;
    TableView::ScrollPosition position;
    double offset;
  };
  using enum TableView::ScrollPosition;
  show(100);
  table.setContentInset(0, 34);
  QSignalSpy requests(&table, &TableView::scrollRequested);
  for (const Case& wanted : {Case{99, bottom, 5000 + 34 - 500}, Case{0, bottom, 0}, Case{50, top, 2500},
                             Case{50, middle, 2500 + (50 + 34 - 500) / 2.0}, Case{99, top, 4534},
                             Case{2, none, 0}, Case{20, none, 20 * 50 + 50 + 34 - 500}}) {
    requests.clear();
    table.scrollToRow(wanted.row, true, wanted.position);
    ASSERT_EQ(requests.size(), 1);
    EXPECT_EQ(requests[0][0].toDouble(), wanted.offset) << wanted.row;
  }

  // While a pass is under way the scroll waits for the new heights.
  requests.clear();
  controller.rows = 200;
  table.reload();
  table.selectRow(199, true, bottom);
  table.reload();
  table.selectRow(199, false, none);
  EXPECT_TRUE(requests.isEmpty());
  settle();
  EXPECT_EQ(table.selectedRow(), 199);
  ASSERT_EQ(requests.size(), 1);
  EXPECT_EQ(requests[0][0].toDouble(), 200 * 50 + 34 - 500);
  EXPECT_THAT(controller.notes, IsEmpty()) << "a selection by the program is not reported";
}

TEST_F(TableViewTest, ScrollNoticesCarryTheOffsetOfTheirMoment) {
  show(100);
  table.beginDragging();
  for (const double offset : {-10.0, -40.0, -60.0}) {
    table.setViewport(offset, 500);
  }
  table.endDragging(false);
  table.setViewport(-20, 500);
  settle();
  EXPECT_THAT(controller.notes, ElementsAre("begin 0", "end -60"));
  EXPECT_THAT(controller.offsets, ElementsAre(-60, -20));
}

TEST_F(TableViewTest, WhatIsQueuedMayOutliveTheTable) {
  auto own = std::make_unique<FakeController>();
  own->rows = 3;
  own->table.reload();
  own->table.beginDragging();
  own.reset();
  settle();
}

TEST_F(TableViewTest, KeysMoveTheMarkPastHiddenRowsAndTapWhereItStands) {
  table.setMarksRows(true);
  QObject::connect(&table, &TableView::scrollRequested,
                   [this](double offset) { table.setViewport(offset, 500); });
  controller.heightOf = [](int row) { return row % 10 == 3 ? 50.0 : 0.0; };
  show(100000);
  table.setHasKeys(true);
  const auto press = [this](int key) {
    table.pressKey(key, false);
    settle();
    EXPECT_TRUE(table.visibleCell(table.markedRow())->isMarked());
    return table.markedRow();
  };
  EXPECT_EQ(press(Qt::Key_Up), 3);
  EXPECT_EQ(press(Qt::Key_Down), 13);
  EXPECT_EQ(press(Qt::Key_PageDown), 113);
  EXPECT_EQ(press(Qt::Key_PageUp), 13);
  EXPECT_EQ(press(Qt::Key_End), 99993);
  EXPECT_EQ(press(Qt::Key_Down), 99993);
  EXPECT_EQ(table.contentOffset(), 10000 * 50 - 500);
  press(Qt::Key_Return);
  table.pressKey(Qt::Key_Return, true);
  settle();
  EXPECT_THAT(controller.notes, testing::ElementsAre("select 99993")) << "a held key taps once";
  controller.heightOf = [](int row) { return row < 100 ? 50.0 : 0.0; };
  show(100000);
  EXPECT_EQ(table.markedRow(), 99) << "the row has gone";
  std::size_t marks = 0;
  for (const auto& live : table.liveRows()) marks += live.cell->isMarked() ? 1 : 0;
  EXPECT_LE(marks, 1U) << "a cell that is used again keeps none";
}

}  // namespace
}  // namespace seedmote::platform
