#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "json/Digits.h"
#include "json/Node.h"

// Exact decimal numbers: sign, digits, and the power of ten of the last digit. For the files of this room.
//
// In a node a short decimal is a 64-bit mantissa with a 16-bit exponent; a long one (19 digits and more, or
// an exponent that doesn't fit) points to its digits. There is no negative zero, as there is none in
// decimal arithmetic.
namespace seedmote::json::detail {

class Document;

// The digits point into the node's tree, or into the buffer for a short decimal.
struct DecimalView {
  bool notANumber = false;
  bool negative = false;
  std::string_view digits;    // no zeros at the start; "" is zero
  std::int64_t exponent = 0;  // 10^exponent is the weight of the last digit
};
struct DigitBuffer {
  char bytes[mostDigits];
};

inline Node shortDecimalNode(bool negative, std::uint64_t mantissa, std::int16_t exponent) {
  Node node;
  node.meta = static_cast<std::uint64_t>(Kind::decimal) | (std::uint64_t{negative && mantissa != 0} << 8) |
              (static_cast<std::uint64_t>(static_cast<std::uint16_t>(exponent)) << 16);
  node.unsignedValue = mantissa;
  return node;
}
Node notANumberNode();
// From text of JSON's number grammar, of any length. Absent when the text is something else.
std::optional<Node> decimalNode(Document& document, std::string_view text);

DecimalView decimalView(const Node& node, DigitBuffer& buffer);

// Plain for exponents from -128 to 127, else with E; "NaN" for not-a-number.
std::string decimalText(const Node& node);
double decimalToDouble(const Node& node);
// Toward zero, held within `lowest` and `highest`; 0 for not-a-number.
std::int64_t decimalToInteger(const Node& node, std::int64_t lowest, std::int64_t highest);
bool isNotANumber(const Node& node);

}  // namespace seedmote::json::detail
