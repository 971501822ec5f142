#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace seedmote::platform {

// A link that a daemon can fetch by itself: magnet, http or https.
struct HandedLink {
  std::string link;
};

// A torrent file that was read.
struct HandedFile {
  std::string name;  // without its folder
  std::string contents;
};

// What cannot be added, and why: a sentence for people.
struct Refusal {
  std::string name;
  std::string why;
};

// In small letters; empty for what begins with none (RFC 3986, section 3.1).
std::string schemeOf(std::string_view given);

using HandedOver = std::variant<HandedLink, HandedFile, Refusal>;

constexpr std::size_t kLargestTorrentFile = std::size_t{32} << 20;
constexpr std::size_t kLongestLink = std::size_t{1} << 20;

// Looks at what another program, or the command line, names: a link, a "file://" URL (RFC 8089) or a path
// from the root; a file is read. Blocks; any thread.
HandedOver lookAtHandedOver(const std::string& given);

}  // namespace seedmote::platform
