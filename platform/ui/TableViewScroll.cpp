// Where the content of a table stands, and what the data source hears of it.
#include <algorithm>
#include <cmath>

#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TableViewDataSource.h"

namespace seedmote::platform {

namespace {
constexpr double kUsualRowHeight = 44;
}  // namespace

double TableView::clampedOffset(double offset) const {
  const double lowest = -insetTop_;
  const double highest = std::max(lowest, contentHeight() + insetBottom_ - viewportHeight_);
  return std::clamp(offset, lowest, highest);
}

void TableView::setContentOffset(double offset, bool animated) {
  if (!std::isnan(offset)) {
    Q_EMIT scrollRequested(clampedOffset(offset), animated);
  }
}

void TableView::setContentInset(double top, double bottom) {
  if (insetTop_ != top || insetBottom_ != bottom) {
    insetTop_ = top;
    insetBottom_ = bottom;
    wantLiveRows();
    Q_EMIT contentInsetChanged();
  }
}

void TableView::setViewport(double offset, double height) {
  if (!std::isfinite(offset) || !std::isfinite(height)) {
    return;
  }
  const bool moved = offset_ != offset;
  offset_ = offset;
  viewportHeight_ = std::max(height, 0.0);
  wantLiveRows();
  if (moved) {
    addNotice({ScrollNotice::Kind::scroll, offset, false});
  }
}

void TableView::scrollToRow(int row, bool animated, ScrollPosition position) {
  if (isReloading()) {
    pendingScroll_ = PendingScroll{row, animated, position};
    return;
  }
  scrollToShown(row, animated, position);
}

// As the rows are laid out now.
void TableView::scrollToShown(int row, bool animated, ScrollPosition position) {
  if (row < 0 || row >= rowCount()) {
    return;
  }
  const std::size_t shown = layout_.find(row);
  const double top = layout_.topOf(row);
  const double height = shown < layout_.shownCount() ? layout_.height(shown) : 0;
  const double atTop = top - insetTop_;
  const double atBottom = top + height + insetBottom_ - viewportHeight_;
  switch (position) {
    case ScrollPosition::none:
      return setContentOffset(std::clamp(offset_, std::min(atTop, atBottom), std::max(atTop, atBottom)),
                              animated);
    case ScrollPosition::top:
      return setContentOffset(atTop, animated);
    case ScrollPosition::middle:
      return setContentOffset((atTop + atBottom) / 2, animated);
    case ScrollPosition::bottom:
      return setContentOffset(atBottom, animated);
  }
}

void TableView::scrollBy(double points, bool animated) {
  if (scrollEnabled_) {
    setContentOffset(offset_ + points, animated);
  }
}

void TableView::scrollByRows(int rows) {
  const TableLayout::Range range = layout_.shownBetween(clampedOffset(offset_), contentHeight());
  const double height = range.begin < range.end ? layout_.height(range.begin) : kUsualRowHeight;
  scrollBy(rows * height);
}

void TableView::scrollByPages(int pages) {
  scrollBy(pages * (viewportHeight_ - insetTop_ - insetBottom_), true);
}

void TableView::scrollToEnd(bool bottom) {
  const double end = contentHeight() + insetTop_ + insetBottom_;
  scrollBy(bottom ? end : -end, true);
}

void TableView::beginDragging() {
  dragging_ = true;
  addNotice({ScrollNotice::Kind::begin, offset_, false});
}

void TableView::endDragging(bool willDecelerate) {
  dragging_ = false;
  addNotice({ScrollNotice::Kind::end, offset_, willDecelerate});
}

// The end of the drag is told a moment earlier, in the same delivery of the touch, so it still waits.
void TableView::beginDecelerating() {
  if (!notices_.empty() && notices_.back().kind == ScrollNotice::Kind::end) {
    notices_.back().willDecelerate = true;
  }
}

// Scroll notices that wait are one: the data source hears the latest offset, and each begin and end in
// its place.
void TableView::addNotice(ScrollNotice notice) {
  if (!notices_.empty() && notice.kind == ScrollNotice::Kind::scroll &&
      notices_.back().kind == ScrollNotice::Kind::scroll) {
    notices_.back() = notice;
    return;
  }
  notices_.push_back(notice);
  if (!noticesPosted_) {
    noticesPosted_ = true;
    enterLater("table scroll", &TableView::deliverNotices);
  }
}

void TableView::deliverNotices() {
  noticesPosted_ = false;
  std::vector<ScrollNotice> notices;
  notices.swap(notices_);
  for (const ScrollNotice& notice : notices) {
    if (source_ == nullptr) {
      return;
    }
    services().main.guard("table scroll", [&] {
      switch (notice.kind) {
        case ScrollNotice::Kind::begin:
          return source_->scrollViewWillBeginDragging(notice.offset);
        case ScrollNotice::Kind::scroll:
          return source_->scrollViewDidScroll(notice.offset);
        case ScrollNotice::Kind::end:
          return source_->scrollViewDidEndDragging(notice.offset, notice.willDecelerate);
      }
    });
  }
}

}  // namespace seedmote::platform
