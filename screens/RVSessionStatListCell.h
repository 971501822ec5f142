#pragma once

#include "screens/LabelPairCell.h"

namespace seedmote {

// One line of the session's statistics. Main thread.
class RVSessionStatListCell : public seedmote::LabelPairCell {  // in full for the QML type registration
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Cells are made by the list of statistics.")
};

}  // namespace seedmote
