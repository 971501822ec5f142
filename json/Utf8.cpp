#include "json/Utf8.h"

#include <cstdint>
#include <cstring>

namespace seedmote::json::detail {

namespace {

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

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

const char* skipUtf8Sequence(const char* at, const char* end) {
  const auto byte = [&](int i) { return static_cast<unsigned char>(at[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0xC2 || lead > 0xF4) return nullptr;
  const int length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (end - at < length) return nullptr;
  for (int i = 1; i < length; ++i) {
    if (!isContinuation(byte(i))) return nullptr;
  }
  const unsigned char second = byte(1);
  if (lead == 0xE0 && second < 0xA0) return nullptr;  // overlong
  if (lead == 0xED && second > 0x9F) return nullptr;  // surrogate
  if (lead == 0xF0 && second < 0x90) return nullptr;  // overlong
  if (lead == 0xF4 && second > 0x8F) return nullptr;  // above U+10FFFF
  return at + length;
}

bool isUtf8(std::string_view bytes) {
  const char* at = bytes.data();
  const char* const end = at + bytes.size();
  while ((at = skipAscii(at, end)) != end) {
    at = skipUtf8Sequence(at, end);
    if (at == nullptr) return false;
  }
  return true;
}

void appendUtf8(std::string& text, char32_t character) {
  const auto add = [&](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (character < 0x80) {
    add(character);
  } else if (character < 0x800) {
    add(0xC0 | (character >> 6));
    add(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    add(0xE0 | (character >> 12));
    add(0x80 | ((character >> 6) & 0x3F));
    add(0x80 | (character & 0x3F));
  } else {
    add(0xF0 | (character >> 18));
    add(0x80 | ((character >> 12) & 0x3F));
    add(0x80 | ((character >> 6) & 0x3F));
    add(0x80 | (character & 0x3F));
  }
}

}  // namespace seedmote::json::detail
