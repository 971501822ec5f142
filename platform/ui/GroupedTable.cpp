#include "platform/ui/GroupedTable.h"

#include <algorithm>
#include <memory>

#include "platform/ui/ReusableCell.h"

namespace seedmote::platform {

void TableHeaderCell::setTitle(const std::string& title) {
  title_ = QString::fromStdString(title);
  Q_EMIT filled();
}

GroupedTable::GroupedTable(GroupedTableDataSource& source) : source_(source) {
  table_.setDataSource(this);
}

GroupedTable::~GroupedTable() {
  table_.setDataSource(nullptr);
}

int GroupedTable::rowOf(IndexPath path) const {
  const auto place = std::find(paths_.begin(), paths_.end(), path);
  return place == paths_.end() ? -1 : static_cast<int>(place - paths_.begin());
}

TableViewCell* GroupedTable::visibleCell(IndexPath path) const {
  return table_.visibleCell(rowOf(path));
}

int GroupedTable::numberOfRowsInSection(int /*section*/) {
  paths_.clear();
  const int sections = source_.numberOfSectionsInTableView();
  for (int section = 0; section < sections; ++section) {
    if (source_.titleForHeaderInSection(section)) {
      paths_.push_back({section, kHeader});
    }
    const int rows = source_.numberOfRowsInSection(section);
    for (int row = 0; row < rows; ++row) {
      paths_.push_back({section, row});
    }
  }
  return static_cast<int>(paths_.size());
}

double GroupedTable::heightForRowAtIndexPath(int row) {
  const IndexPath path = paths_.at(static_cast<std::size_t>(row));
  return path.row == kHeader ? source_.heightForHeaderInSection(path.section)
                             : source_.heightForRowAtIndexPath(path);
}

TableViewCell* GroupedTable::cellForRowAtIndexPath(int row) {
  const IndexPath path = paths_.at(static_cast<std::size_t>(row));
  return path.row == kHeader ? headerCell(path.section) : source_.cellForRowAtIndexPath(path);
}

TableViewCell* GroupedTable::headerCell(int section) {
  auto* cell = reusableCell<TableHeaderCell>(table_);
  cell->setTitle(source_.titleForHeaderInSection(section).value_or(""));
  return cell;
}

void GroupedTable::didSelectRowAtIndexPath(int row) {
  const IndexPath path = paths_.at(static_cast<std::size_t>(row));
  if (path.row != kHeader) {
    source_.didSelectRowAtIndexPath(path);
  }
}

}  // namespace seedmote::platform
