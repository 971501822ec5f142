#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "json/Utf8.h"
#include "json/YxJsonToken.h"
#include "json/YxJsonUTF8Stream.h"

namespace seedmote::json {

// Cuts bytes into tokens and decodes strings and numbers: the second layer of the reader. A token that the
// end of the data cuts is not an error: the stream goes back to its first byte, and it is scanned again
// when there is more. Used by one thread.
class YxJsonTokeniser {
 public:
  YxJsonTokeniser() = default;
  YxJsonTokeniser(const YxJsonTokeniser&) = delete;
  YxJsonTokeniser& operator=(const YxJsonTokeniser&) = delete;

  void appendData(std::string_view bytes) { _stream.appendData(bytes); }

  // The next token of the stream; `value` is set for numbers and strings.
  YxJsonToken getToken(YxJsonTokenValue& value) {
    const char* at = _stream.current();
    const YxJsonToken token = scan(at, _stream.end(), value);
    _stream.setCurrent(at);
    return token;
  }

  // getToken for a caller that keeps the position itself, from `at` to before `end`. `at` moves behind the
  // token, or to the first byte of one that is not complete.
  YxJsonToken scan(const char*& at, const char* end, YxJsonTokenValue& value);

  // Whether the next token is a long one that the data's end cut: its beginning has been read already, so
  // nobody but scan may take it.
  bool resumesToken() const { return cut_.scanned != 0; }

  const std::string& error() const { return _error; }
  YxJsonUTF8Stream& stream() { return _stream; }

 private:
  // How far the string or number that the data's end cut has been read, so that a long one that comes in
  // many pieces is not read from its start each time.
  struct CutToken {
    std::size_t scanned = 0;  // bytes of a number, or behind a string's opening quote; 0: nothing is kept
    // Strings only.
    std::size_t fragment = 0;  // where the fragment begins that is being read
    bool accumulating = false;
    bool broken = false;  // the fragment is no UTF-8
  };
  static constexpr std::ptrdiff_t longToken = 4096;

  YxJsonToken getStringToken(const char*& at, const char* end, YxJsonTokenValue& value);
  YxJsonToken getNumberToken(const char*& at, const char* end, YxJsonTokenValue& value);
  YxJsonToken waitForNumber(const char* at, const char* end);
  bool numberGoesOn(const char* at, const char* end);
  YxJsonToken getLongNumber(const char* first, const char* last, YxJsonTokenValue& value);
  YxJsonToken getStringSlowly(const char*& at, const char* next, const char* end, YxJsonTokenValue& value);
  YxJsonToken match(const char*& at, const char* end, std::string_view literal, YxJsonToken token);
  enum class Escape { done, cut, failed };
  Escape getEscape(const char*& at, const char* end);
  Escape getUnicodeEscape(const char*& at, const char* end);
  bool decodeEscape(char escape, char& character);
  bool decodeHexQuad(const char* digits, char16_t& unit);
  YxJsonToken fail(std::string_view message);
  YxJsonToken illegalStart(char byte);
  YxJsonToken badStop(char byte);

