#include "json/YxJsonTokeniser.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace seedmote::json {

namespace {
bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
// The value of a hexadecimal digit; for any other byte a number too large for four digits.
constexpr std::array<int, 256> hexValues = [] {
  std::array<int, 256> values{};
  values.fill(1 << 16);
  for (int i = 0; i < 10; ++i) values[static_cast<std::size_t>('0' + i)] = i;
  for (int i = 0; i < 6; ++i) values[static_cast<std::size_t>('a' + i)] = 10 + i;
  for (int i = 0; i < 6; ++i) values[static_cast<std::size_t>('A' + i)] = 10 + i;
  return values;
}();

bool isStop(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\';
}
bool isLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}
}  // namespace

YxJsonToken YxJsonTokeniser::fail(std::string_view message) {
  _error = message;
  return YxJsonToken::error;
}

YxJsonToken YxJsonTokeniser::illegalStart(char byte) {
  // The byte is shown as the character of its number.
  _error = "Illegal start of token [";
  detail::appendUtf8(_error, static_cast<unsigned char>(byte));
  _error += ']';
  return YxJsonToken::error;
}

YxJsonToken YxJsonTokeniser::badStop(char byte) {
  const unsigned value = static_cast<unsigned char>(byte);
  char message[48];
  std::snprintf(message, sizeof(message),
                value < 0x20 ? "Unescaped control character [0x%.2X]" : "Invalid UTF-8: '%x'", value);
  return fail(message);
}

YxJsonToken YxJsonTokeniser::waitForNumber(const char* at, const char* end) {
  if (end - at > longToken) cut_.scanned = static_cast<std::size_t>(end - at);
  return YxJsonToken::end;
}

// Whether the long number that was cut only got more digits: wherever it was cut, they leave it as unfinished
// as it was. Any other byte has it read again from its start, which happens a few times in a number at most.
bool YxJsonTokeniser::numberGoesOn(const char* at, const char* end) {
  const char* const next = std::find_if_not(at + cut_.scanned, end, isDigit);
  cut_ = {};
  if (next != end) return false;
  waitForNumber(at, end);
  return true;
}

YxJsonToken YxJsonTokeniser::getLongNumber(const char* first, const char* last, YxJsonTokenValue& value) {
  value.number = {};
  value.number.kind = Kind::decimal;
  value.number.negative = *first == '-';
  value.number.isLong = true;
  value.number.text = {first, static_cast<std::size_t>(last - first)};
  return YxJsonToken::number;
}

// A string with escapes or characters beyond ASCII, a faulty one, or one that the data's end cuts. A
// fragment, the bytes between two escapes, must be well-formed UTF-8 by itself; that counts only once its
// stopping byte is there. The string begins at `at`; up to `next` it has been read already.
YxJsonToken YxJsonTokeniser::getStringSlowly(const char*& at, const char* next, const char* end,
                                             YxJsonTokenValue& value) {
  const char* const content = at + 1;
  CutToken state = cut_;
  cut_ = {};
  if (!state.accumulating) accumulator_.clear();
  const char* fragment = content + state.fragment;
  const auto waitFrom = [&](const char* place) {
    if (end - content > longToken) {
      state.scanned = static_cast<std::size_t>(place - content);
      state.fragment = static_cast<std::size_t>(fragment - content);
      cut_ = state;
    }
    return YxJsonToken::end;
  };
  for (;;) {
    if (next != end && isPlain(*next)) next = skipPlain(next, end);
    if (next == end) return waitFrom(next);
    if (static_cast<unsigned char>(*next) >= 0x80) {
      const char* const behind = state.broken ? next + 1 : detail::skipUtf8Sequence(next, end);
      if (behind == nullptr && end - next < 4) {
        // Perhaps only cut off; whether it is faulty shows when there is more, or at a stopping byte.
        if (std::none_of(next, end, isStop)) return waitFrom(next);
      }
      if (behind == nullptr) state.broken = true;
      next = behind == nullptr ? next + 1 : behind;
      continue;
    }
    if (state.broken) return fail("Broken Unicode encoding");
    const std::string_view bytes(fragment, static_cast<std::size_t>(next - fragment));
    if (*next == '"') {
      at = next + 1;
      value.text = bytes;
      if (state.accumulating) value.text = accumulator_.append(bytes);
      return YxJsonToken::string;
    }
    if (*next != '\\') return badStop(*next);
    const std::size_t kept = accumulator_.size();
    accumulator_.append(bytes);
    const char* escape = next + 1;
    switch (getEscape(escape, end)) {
      case Escape::failed:
        return YxJsonToken::error;
      case Escape::cut:
        accumulator_.resize(kept);
        return waitFrom(next);
      case Escape::done:
        break;
    }
    state.accumulating = true;
    next = fragment = escape;
  }
}

