#include "json/Utf8.h"

#include <cstdint>
#include <cstring>

namespace seedmote::json::detail {

namespace {

// Where the run of ASCII that begins at `at` ends.
const char* skipAscii(const char* at, const char* end) {
  while (end - at >= 16) {
    std::uint64_t words[2];
    std::memcpy(words, at, 16);
    if (((words[0] | words[1]) & 0x8080808080808080u) != 0) break;
    at += 16;
  }
  while (at != end && static_cast<unsigned char>(*at) < 0x80) ++at;
  return at;
}

}  // namespace

bool isUtf8(std::string_view bytes) {
  const char* at = bytes.data();
  const char* const end = at + bytes.size();
  while ((at = skipAscii(at, end)) != end) {
    at = skipUtf8Sequence(at, end);
    if (at == nullptr) return false;
  }
  return true;
}

}  // namespace seedmote::json::detail
