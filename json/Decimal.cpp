#include "json/Decimal.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

#include "json/Digits.h"
#include "json/Document.h"

namespace seedmote::json::detail {

namespace {

constexpr std::uint64_t negativeBit = 1u << 8;
constexpr std::uint64_t longBit = 1u << 9;
constexpr std::uint64_t notANumberBit = 1u << 10;

constexpr std::int64_t exponentLimit = 1'000'000'000'000;  // written exponents beyond it are held at it
constexpr std::int64_t lowestShortExponent = std::numeric_limits<std::int16_t>::min();
constexpr std::int64_t highestShortExponent = std::numeric_limits<std::int16_t>::max();
constexpr std::size_t shortDigits = 18;  // what the reader takes as a mantissa

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

struct Parsed {
  bool negative = false;
  std::string_view whole;
  std::string_view fraction;
  std::int64_t exponent = 0;
};

std::string_view takeDigits(std::string_view& rest) {
  std::size_t count = 0;
  while (count < rest.size() && isDigit(rest[count])) ++count;
  const std::string_view digits = rest.substr(0, count);
  rest.remove_prefix(count);
  return digits;
}

bool takeOne(std::string_view& rest, char wanted) {
  if (rest.empty() || rest.front() != wanted) return false;
  rest.remove_prefix(1);
  return true;
}

std::optional<Parsed> parse(std::string_view rest) {
  Parsed parsed;
  parsed.negative = takeOne(rest, '-');
  parsed.whole = takeDigits(rest);
  if (takeOne(rest, '.')) {
    parsed.fraction = takeDigits(rest);
    if (parsed.fraction.empty()) return std::nullopt;
  }
  if (parsed.whole.empty() && parsed.fraction.empty()) return std::nullopt;
  if (takeOne(rest, 'e') || takeOne(rest, 'E')) {
    const bool lower = takeOne(rest, '-');
    if (!lower) takeOne(rest, '+');
    const std::string_view digits = takeDigits(rest);
    if (digits.empty()) return std::nullopt;
    for (const char digit : digits) {
      parsed.exponent = std::min(parsed.exponent * 10 + (digit - '0'), exponentLimit);
    }
    if (lower) parsed.exponent = -parsed.exponent;
  }
  if (!rest.empty()) return std::nullopt;
  return parsed;
}

// 10^exponent for exponents that a double holds exactly.
constexpr double exactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

}  // namespace

Node notANumberNode() {
  Node node = Node::plain(Kind::decimal);
  node.meta |= notANumberBit;
  return node;
}

bool isNotANumber(const Node& node) {
  return (node.meta & notANumberBit) != 0;
}

std::optional<Node> decimalNode(Document& document, std::string_view text) {
  const std::optional<Parsed> parsed = parse(text);
  if (!parsed) return std::nullopt;
  std::string digits;
  digits.reserve(parsed->whole.size() + parsed->fraction.size());
  digits.append(parsed->whole).append(parsed->fraction);
  std::int64_t exponent = parsed->exponent - static_cast<std::int64_t>(parsed->fraction.size());
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
  if (digits.empty()) return shortDecimalNode(false, 0, 0);
  while (digits.back() == '0') {
    digits.pop_back();
    ++exponent;
  }
  // A number with few digits may still come out short, with its exponent made to fit by zeros.
  while (exponent > highestShortExponent && digits.size() < shortDigits) {
    digits.push_back('0');
    --exponent;
  }
  if (digits.size() <= shortDigits && exponent >= lowestShortExponent && exponent <= highestShortExponent) {
    std::uint64_t mantissa = 0;
    for (const char digit : digits) mantissa = mantissa * 10 + static_cast<std::uint64_t>(digit - '0');
    return shortDecimalNode(parsed->negative, mantissa, static_cast<std::int16_t>(exponent));
  }
  auto* stored = static_cast<LongDecimal*>(document.allocate(sizeof(LongDecimal) + digits.size()));
  stored->exponent = exponent;
  stored->digitCount = digits.size();
  std::memcpy(reinterpret_cast<char*>(stored + 1), digits.data(), digits.size());
  Node node = Node::plain(Kind::decimal);
  node.meta |= longBit | (parsed->negative ? negativeBit : 0);
  node.longDecimal = stored;
  return node;
}

DecimalView decimalView(const Node& node, DigitBuffer& buffer) {
  DecimalView view;
  view.notANumber = isNotANumber(node);
  view.negative = (node.meta & negativeBit) != 0;
  if ((node.meta & longBit) != 0) {
    view.digits = {node.longDecimal->digits(), node.longDecimal->digitCount};
    view.exponent = node.longDecimal->exponent;
  } else if (node.unsignedValue != 0) {
    const char* const end = putDigits(buffer.bytes, node.unsignedValue);
    view.digits = {buffer.bytes, static_cast<std::size_t>(end - buffer.bytes)};
    view.exponent = static_cast<std::int16_t>(static_cast<std::uint16_t>(node.meta >> 16));
  }
  return view;
}

std::string decimalText(const Node& node) {
  DigitBuffer buffer;
  const DecimalView view = decimalView(node, buffer);
  if (view.notANumber) return "NaN";
  std::string_view digits = view.digits;
  if (digits.empty()) return "0";
  std::int64_t exponent = view.exponent;
  // Zeros at the end go, as long as the exponent stays one that reads back as it is.
  while (digits.size() > 1 && digits.back() == '0' && exponent != highestShortExponent) {
    digits.remove_suffix(1);
    ++exponent;
  }
  std::string text(view.negative ? 1 : 0, '-');
  if (exponent < -128 || exponent > 127) {
    // An exponent beyond 16 bits is only read as it stands behind 19 digits.
    const bool fits = exponent >= lowestShortExponent && exponent <= highestShortExponent;
    const std::size_t zeros = fits || digits.size() > shortDigits ? 0 : shortDigits + 1 - digits.size();
    text.append(digits).append(zeros, '0') += 'E';
    return text += std::to_string(exponent - static_cast<std::int64_t>(zeros));
  }
  if (exponent >= 0) return text.append(digits).append(static_cast<std::size_t>(exponent), '0');
  const auto places = static_cast<std::size_t>(-exponent);
  if (digits.size() <= places) return text.append("0.").append(places - digits.size(), '0').append(digits);
  const std::size_t whole = digits.size() - places;
  text.append(digits.substr(0, whole)) += '.';
  return text.append(digits.substr(whole));
}

double decimalToDouble(const Node& node) {
  DigitBuffer buffer;
  const DecimalView view = decimalView(node, buffer);
  if (view.notANumber) return std::numeric_limits<double>::quiet_NaN();
  if (view.digits.empty()) return 0.0;
  double value = 0.0;
  const bool isShort = (node.meta & longBit) == 0;
  if (isShort && node.unsignedValue <= std::uint64_t{1} << 53 && view.exponent >= -22 &&
      view.exponent <= 22) {
    // Both operands are exact, so the one operation rounds correctly.
    value = static_cast<double>(node.unsignedValue);
    value = view.exponent < 0 ? value / exactPowers[-view.exponent] : value * exactPowers[view.exponent];
  } else {
    const std::string text = std::string(view.digits) + "e" + std::to_string(view.exponent);
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
      const bool large = static_cast<std::int64_t>(view.digits.size()) + view.exponent > 0;
      value = large ? std::numeric_limits<double>::infinity() : 0.0;
    }
  }
  return view.negative ? -value : value;
}

std::int64_t decimalToInteger(const Node& node, std::int64_t lowest, std::int64_t highest) {
  DigitBuffer buffer;
  const DecimalView view = decimalView(node, buffer);
  if (view.notANumber) return 0;
  const std::int64_t limit = view.negative ? lowest : highest;
  const auto digitCount = static_cast<std::int64_t>(view.digits.size());
  const std::int64_t wholeDigits = view.digits.empty() ? 0 : digitCount + view.exponent;
  if (wholeDigits > 19) return limit;
  std::uint64_t magnitude = 0;  // 19 digits fit
  for (std::int64_t i = 0; i < wholeDigits; ++i) {
    const char digit = i < digitCount ? view.digits[static_cast<std::size_t>(i)] : '0';
    magnitude = magnitude * 10 + static_cast<std::uint64_t>(digit - '0');
  }
  const std::uint64_t most =
      view.negative ? ~static_cast<std::uint64_t>(lowest) + 1 : static_cast<std::uint64_t>(highest);
  if (magnitude >= most) return limit;
  const auto value = static_cast<std::int64_t>(magnitude);
  return view.negative ? -value : value;
}

}  // namespace seedmote::json::detail
