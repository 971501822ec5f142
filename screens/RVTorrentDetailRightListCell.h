#pragma once

#include "screens/LabelPairCell.h"

namespace seedmote {

// One line of a torrent's details. Main thread.
class RVTorrentDetailRightListCell
    : public seedmote::LabelPairCell {  // in full for the QML type registration
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Cells are made by the list of details.")
};

}  // namespace seedmote
