#include "json/WriterText.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "json/Log.h"

namespace seedmote::json::detail {

namespace {

bool needsEscape(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\';
}

constexpr std::uint64_t ones = 0x0101010101010101u;
constexpr std::uint64_t tops = 0x8080808080808080u;

// Not zero when one of the eight bytes needs an escape.
std::uint64_t escapesIn(std::uint64_t bytes) {
  const auto zeroBytes = [](std::uint64_t word) { return (word - ones) & ~word; };
  return (zeroBytes(bytes & ~(ones * 0x1F)) | zeroBytes(bytes ^ (ones * '"')) |
          zeroBytes(bytes ^ (ones * '\\'))) &
         tops;
}

#if defined(__SSE2__)
unsigned escapesIn(__m128i bytes) {
  const __m128i highestControl = _mm_set1_epi8(0x1F);
  const __m128i controls = _mm_cmpeq_epi8(_mm_min_epu8(bytes, highestControl), bytes);
  const __m128i quotes = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('"'));
  const __m128i backslashes = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\'));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(controls, _mm_or_si128(quotes, backslashes))));
}
#endif

constexpr std::string_view controlEscapes[] = {
    "\\u0000", "\\u0001", "\\u0002", "\\u0003", "\\u0004", "\\u0005", "\\u0006", "\\u0007",
    "\\b",     "\\t",     "\\n",     "\\u000b", "\\f",     "\\r",     "\\u000e", "\\u000f",
    "\\u0010", "\\u0011", "\\u0012", "\\u0013", "\\u0014", "\\u0015", "\\u0016", "\\u0017",
    "\\u0018", "\\u0019", "\\u001a", "\\u001b", "\\u001c", "\\u001d", "\\u001e", "\\u001f"};

}  // namespace

std::size_t plainPrefix(std::string_view text) {
  std::size_t at = 0;
#if defined(__SSE2__)
  for (; text.size() - at >= 16; at += 16) {
    const auto mask = escapesIn(_mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at)));
    if (mask != 0) return at + static_cast<std::size_t>(__builtin_ctz(mask));
  }
#endif
  for (; text.size() - at >= 8; at += 8) {
    std::uint64_t bytes;
    std::memcpy(&bytes, text.data() + at, 8);
    if (escapesIn(bytes) != 0) break;
  }
  while (at < text.size() && !needsEscape(text[at])) ++at;
  return at;
}

std::size_t copyPlain(char* to, std::string_view text) {
  const char* from = text.data();
  const std::size_t count = text.size();
  std::size_t at = 0;
#if defined(__SSE2__)
  const auto copy16 = [&](std::size_t place) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + place));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + place), bytes);
    return escapesIn(bytes) == 0;
  };
  if (count >= 16) {
    for (; count - at >= 16; at += 16) {
      if (!copy16(at)) return at + plainPrefix(text.substr(at));
    }
    // The rest together with some bytes before it.
    if (!copy16(count - 16)) return at + plainPrefix(text.substr(at));
    return count;
  }
#endif
  const auto copy8 = [&](std::size_t place) {
    std::uint64_t bytes;
    std::memcpy(&bytes, from + place, 8);
    std::memcpy(to + place, &bytes, 8);
    return escapesIn(bytes) == 0;
  };
  if (count >= 8) {
    for (; count - at >= 8; at += 8) {
      if (!copy8(at)) return at + plainPrefix(text.substr(at));
    }
    if (!copy8(count - 8)) return at + plainPrefix(text.substr(at));
    return count;
  }
  for (; at < count; ++at) {
    if (needsEscape(from[at])) return at;
    to[at] = from[at];
  }
  return count;
}

std::string_view escapeFor(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  if (value < 0x20) return controlEscapes[value];
  if (byte == '"') return "\\\"";
  if (byte == '\\') return "\\\\";
  logLine(std::string("FUTFUTFUT: -->'") + byte + "'<---");
  return "FUTFUTFUT";
}

bool comesBefore(std::string_view left, std::string_view right) {
  const auto [a, b] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  if (a == left.end() || b == right.end()) return b != right.end();
  const auto l = static_cast<unsigned char>(*a);
  const auto r = static_cast<unsigned char>(*b);
  // Four-byte sequences are surrogates in UTF-16, which stand before U+E000 and so before 0xEE.
  if (l >= 0xF0 && (r == 0xEE || r == 0xEF)) return true;
  if (r >= 0xF0 && (l == 0xEE || l == 0xEF)) return false;
  return l < r;
}

}  // namespace seedmote::json::detail
