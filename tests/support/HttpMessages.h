#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core/Http.h"

namespace seedmote::support {

using platform::HttpHeader;

// One request as the server saw it.
struct RecordedRequest {
  std::string raw;  // every byte, body included
  std::string method;
  std::string path;
  std::vector<HttpHeader> headers;  // in their order; values without blanks at the ends
  std::string body;

  // The first value under that name, in any case; absent when there is none.
  std::optional<std::string> header(std::string_view name) const;
};

// What the server does with a request: wait, send, end.
struct Reply {
  enum class End {
    keepOpen,
    close,
    reset,  // nothing is sent, the peer reads "connection reset"
    hang    // nothing is sent or ended until the connections are dropped
  };

  std::string bytes{};                 // sent as they stand; none: nothing is sent
  std::size_t pieceSize = 0;           // bytes sent at once; 0: all
  std::chrono::milliseconds pause{0};  // between pieces
  std::uint64_t filler = 0;            // so many 'x' follow, made while they are sent
  End end = End::keepOpen;
};

// Takes the first whole request off the front of `bytes`; absent while it is not whole.
std::optional<RecordedRequest> takeRequest(std::string& bytes);

}  // namespace seedmote::support
