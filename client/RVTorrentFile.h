#pragma once

#include <optional>
#include <string>

#include "json/Value.h"

namespace seedmote {

// One file of a torrent. The numbers are kept as the daemon sent them.
struct RVTorrentFile {
  std::optional<std::string> name;
  json::Value length;          // bytes
  json::Value bytesCompleted;  // bytes
};

}  // namespace seedmote
