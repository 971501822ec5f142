#pragma once

#include <string>
#include <string_view>

namespace seedmote::json::detail {

// Whether the bytes are well-formed UTF-8: no overlong form, no surrogate, nothing above U+10FFFF, no
// sequence cut off.
bool isUtf8(std::string_view bytes);

// One well-formed sequence of two to four bytes at `at` (before `end`): its end, or null.
const char* skipUtf8Sequence(const char* at, const char* end);

void appendUtf8(std::string& text, char32_t character);

}  // namespace seedmote::json::detail
