#pragma once

#include <cstddef>
#include <string>

#include "client/DaemonOutcome.h"

namespace seedmote {

// The words for a torrent list that shows no row: what is the matter, and what to do.
struct EmptyState {
  bool setUp = true;  // the settings were confirmed once; before that the list is not filled
  bool connected = false;
  std::size_t torrents = 0;  // that the client knows
  int filterID = 1;          // the list state that is let through; 1 for all
  DaemonOutcome outcome;     // of the latest exchange

  // One or two sentences; never empty.
  std::string sentence() const;
};

}  // namespace seedmote
