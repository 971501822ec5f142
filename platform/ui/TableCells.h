#pragma once

#include <memory>
#include <string_view>
#include <vector>

namespace seedmote::platform {

class TableViewCell;

// Owns the cells of a table and lends them out. A cell is in use (it shows a row), lent (a data source
// asked for it in the callback that runs now), or free. Main thread.
class TableCells {
 public:
  TableCells();
  ~TableCells();

  // A free cell that has been on screen before, that which showed `row` last if there is one; null when
  // none is free.
  TableViewCell* dequeueToShow(std::string_view reuseIdentifier, int row);

  // A free cell that never was on screen, so that no delegate follows what is only measured; null when
  // none is free.
  TableViewCell* dequeueToMeasure(std::string_view reuseIdentifier);

  TableViewCell* add(std::unique_ptr<TableViewCell> cell);

  // Ends a callback: `shown` (may be null) is in use for `row` from now on, every other lent cell is free
  // again. Gives `shown` when it was a lent cell, else null.
  TableViewCell* settle(TableViewCell* shown, int row);

  void release(TableViewCell* cell) { free_.push_back(cell); }

  std::size_t count() const { return all_.size(); }
  const std::vector<TableViewCell*>& freeCells() const { return free_; }

 private:
  TableViewCell* lend(std::vector<TableViewCell*>::iterator place);

  std::vector<std::unique_ptr<TableViewCell>> all_;
  std::vector<TableViewCell*> lent_;
  std::vector<TableViewCell*> free_;
};

}  // namespace seedmote::platform