// `at` stands behind the backslash and moves behind the escape, whose character is accumulated.
YxJsonTokeniser::Escape YxJsonTokeniser::getEscape(const char*& at, const char* end) {
  if (at == end) return Escape::cut;
  if (*at == 'u') return getUnicodeEscape(at, end);
  char character;
  if (!decodeEscape(*at, character)) {
    fail("Illegal escape character");
    return Escape::failed;
  }
  accumulator_.push_back(character);
  ++at;
  return Escape::done;
}

YxJsonTokeniser::Escape YxJsonTokeniser::getUnicodeEscape(const char*& at, const char* end) {
  const auto failed = [this](std::string_view message) {
    fail(message);
    return Escape::failed;
  };
  if (end - at < 5) return Escape::cut;
  char16_t unit;
  if (!decodeHexQuad(at + 1, unit)) return failed("Invalid hex quad");
  at += 5;
  if (isLowSurrogate(unit)) return failed("Invalid high character in surrogate pair");
  if (!isHighSurrogate(unit)) {
    // Names in other scripts come as one such escape after the other: they are taken in one go.
    char bytes[96];
    char* to = detail::putUtf8(bytes, unit);
    const char* const limit = bytes + sizeof(bytes) - 4;
    while (to < limit && end - at >= 6 && at[0] == '\\' && at[1] == 'u' && decodeHexQuad(at + 2, unit) &&
           !isHighSurrogate(unit) && !isLowSurrogate(unit)) {
      to = detail::putUtf8(to, unit);
      at += 6;
    }
    accumulator_.append(bytes, static_cast<std::size_t>(to - bytes));
    return Escape::done;
  }
  if (end - at < 6) return Escape::cut;
  char16_t low;
  if (at[0] != '\\' || at[1] != 'u' || !decodeHexQuad(at + 2, low)) {
    return failed("Missing low character in surrogate pair");
  }
  if (!isLowSurrogate(low)) return failed("Invalid low character in surrogate pair");
  at += 6;
  detail::appendUtf8(accumulator_, 0x10000 + ((char32_t{unit} - 0xD800) << 10) + (char32_t{low} - 0xDC00));
  return Escape::done;
}

bool YxJsonTokeniser::decodeEscape(char escape, char& character) {
  switch (escape) {
    case '"':
    case '/':
    case '\\':
      character = escape;
      return true;
    case 'b':
      character = '\b';
      return true;
    case 'f':
      character = '\f';
      return true;
    case 'n':
      character = '\n';
      return true;
    case 'r':
      character = '\r';
      return true;
    case 't':
      character = '\t';
      return true;
    default:
      return false;
  }
}

bool YxJsonTokeniser::decodeHexQuad(const char* digits, char16_t& unit) {
  const auto value = [&](int i) { return hexValues[static_cast<unsigned char>(digits[i])]; };
  const int quad = (value(0) << 12) | (value(1) << 8) | (value(2) << 4) | value(3);
  unit = static_cast<char16_t>(quad);
  return quad <= 0xFFFF;
}

}  // namespace seedmote::json
