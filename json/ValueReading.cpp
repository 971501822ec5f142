#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "json/Decimal.h"
#include "json/Utf8.h"
#include "json/Value.h"
#include "json/YxJsonStreamWriter.h"

namespace seedmote::json {

namespace {

using detail::Node;
template <class T>
using Limits = std::numeric_limits<T>;

// Blanks, an optional sign, and what follows.
std::string_view withoutSign(std::string_view text, bool& negative) {
  const std::size_t start = text.find_first_not_of(" \t\n\r\f\v");
  text.remove_prefix(std::min(start, text.size()));
  negative = !text.empty() && text.front() == '-';
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  return text;
}

// What is described is for people, and a daemon can have a gigabyte made of a few bytes: of 1e-127, say.
class Shortened final : public YxJsonStreamWriterDelegate {
 public:
  struct Enough {};

  void appendBytes(YxJsonStreamWriter&, const char* bytes, std::size_t length) override {
    text_.append(bytes, std::min(length, kMost - text_.size()));
    if (text_.size() == kMost) throw Enough();
  }
  std::string take() { return std::move(text_); }
  // Ends with a whole character, and says that it is not all.
  std::string takePart() {
    while (!text_.empty() && (static_cast<unsigned char>(text_.back()) & 0xC0) == 0x80) text_.pop_back();
    if (!text_.empty() && static_cast<unsigned char>(text_.back()) >= 0x80) text_.pop_back();
    return take() + "...";
  }

 private:
  static constexpr std::size_t kMost = std::size_t{16} << 20;  // bytes

  std::string text_;
};

std::string describedContainer(ValueRef value) {
  Shortened shortened;
  YxJsonStreamWriter writer;
  writer.setMaxDepth(0);
  writer.setDelegate(&shortened);
  try {
    if (!(value.kind() == Kind::array ? writer.writeArray(value) : writer.writeObject(value))) {
      return "<" + writer.error() + ">";
    }
    std::string text = shortened.take();
    return detail::isUtf8(text) ? text : "<A text is not valid UTF-8>";
  } catch (const Shortened::Enough&) {
    return shortened.takePart();
  }
}

template <class T>
T leadingInteger(std::string_view text) {
  bool negative = false;
  const std::string_view digits = withoutSign(text, negative);
  std::uint64_t magnitude = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude);
  if (result.ec == std::errc::invalid_argument) return 0;
  const auto most = static_cast<std::uint64_t>(Limits<T>::max());
  const bool tooLarge = result.ec == std::errc::result_out_of_range || magnitude > most;
  if (tooLarge) return negative ? Limits<T>::min() : Limits<T>::max();
  return static_cast<T>(negative ? -static_cast<std::int64_t>(magnitude)
                                 : static_cast<std::int64_t>(magnitude));
}

double leadingReal(std::string_view text) {
  bool negative = false;
  const std::string_view digits = withoutSign(text, negative);
  const bool isNumber = !digits.empty() && (digits[0] == '.' || (digits[0] >= '0' && digits[0] <= '9'));
  if (!isNumber) return 0;  // "inf" and "nan" are no digits
  double value = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    // Too large or too small: the exact reader knows which.
    const std::string_view used = digits.substr(0, static_cast<std::size_t>(result.ptr - digits.data()));
    value = Value::decimal(used)->doubleValue();
  }
  return negative ? -value : value;
}

template <class T>
T truncated(double value) {
  if (std::isnan(value)) return 0;
  // The upper limit of 64 bits is no double; the first one above it is.
  if (value >= -static_cast<double>(Limits<T>::min())) return Limits<T>::max();
  if (value <= static_cast<double>(Limits<T>::min())) return Limits<T>::min();
  return static_cast<T>(value);
}

template <class T>
T integerOf(const Node* node) {
  if (node == nullptr) return 0;
  switch (node->kind()) {
    case Kind::signedInteger:
    case Kind::unsignedInteger:
    case Kind::boolean:
      return static_cast<T>(node->unsignedValue);
    case Kind::decimal:
      return static_cast<T>(detail::decimalToInteger(*node, Limits<T>::min(), Limits<T>::max()));
    case Kind::real:
      return truncated<T>(node->real);
    case Kind::string:
      return leadingInteger<T>(node->view());
    default:
      return 0;
  }
}

}  // namespace

bool ValueRef::isInteger() const {
  return kind() == Kind::signedInteger || kind() == Kind::unsignedInteger;
}

std::optional<std::int64_t> ValueRef::exactInteger() const {
  if (kind() == Kind::signedInteger) return node_->signedValue;
  if (kind() == Kind::unsignedInteger && node_->signedValue >= 0) return node_->signedValue;
  return std::nullopt;
}

std::int32_t ValueRef::intValue() const {
  return integerOf<std::int32_t>(node_);
}
std::int64_t ValueRef::longLongValue() const {
  return integerOf<std::int64_t>(node_);
}
float ValueRef::floatValue() const {
  // By way of a double, a large integer would be rounded twice.
  if (kind() == Kind::signedInteger) return static_cast<float>(node_->signedValue);
  if (kind() == Kind::unsignedInteger) return static_cast<float>(node_->unsignedValue);
  return static_cast<float>(doubleValue());
}

double ValueRef::doubleValue() const {
  double value = 0;
  switch (kind()) {
    case Kind::signedInteger:
      return static_cast<double>(node_->signedValue);
    case Kind::unsignedInteger:
    case Kind::boolean:
      return static_cast<double>(node_->unsignedValue);
    case Kind::decimal:
      value = detail::decimalToDouble(*node_);
      break;
    case Kind::real:
      value = node_->real;
      break;
    case Kind::string:
      return leadingReal(node_->view());
    default:
      return 0;
  }
  return std::isnan(value) ? 0 : value;
}

bool ValueRef::boolValue() const {
  switch (kind()) {
    case Kind::signedInteger:
    case Kind::unsignedInteger:
    case Kind::boolean:
      return node_->unsignedValue != 0;
    case Kind::string:
      return leadingInteger<std::int64_t>(node_->view()) != 0;
    case Kind::decimal: {
      detail::DigitBuffer buffer;
      return !detail::decimalView(*node_, buffer).digits.empty();
    }
    default:
      return doubleValue() != 0;
  }
}

std::string ValueRef::description() const {
  switch (kind()) {
    case Kind::absent:
      return "(null)";
    case Kind::null:
      return "<null>";
    case Kind::boolean:
      return node_->unsignedValue != 0 ? "1" : "0";
    case Kind::signedInteger:
      return std::to_string(node_->signedValue);
    case Kind::unsignedInteger:
      return std::to_string(node_->unsignedValue);
    case Kind::decimal:
      return detail::decimalText(*node_);
    case Kind::real: {
      if (std::isnan(node_->real)) return "nan";
      char buffer[40];
      const auto result = std::to_chars(buffer, buffer + sizeof(buffer), node_->real);
      return std::string(buffer, result.ptr);
    }
    case Kind::string:
      return std::string(node_->view());
    case Kind::array:
    case Kind::dictionary:
      return describedContainer(*this);
    case Kind::foreign:
      break;
  }
  const detail::Foreign& foreign = *node_->foreign;
  return foreign.description.empty() ? "<" + foreign.className + ">" : foreign.description;
}

}  // namespace seedmote::json
