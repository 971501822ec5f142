#include "platform/ui/TableCells.h"

#include <QQmlEngine>
#include <algorithm>

#include "platform/ui/TableViewCell.h"

namespace seedmote::platform {

TableCells::TableCells() = default;
TableCells::~TableCells() = default;

TableViewCell* TableCells::lend(std::vector<TableViewCell*>::iterator place) {
  if (place == free_.end()) {
    return nullptr;
  }
  TableViewCell* cell = *place;
  free_.erase(place);
  lent_.push_back(cell);
  return cell;
}

TableViewCell* TableCells::dequeueToShow(std::string_view reuseIdentifier, int row) {
  auto best = free_.end();
  for (auto place = free_.begin(); place != free_.end(); ++place) {
    if ((*place)->row() < 0 || (*place)->reuseIdentifier() != reuseIdentifier) {
      continue;
    }
    best = place;
    if ((*place)->row() == row) {
      break;
    }
  }
  return lend(best);
}

TableViewCell* TableCells::dequeueToMeasure(std::string_view reuseIdentifier) {
  return lend(std::find_if(free_.begin(), free_.end(), [&](const TableViewCell* cell) {
    return cell->row() < 0 && cell->reuseIdentifier() == reuseIdentifier;
  }));
}

TableViewCell* TableCells::add(std::unique_ptr<TableViewCell> cell) {
  if (!cell) {
    return nullptr;
  }
  QQmlEngine::setObjectOwnership(cell.get(), QQmlEngine::CppOwnership);
  lent_.push_back(cell.get());
  all_.push_back(std::move(cell));
  return lent_.back();
}

TableViewCell* TableCells::settle(TableViewCell* shown, int row) {
  const bool known = std::find(lent_.begin(), lent_.end(), shown) != lent_.end();
  for (TableViewCell* cell : lent_) {
    if (cell != shown) {
      free_.push_back(cell);
    }
  }
  lent_.clear();
  if (!known) {
    return nullptr;
  }
  shown->row_ = row;
  return shown;
}

}  // namespace seedmote::platform
