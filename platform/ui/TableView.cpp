#include "platform/ui/TableView.h"

#include <algorithm>
#include <cmath>

#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/ui/TableViewDataSource.h"

namespace seedmote::platform {

namespace {
// Rows are made ready this far beyond the viewport, so that scrolling shows no gap while the next rows
// wait for their turn on the main thread.
constexpr double kMarginInViewports = 0.5;
}  // namespace

TableView::TableView(QObject* parent) : QObject(parent) {}

TableView::~TableView() = default;

// What was laid out belongs to the source of before.
void TableView::setDataSource(TableViewDataSource* source) {
  source_ = source;
  pass_ = nullptr;
  passWanted_ = false;
  selectedRow_ = -1;
  notices_.clear();
  layout_.clear(0);
  rebuildLiveRows();
  Q_EMIT laidOut();
  Q_EMIT liveRowsChanged();
}

TableViewCell* TableView::dequeueReusableCell(std::string_view identifier) {
  if (rowBeingBuilt_ >= 0) {
    return cells_.dequeueToShow(identifier, rowBeingBuilt_);
  }
  if (!inCallback_) {
    cells_.settle(nullptr, -1);
  }
  return cells_.dequeueToMeasure(identifier);
}

TableViewCell* TableView::addCell(std::unique_ptr<TableViewCell> cell) {
  TableViewCell* added = cells_.add(std::move(cell));
  if (added != nullptr) {
    connect(added, &TableViewCell::pressed, this, [this, added] {
      const LiveRow* live = findLive(added->row());
      if (live != nullptr && live->cell == added) {
        tapRow(live->row);
      }
    });
  }
  return added;
}

TableViewCell* TableView::visibleCell(int row) const {
  const LiveRow* live = findLive(row);
  return live != nullptr ? live->cell : nullptr;
}

const TableView::LiveRow* TableView::findLive(int row) const {
  const auto place = std::lower_bound(live_.begin(), live_.end(), row,
                                      [](const LiveRow& live, int wanted) { return live.row < wanted; });
  return place != live_.end() && place->row == row ? &*place : nullptr;
}

bool TableView::isInView(const LiveRow& live) const {
  return live.top < offset_ + viewportHeight_ - insetBottom_ && live.top + live.height > offset_ + insetTop_;
}

int TableView::rowAt(double y) const {
  const TableLayout::Range range = layout_.shownBetween(y, std::nextafter(y, y + 1));
  return range.begin < range.end && y >= 0 ? layout_.row(range.begin) : -1;
}

// What is queued here may outlive the table.
void TableView::enterLater(std::string_view where, void (TableView::*step)()) {
  services().main.enter(
      where,
      [table = QPointer<TableView>(this), step] {
        if (table) {
          (table->*step)();
        }
      },
      MainThread::From::layout);
}

// The rows that have cells.

TableLayout::Range TableView::wantedRange() const {
  const double margin = viewportHeight_ * kMarginInViewports;
  // While the content is pulled beyond an end, the rows at that end stay.
  const double top = clampedOffset(offset_);
  return layout_.shownBetween(top - margin, top + viewportHeight_ + margin);
}

// A flick goes on while the main thread waits, so its rows are built then too.
void TableView::wantLiveRows() {
  if (livePosted_ || wantedRange() == liveRange_) {
    return;
  }
  livePosted_ = true;
  services().main.post(
      [table = QPointer<TableView>(this)] {
        if (table) {
          services().main.guard("table rows", [&] { table->updateLiveRows(); });
        }
      },
      MainThread::Lane::overlay);
}

bool TableView::canBuildRowsNow() const {
  // In a callback the data source itself waits, in the middle of a row.
  return !services().main.isWaiting() ||
         (!inCallback_ && (source_ == nullptr || source_->canBuildRowsWhileWaiting()));
}

void TableView::updateLiveRows() {
  if (!canBuildRowsNow()) {
    return enterLater("table rows", &TableView::updateLiveRows);
  }
  livePosted_ = false;
  const TableLayout::Range range = wantedRange();
  if (range != liveRange_) {
    fillRange(range);
    Q_EMIT liveRowsChanged();
  }
}

void TableView::rebuildLiveRows() {
  for (const LiveRow& live : live_) {
    if (live.cell != nullptr) {
      freeCell(live.cell);
    }
  }
  live_.clear();
  fillRange(wantedRange());
}

// Keeps the rows that are live already, frees the cells of those that left, and builds the others.
void TableView::fillRange(TableLayout::Range range) {
  const auto wanted = [&](const LiveRow& live) {
    const std::size_t shown = layout_.find(live.row);
    return shown >= range.begin && shown < range.end;
  };
  for (const LiveRow& live : live_) {
    if (live.cell != nullptr && !wanted(live)) {
      freeCell(live.cell);
    }
  }
  liveRange_ = range;
  nextLive_.clear();
  for (std::size_t shown = range.begin; shown < range.end; ++shown) {
    const LiveRow* live = findLive(layout_.row(shown));
    nextLive_.push_back(live != nullptr ? *live : buildRow(shown));
  }
  live_.swap(nextLive_);
  showMark();
}

void TableView::freeCell(TableViewCell* cell) {
  cell->setMarked(false);
  cells_.release(cell);
}

TableView::LiveRow TableView::buildRow(std::size_t shown) {
  LiveRow live{layout_.row(shown), layout_.top(shown), layout_.height(shown), nullptr, 0};
  TableViewCell* cell = nullptr;
  inCallback_ = true;
  rowBeingBuilt_ = live.row;
  services().main.guard("table cell", [&] {
    cell = source_->cellForRowAtIndexPath(live.row);
    live.token = source_->rowToken(live.row);
  });
  inCallback_ = false;
  rowBeingBuilt_ = -1;
  live.cell = cells_.settle(cell, live.row);
  return live;
}

// The selection.

void TableView::selectRow(int row, bool animated, ScrollPosition position) {
  if (row < 0 || (!isReloading() && row >= rowCount())) {
    return;
  }
  selectedRow_ = row;
  if (position != ScrollPosition::none) {
    scrollToRow(row, animated, position);
  }
}

std::optional<std::int64_t> TableView::tokenOf(int row) const {
  const LiveRow* live = findLive(row);
  return live != nullptr ? std::optional(live->token) : std::nullopt;
}

void TableView::tapRow(int row) {
  const LiveRow* live = findLive(row);
  if (live == nullptr || services().main.swallowsInput()) {
    return;
  }
  if (marksRows_) {
    markedRow_ = row;
    showMark();
  }
  services().main.enter(
      "tap on a row",
      [table = QPointer<TableView>(this), row, token = live->token] {
        if (table) {
          table->carryOutTap(row, token);
        }
      },
      MainThread::From::layout);
}

void TableView::carryOutTap(int row, std::int64_t token) {
  if (source_ == nullptr || findLive(row) == nullptr || source_->rowToken(row) != token) {
    return;
  }
  const int previous = selectedRow_;
  selectedRow_ = row;
  if (previous >= 0 && previous != row) {
    services().main.guard("row deselected", [&] { source_->didDeselectRowAtIndexPath(previous); });
  }
  source_->didSelectRowAtIndexPath(row);
}

void TableView::touchCell(TableViewCell* cell, void (TableViewCell::*touch)()) {
  if (cell == nullptr) {
    return;
  }
  services().main.enter(
      "touch on a row",
      [cell = QPointer<TableViewCell>(cell), touch] {
        if (cell) {
          (cell->*touch)();
        }
      },
      MainThread::From::layout);
}

void TableView::setScrollEnabled(bool enabled) {
  if (scrollEnabled_ != enabled) {
    scrollEnabled_ = enabled;
    Q_EMIT scrollEnabledChanged();
  }
}

void TableView::setBackgroundColor(const QColor& color) {
  if (backgroundColor_ != color) {
    backgroundColor_ = color;
    Q_EMIT backgroundColorChanged();
  }
}

}  // namespace seedmote::platform