  static bool isDigit(char byte) { return static_cast<unsigned char>(byte - '0') <= 9; }
  static bool isWhitespace(char byte) { return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t'; }
  static bool isPlain(char byte) {  // ASCII that may stand in a string as it is
    return static_cast<signed char>(byte) >= 0x20 && byte != '"' && byte != '\\';
  }
  static const char* skipPlain(const char* at, const char* end);

  YxJsonUTF8Stream _stream;
  std::string _error;
  std::string accumulator_;
  CutToken cut_;
};

// The first byte from `at` on that ends a run of plain ASCII, or `end`.
inline const char* YxJsonTokeniser::skipPlain(const char* at, const char* end) {
#if defined(__SSE2__)
  const __m128i blank = _mm_set1_epi8(0x20);
  const __m128i quote = _mm_set1_epi8('"');
  const __m128i backslash = _mm_set1_epi8('\\');
  while (end - at >= 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    // The comparison is signed: bytes of 0x80 and above count as below blank, too.
    const __m128i stops =
        _mm_or_si128(_mm_cmplt_epi8(bytes, blank),
                     _mm_or_si128(_mm_cmpeq_epi8(bytes, quote), _mm_cmpeq_epi8(bytes, backslash)));
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(stops));
    if (mask != 0) return at + __builtin_ctz(mask);
    at += 16;
  }
#else
  while (end - at >= 8) {
    constexpr std::uint64_t ones = 0x0101010101010101u;
    constexpr std::uint64_t tops = 0x8080808080808080u;
    std::uint64_t bytes;
    std::memcpy(&bytes, at, 8);
    const auto zeroBytes = [&](std::uint64_t word) { return (word - ones) & ~word; };
    const std::uint64_t stops =
        bytes | (bytes - ones * 0x20) | zeroBytes(bytes ^ (ones * '"')) | zeroBytes(bytes ^ (ones * '\\'));
    if ((stops & tops) != 0) break;
    at += 8;
  }
#endif
  while (at != end && isPlain(*at)) ++at;
  return at;
}

[[gnu::always_inline]] inline YxJsonToken YxJsonTokeniser::getStringToken(const char*& at, const char* end,
                                                                          YxJsonTokenValue& value) {
  const char* stop = at + 1 + cut_.scanned;
  if (cut_.scanned == 0) [[likely]] {
    stop = skipPlain(stop, end);
    if (stop != end && *stop == '"') [[likely]] {
      value.text = {at + 1, static_cast<std::size_t>(stop - at - 1)};
      at = stop + 1;
      return YxJsonToken::string;
    }
  }
  return getStringSlowly(at, stop, end, value);
}

[[gnu::always_inline]] inline YxJsonToken YxJsonTokeniser::getNumberToken(const char*& at, const char* end,
                                                                          YxJsonTokenValue& value) {
  if (cut_.scanned != 0 && numberGoesOn(at, end)) [[unlikely]]
    return YxJsonToken::end;
  const char* next = at;
  const bool negative = *next == '-';
  if (negative && ++next == end) return waitForNumber(at, end);
  std::size_t digits = 0;
  std::uint64_t mantissa = 0;
  if (*next == '0') {
    if (++next == end) return waitForNumber(at, end);
    if (isDigit(*next)) [[unlikely]]
      return fail("Leading zero is illegal in number");
    digits = 1;
  } else {
    const char* const first = next;
    while (isDigit(*next)) {
      mantissa = mantissa * 10 + static_cast<unsigned char>(*next - '0');
      if (++next == end) return waitForNumber(at, end);
    }
    digits = static_cast<std::size_t>(next - first);
  }
  std::uint16_t exponent = 0;  // wraps, and is signed in the end
  const bool isFraction = *next == '.';
  if (isFraction) {
    const char* const first = ++next;
    if (next == end) return waitForNumber(at, end);
    while (isDigit(*next)) {
      mantissa = mantissa * 10 + static_cast<unsigned char>(*next - '0');
      if (++next == end) return waitForNumber(at, end);
    }
    if (next == first) [[unlikely]]
      return fail("No digits after decimal point");
    const auto places = static_cast<std::size_t>(next - first);
    digits += places;
    exponent = static_cast<std::uint16_t>(0 - places);
  }
  const bool hasExponent = *next == 'e' || *next == 'E';
  if (hasExponent) [[unlikely]] {
    if (++next == end) return waitForNumber(at, end);
    const bool lower = *next == '-';
    if ((lower || *next == '+') && ++next == end) return waitForNumber(at, end);
    const char* const first = next;
    std::uint16_t written = 0;
    while (isDigit(*next)) {
      written = static_cast<std::uint16_t>(written * 10u + static_cast<unsigned char>(*next - '0'));
      if (++next == end) return waitForNumber(at, end);
    }
    if (next == first) return fail("No digits in exponent");
    exponent = static_cast<std::uint16_t>(lower ? exponent - written : exponent + written);
  }
  // Only now: a minus sign may be followed by a point at once.
  if (digits == 0) [[unlikely]]
    return fail("No digits after initial minus");
  const char* const firstByte = at;
  at = next;
  if (digits >= 19) [[unlikely]]
    return getLongNumber(firstByte, next, value);
  value.number.kind = isFraction || hasExponent ? Kind::decimal
                      : negative                ? Kind::signedInteger
                                                : Kind::unsignedInteger;
  value.number.negative = negative;
  value.number.isLong = false;
  value.number.exponent = static_cast<std::int16_t>(exponent);
  value.number.magnitude = mantissa;
  value.number.text = {};
  return YxJsonToken::number;
}

[[gnu::always_inline]] inline YxJsonToken YxJsonTokeniser::scan(const char*& at, const char* end,
                                                                YxJsonTokenValue& value) {
  while (at < end && isWhitespace(*at)) ++at;
  if (at >= end) return YxJsonToken::end;
  switch (*at) {
    case '"':
      return getStringToken(at, end, value);
    case '-':
    case '0':
    case '1':
    case '2':
    case '3':
    case '4':
    case '5':
    case '6':
    case '7':
    case '8':
    case '9':
      return getNumberToken(at, end, value);
    case ',':
      ++at;
      return YxJsonToken::valueSeparator;
    case ':':
      ++at;
      return YxJsonToken::keyValueSeparator;
    case '[':
      ++at;
      return YxJsonToken::arrayStart;
    case ']':
      ++at;
      return YxJsonToken::arrayEnd;
    case '{':
      ++at;
      return YxJsonToken::objectStart;
    case '}':
      ++at;
      return YxJsonToken::objectEnd;
    case 'f':
      return match(at, end, "false", YxJsonToken::booleanFalse);
    case 't':
      return match(at, end, "true", YxJsonToken::booleanTrue);
    case 'n':
      return match(at, end, "null", YxJsonToken::null);
    case '+':
      return fail("Leading + is illegal in number");
    default:
      return illegalStart(*at);
  }
}

inline YxJsonToken YxJsonTokeniser::match(const char*& at, const char* end, std::string_view literal,
                                          YxJsonToken token) {
  if (static_cast<std::size_t>(end - at) < literal.size()) return YxJsonToken::end;
  if (std::memcmp(at, literal.data(), literal.size()) != 0) [[unlikely]] {
    return fail("Expected '" + std::string(literal) + "' after initial '" + literal.front() + "'");
  }
  at += literal.size();
  return token;
}

}  // namespace seedmote::json
