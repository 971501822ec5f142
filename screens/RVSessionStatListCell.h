#pragma once

#include "screens/LabelPairCell.h"

namespace seedmote {

// One line of the session's statistics. Main thread.
class RVSessionStatListCell : public LabelPairCell {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Cells are made by the list of statistics.")
};

}  // namespace seedmote
