#pragma once

#include <optional>
#include <string>

namespace seedmote {

// One request of Transmission's RPC protocol. A plain record.
struct RVSOAPRequest {
  std::string method;                    // e.g. "torrent-get"
  std::optional<std::string> arguments;  // a JSON object, ready to send; absent or "": none
  std::optional<std::string> tag;        // absent or "": none
};

}  // namespace seedmote
