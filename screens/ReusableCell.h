#pragma once

#include <memory>

#include "platform/ui/TableView.h"

namespace seedmote {

// A cell of the table that is free, or a new one.
template <class Cell>
Cell* reusableCell(platform::TableView& table) {
  platform::TableViewCell* cell = table.dequeueReusableCell(Cell::kIdentifier);
  if (cell == nullptr) {
    cell = table.addCell(std::make_unique<Cell>());
  }
  return static_cast<Cell*>(cell);
}

}  // namespace seedmote
