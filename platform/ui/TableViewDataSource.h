#pragma once

#include <cstdint>

namespace seedmote::platform {

class TableViewCell;

// What a screen tells its table, and what the table reports to the screen. The table calls everything
// here behind a guard, on the main thread: what raises counts as no row, height 0 or no cell. While the main
// thread waits it asks for nothing but cells and tokens, and only where the screen lets it.
class TableViewDataSource {
 public:
  virtual ~TableViewDataSource() = default;

  // Only the first is shown; 0 for an empty table.
  virtual int numberOfSectionsInTableView() { return 1; }

  virtual int numberOfRowsInSection(int section) = 0;

  // In points; 0 hides the row. `row` may lie beyond the end of a list that was just replaced.
  virtual double heightForRowAtIndexPath(int row) = 0;

  // The cell for the row, dequeued from the table or added to it; null shows an empty row.
  virtual TableViewCell* cellForRowAtIndexPath(int row) = 0;

  // What the row stands for at this moment. A tap is dropped when this has changed before it is carried
  // out.
  virtual std::int64_t rowToken(int row) = 0;

  // Asked while the main thread waits: whether cells and tokens can be had at this moment without a request
  // or a wait. Rows that come into view are built after the wait otherwise.
  virtual bool canBuildRowsWhileWaiting() const { return false; }

  virtual void didSelectRowAtIndexPath(int /*row*/) {}
  virtual void didDeselectRowAtIndexPath(int /*row*/) {}

  // `offset` is the content offset in points, negative while the table is pulled down beyond its top. It
  // is that of the moment the touch happened, however much later the notice comes.
  virtual void scrollViewWillBeginDragging(double /*offset*/) {}
  virtual void scrollViewDidScroll(double /*offset*/) {}
  virtual void scrollViewDidEndDragging(double /*offset*/, bool /*willDecelerate*/) {}
};

}  // namespace seedmote::platform
