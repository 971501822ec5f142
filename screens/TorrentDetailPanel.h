#pragma once

#include <memory>

#include "client/RVTorrentInfo.h"

namespace seedmote {

// What the torrent list tells the panel that shows one torrent's details. Main thread.
class TorrentDetailPanel {
 public:
  virtual ~TorrentDetailPanel() = default;

  // Shows the record, which may be absent; comes into view when it was hidden.
  virtual void setDetailInfo(std::shared_ptr<RVTorrentInfo> info) = 0;

  // Goes back to its hidden place at once.
  virtual void resetPosition() = 0;
};

}  // namespace seedmote
