#include "screens/RVFilterBarCell.h"

namespace seedmote {

void RVFilterBarCell::finishFilling() {
  Q_EMIT filled();
  Q_EMIT selectedChanged();
}

}  // namespace seedmote
