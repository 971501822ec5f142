#include "FakeTable.h"

namespace seedmote::platform {

int FakeController::numberOfRowsInSection(int /*section*/) {
  ++counted;
  return rows;
}

double FakeController::heightForRowAtIndexPath(int row) {
  ++measured;
  cellForRowAtIndexPath(row);
  return heightOf(row);
}

TableViewCell* FakeController::cellForRowAtIndexPath(int row) {
  auto* cell = static_cast<FakeCell*>(table.dequeueReusableCell("Cell"));
  if (cell == nullptr) {
    cell = static_cast<FakeCell*>(table.addCell(std::make_unique<FakeCell>("Cell")));
  }
  cell->title = QStringLiteral("torrent %1").arg(tokenOf(row));
  Q_EMIT cell->filled();
  return cell;
}

}  // namespace seedmote::platform
