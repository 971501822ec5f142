#pragma once

#include <memory>

#include "platform/ui/TableView.h"

namespace seedmote::platform {

// A cell of the table that is free, or a new one. For data sources.
template <class Cell>
Cell* reusableCell(TableView& table) {
  TableViewCell* cell = table.dequeueReusableCell(Cell::kIdentifier);
  if (cell == nullptr) {
    cell = table.addCell(std::make_unique<Cell>());
  }
  return static_cast<Cell*>(cell);
}

}  // namespace seedmote::platform
