// The layout pass of a table: every row's height, in slices between frames.
#include <chrono>

#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TableViewDataSource.h"

namespace seedmote::platform {

namespace {

// Real time: a slice is about what the processor did, whatever clock drives the screens.
class Stopwatch {
 public:
  double milliseconds() const {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start_).count();
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace

void TableView::reload() {
  selectedRow_ = -1;
  pass_ = nullptr;
  passWanted_ = true;
  postSlice();
}

void TableView::layoutIfNeeded() {
  while (isReloading() && !inCallback_) {
    continuePass({1e9, TablePass::kAllRows});
  }
}

void TableView::postSlice() {
  if (!slicePosted_) {
    slicePosted_ = true;
    enterLater("table layout", &TableView::runSlice);
  }
}

void TableView::runSlice() {
  slicePosted_ = false;
  if (!isReloading()) {
    return;
  }
  continuePass(slice_);
  if (isReloading()) {
    postSlice();
  }
}

std::unique_ptr<TablePass> TableView::beginPass() {
  auto pass = std::make_unique<TablePass>();
  passWanted_ = false;
  if (source_ != nullptr) {
    inCallback_ = true;
    services().main.guard("table row count", [&] {
      pass->count = source_->numberOfSectionsInTableView() > 0 ? source_->numberOfRowsInSection(0) : 0;
    });
    inCallback_ = false;
  }
  pass->layout.clear(pass->count);
  return pass;
}

// A data source that asks for a reload in the middle of this ends the pass: the next slice begins anew.
void TableView::continuePass(const Slice& slice) {
  std::unique_ptr<TablePass> pass = pass_ != nullptr ? std::move(pass_) : beginPass();
  const Stopwatch watch;
  const int first = pass->next;
  bool more = true;
  while (more && !passWanted_) {
    more = measureRows(*pass, [&](int next) {
      return next - first >= slice.rows || watch.milliseconds() >= slice.milliseconds;
    });
  }
  if (passWanted_) {
    return;
  }
  if (pass->next < pass->count) {
    pass_ = std::move(pass);
  } else {
    finishPass(std::move(*pass));
  }
}

// Measures until the slice is over. True when a row raised and the slice goes on behind it. Only the first
// row that raises is reported: a list of broken rows must not become a storm of messages.
bool TableView::measureRows(TablePass& pass, const std::function<bool(int)>& isOver) {
  bool raised = true;
  const auto work = [&] {
    while (pass.next < pass.count && !passWanted_) {
      const int row = pass.next++;
      const double height = source_->heightForRowAtIndexPath(row);
      cells_.settle(nullptr, -1);
      pass.layout.append(row, height);
      if (isOver(pass.next)) {
        break;
      }
    }
    raised = false;
  };
  inCallback_ = true;
  if (pass.raised == 0) {
    services().main.guard("table row height", work);
  } else {
    try {
      work();
    } catch (...) {
    }
  }
  inCallback_ = false;
  cells_.settle(nullptr, -1);
  pass.raised += raised ? 1 : 0;
  return raised && pass.next < pass.count && !isOver(pass.next);
}

void TableView::finishPass(TablePass pass) {
  if (pass.raised > 1) {
    log("Raised in table row height: %d more rows\n", pass.raised - 1);
  }
  layout_ = std::move(pass.layout);
  if (selectedRow_ >= rowCount()) {
    selectedRow_ = -1;
  }
  keepMark();
  rebuildLiveRows();
  Q_EMIT laidOut();
  Q_EMIT liveRowsChanged();
  if (const auto scroll = pendingScroll_) {
    pendingScroll_.reset();
    scrollToRow(scroll->row, scroll->animated, scroll->position);
  }
}

}  // namespace seedmote::platform
