#pragma once

#include <string>
#include <string_view>

namespace seedmote::json::detail {

// Whether the bytes are well-formed UTF-8: no overlong form, no surrogate, nothing above U+10FFFF, no
// sequence cut off.
bool isUtf8(std::string_view bytes);

// One well-formed sequence of two to four bytes at `at` (before `end`): its end, or null.
inline const char* skipUtf8Sequence(const char* at, const char* end) {
  const auto byte = [&](int i) { return static_cast<unsigned char>(at[i]); };
  const auto continues = [&](int i) { return (byte(i) & 0xC0) == 0x80; };
  const unsigned char lead = byte(0);
  if (lead < 0xC2 || lead > 0xF4) return nullptr;
  if (end - at < 2 || !continues(1)) return nullptr;
  if (lead < 0xE0) return at + 2;
  const unsigned char second = byte(1);
  if (end - at < 3 || !continues(2)) return nullptr;
  if (lead < 0xF0) {
    const bool overlong = lead == 0xE0 && second < 0xA0;
    const bool surrogate = lead == 0xED && second > 0x9F;
    return overlong || surrogate ? nullptr : at + 3;
  }
  if (end - at < 4 || !continues(3)) return nullptr;
  const bool overlong = lead == 0xF0 && second < 0x90;
  const bool tooLarge = lead == 0xF4 && second > 0x8F;  // above U+10FFFF
  return overlong || tooLarge ? nullptr : at + 4;
}

// Writes one to four bytes at `to`: where they end.
inline char* putUtf8(char* to, char32_t character) {
  const auto put = [&](char32_t byte) { *to++ = static_cast<char>(byte); };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | (character >> 6));
    put(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    put(0xE0 | (character >> 12));
    put(0x80 | ((character >> 6) & 0x3F));
    put(0x80 | (character & 0x3F));
  } else {
    put(0xF0 | (character >> 18));
    put(0x80 | ((character >> 12) & 0x3F));
    put(0x80 | ((character >> 6) & 0x3F));
    put(0x80 | (character & 0x3F));
  }
  return to;
}

inline void appendUtf8(std::string& text, char32_t character) {
  char bytes[4];
  text.append(bytes, static_cast<std::size_t>(putUtf8(bytes, character) - bytes));
}

}  // namespace seedmote::json::detail
