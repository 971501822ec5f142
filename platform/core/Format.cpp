#include "platform/core/Format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace seedmote::platform {
namespace {

constexpr std::string_view kBullets = "••••••••";
constexpr int kNoPrecision = -1;
constexpr int kLargestField = 9999;  // a width or precision beyond it is a slip, not a wish
constexpr int kDefaultRealPrecision = 6;

struct Directive {
  bool left = false;
  bool plus = false;
  bool blank = false;
  bool alternate = false;
  bool zeros = false;
  int width = 0;
  int precision = kNoPrecision;
  int bits = 32;
  char conversion = 0;
};

class Output {
 public:
  Output(std::string& out, std::size_t limit) : out_(out), limit_(limit) {}

  void append(std::string_view text) {
    const std::size_t room = limit_ - std::min(limit_, length_);
    out_.append(text.substr(0, room));
    length_ += text.size();
  }
  void fill(std::size_t count, char with) {
    const std::size_t room = limit_ - std::min(limit_, length_);
    out_.append(std::min(count, room), with);
    length_ += count;
  }
  std::size_t length() const { return length_; }

 private:
  std::string& out_;
  std::size_t limit_;
  std::size_t length_ = 0;
};

std::size_t codePoints(std::string_view utf8) {
  return static_cast<std::size_t>(std::count_if(
      utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::size_t missingTo(int width, std::size_t length) {
  const auto wanted = static_cast<std::size_t>(width);
  return wanted > length ? wanted - length : 0;
}

void appendPadded(Output& out, const Directive& directive, std::string_view text) {
  const std::size_t padding = directive.width == 0 ? 0 : missingTo(directive.width, codePoints(text));
  if (!directive.left) out.fill(padding, ' ');
  out.append(text);
  if (directive.left) out.fill(padding, ' ');
}

// `head` (sign, prefix) stands before padding zeros, after padding blanks.
void appendNumber(Output& out, const Directive& directive, std::string_view head, std::string_view digits,
                  bool zeros) {
  const std::size_t padding = missingTo(directive.width, head.size() + digits.size());
  if (!directive.left && !zeros) out.fill(padding, ' ');
  out.append(head);
  if (!directive.left && zeros) out.fill(padding, '0');
  out.append(digits);
  if (directive.left) out.fill(padding, ' ');
}

std::string_view signText(const Directive& directive, bool negative) {
  if (negative) return "-";
  if (directive.plus) return "+";
  return directive.blank ? " " : "";
}

void appendDigits(Output& out, const Directive& directive, std::string_view head, std::string_view digits) {
  if (directive.precision == kNoPrecision) {
    appendNumber(out, directive, head, digits, directive.zeros);
    return;
  }
  if (directive.precision == 0 && digits == "0") digits = {};
  const std::size_t leading = missingTo(directive.precision, digits.size());
  if (leading == 0) {
    appendNumber(out, directive, head, digits, false);
  } else {
    appendNumber(out, directive, head, std::string(leading, '0').append(digits), false);
  }
}

std::int64_t asSigned(std::uint64_t bits, int width) {
  switch (width) {
    case 8:
      return static_cast<std::int8_t>(bits);
    case 16:
      return static_cast<std::int16_t>(bits);
    case 32:
      return static_cast<std::int32_t>(bits);
    default:
      return static_cast<std::int64_t>(bits);
  }
}

std::uint64_t asUnsigned(std::uint64_t bits, int width) {
  return width == 64 ? bits : bits & ((std::uint64_t{1} << width) - 1);
}

void appendInteger(Output& out, const Directive& directive, std::uint64_t bits) {
  std::array<char, 24> buffer{};
  const auto written = [&buffer](std::to_chars_result result) {
    return std::string_view(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
  };
  if (directive.conversion == 'd' || directive.conversion == 'i') {
    const std::int64_t value = asSigned(bits, directive.bits);
    const std::uint64_t magnitude =
        value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
    const auto digits = written(std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude));
    appendDigits(out, directive, signText(directive, value < 0), digits);
    return;
  }
  const std::uint64_t value = asUnsigned(bits, directive.bits);
  const int base = directive.conversion == 'o' ? 8 : directive.conversion == 'u' ? 10 : 16;
  const auto digits = written(std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, base));
  std::string_view head;
  if (directive.conversion == 'X') {
    for (char& c : buffer) {
      if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
    }
  }
  if (directive.alternate && base == 16 && value != 0) head = directive.conversion == 'X' ? "0X" : "0x";
  if (directive.alternate && base == 8 && (value != 0 || directive.precision == 0) &&
      directive.precision <= static_cast<int>(digits.size())) {
    head = "0";
  }
  appendDigits(out, directive, head, digits);
}

std::string digitsOf(double magnitude, std::chars_format style, int precision) {
  std::string text(static_cast<std::size_t>(std::numeric_limits<double>::max_exponent10 + 8 + precision),
                   '\0');
  const auto result = std::to_chars(text.data(), text.data() + text.size(), magnitude, style, precision);
  text.resize(static_cast<std::size_t>(result.ptr - text.data()));
  return text;
}

// %#g keeps its trailing zeros, so it is %f or %e with the precision that C lays down for it.
std::string alternateGeneral(double magnitude, int precision) {
  const int significant = std::max(precision, 1);
  std::string scientific = digitsOf(magnitude, std::chars_format::scientific, significant - 1);
  int exponent = 0;
  const std::size_t mark = scientific.find('e');
  const char* first = scientific.data() + mark + (scientific[mark + 1] == '+' ? 2 : 1);
  std::from_chars(first, scientific.data() + scientific.size(), exponent);
  if (exponent < -4 || exponent >= significant) return scientific;
  return digitsOf(magnitude, std::chars_format::fixed, significant - 1 - exponent);
}

std::string realDigits(const Directive& directive, double magnitude) {
  const char style = static_cast<char>(directive.conversion | 0x20);
  const int precision = directive.precision == kNoPrecision ? kDefaultRealPrecision : directive.precision;
  std::string digits;
  if (style == 'f') {
    digits = digitsOf(magnitude, std::chars_format::fixed, precision);
  } else if (style == 'e') {
    digits = digitsOf(magnitude, std::chars_format::scientific, precision);
  } else if (directive.alternate) {
    digits = alternateGeneral(magnitude, precision);
  } else {
    digits = digitsOf(magnitude, std::chars_format::general, precision);
  }
  if (directive.alternate && digits.find('.') == std::string::npos) {
    digits.insert(std::min(digits.find('e'), digits.size()), 1, '.');
  }
  if (style != directive.conversion) std::replace(digits.begin(), digits.end(), 'e', 'E');
  return digits;
}

void appendReal(Output& out, const Directive& directive, double value) {
  const bool upper = directive.conversion >= 'A' && directive.conversion <= 'Z';
  if (std::isnan(value)) {
    appendNumber(out, directive, {}, upper ? "NAN" : "nan", false);
  } else if (std::isinf(value)) {
    appendNumber(out, directive, signText(directive, value < 0), upper ? "INF" : "inf", false);
  } else {
    appendNumber(out, directive, signText(directive, std::signbit(value)),
                 realDigits(directive, std::fabs(value)), directive.zeros);
  }
}

// A number without a format: the shortest text that reads back as the same number.
std::string plainReal(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
  const double magnitude = std::fabs(value);
  const bool fixed = magnitude == 0 || (magnitude >= 1e-5 && magnitude < 1e17);
  std::array<char, 64> buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                    fixed ? std::chars_format::fixed : std::chars_format::scientific);
  return {buffer.data(), result.ptr};
}

void appendInItsOwnWay(Output& out, const Directive& directive, const FormatArg& arg) {
  Directive plain = directive;
  plain.conversion = arg.kind() == FormatArg::Kind::unsignedInteger ? 'u' : 'd';
  plain.bits = 64;
  plain.precision = kNoPrecision;
  plain.zeros = false;
  switch (arg.kind()) {
    case FormatArg::Kind::signedInteger:
      return appendInteger(out, plain, static_cast<std::uint64_t>(arg.signedValue()));
    case FormatArg::Kind::unsignedInteger:
      return appendInteger(out, plain, arg.unsignedValue());
    case FormatArg::Kind::real:
      return appendPadded(out, directive, plainReal(arg.real()));
    case FormatArg::Kind::text:
      return appendPadded(out, directive, arg.text());
    case FormatArg::Kind::absent:
      return appendPadded(out, directive, "(null)");
    case FormatArg::Kind::secret:
      return appendPadded(out, directive, kBullets);
  }
}

bool isInteger(const FormatArg& arg) {
  return arg.kind() == FormatArg::Kind::signedInteger || arg.kind() == FormatArg::Kind::unsignedInteger;
}

std::uint64_t bitsOf(const FormatArg& arg) {
  return arg.kind() == FormatArg::Kind::signedInteger ? static_cast<std::uint64_t>(arg.signedValue())
                                                      : arg.unsignedValue();
}

void appendArgument(Output& out, const Directive& directive, const FormatArg& arg) {
  switch (directive.conversion) {
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o':
      if (isInteger(arg)) return appendInteger(out, directive, bitsOf(arg));
      break;
    case 'c':
      if (isInteger(arg)) {
        const char byte = static_cast<char>(bitsOf(arg));
        return appendNumber(out, directive, {}, {&byte, 1}, false);
      }
      break;
    case 'f':
    case 'F':
    case 'e':
    case 'E':
    case 'g':
    case 'G':
      if (arg.kind() == FormatArg::Kind::real) return appendReal(out, directive, arg.real());
      break;
    case 's':
      if (arg.kind() == FormatArg::Kind::text) {
        const std::size_t length = directive.precision == kNoPrecision
                                       ? std::string_view::npos
                                       : static_cast<std::size_t>(directive.precision);
        return appendNumber(out, directive, {}, arg.text().substr(0, length), false);
      }
      break;
    default:
      break;
  }
  appendInItsOwnWay(out, directive, arg);
}

// Reads what stands between '%' and the conversion, and the conversion; 0 as conversion when it is none.
class DirectiveReader {
 public:
  explicit DirectiveReader(std::string_view text) : text_(text) {}

  Directive read() {
    while (readFlag()) {
    }
    directive_.width = readNumber();
    if (peek() == '.') {
      ++used_;
      directive_.precision = readNumber();
    }
    readLength();
    const char conversion = peek();
    if (conversion != 0 && std::string_view("diuxXocfFeEgGs@").find(conversion) != std::string_view::npos) {
      directive_.conversion = conversion;
      ++used_;
    }
    return directive_;
  }

  std::size_t used() const { return used_; }

 private:
  char peek() const { return used_ < text_.size() ? text_[used_] : '\0'; }

  bool readFlag() {
    switch (peek()) {
      case '-':
        directive_.left = true;
        break;
      case '+':
        directive_.plus = true;
        break;
      case ' ':
        directive_.blank = true;
        break;
      case '#':
        directive_.alternate = true;
        break;
      case '0':
        directive_.zeros = true;
        break;
      default:
        return false;
    }
    ++used_;
    return true;
  }

  int readNumber() {
    int number = 0;
    for (; peek() >= '0' && peek() <= '9'; ++used_)
      number = std::min(number * 10 + (peek() - '0'), kLargestField);
    return number;
  }

  void readLength() {
    for (;; ++used_) {
      const char c = peek();
      if (c == 'h') {
        directive_.bits = directive_.bits == 16 ? 8 : 16;
      } else if (c == 'l' || c == 'z' || c == 'j' || c == 't') {
        directive_.bits = 64;
      } else {
        return;
      }
    }
  }

  std::string_view text_;
  std::size_t used_ = 0;
  Directive directive_;
};

}  // namespace

std::size_t appendFormat(std::string& out, std::size_t limit, std::string_view format, const FormatArg* args,
                         std::size_t count) {
  Output output(out, limit);
  std::size_t next = 0;
  while (!format.empty()) {
    const std::size_t percent = format.find('%');
    output.append(format.substr(0, percent));
    if (percent == std::string_view::npos) break;
    format.remove_prefix(percent + 1);
    if (format.starts_with('%')) {
      output.append("%");
      format.remove_prefix(1);
      continue;
    }
    DirectiveReader reader(format);
    const Directive directive = reader.read();
    if (directive.conversion == 0) {
      output.append("%");  // no conversion: the text stands as it is written
      continue;
    }
    format.remove_prefix(reader.used());
    if (next < count) {
      appendArgument(output, directive, args[next++]);
    } else {
      appendPadded(output, directive, "(missing)");
    }
  }
  return output.length();
}

std::string formatText(std::string_view format, const FormatArg* args, std::size_t count) {
  std::string text;
  appendFormat(text, std::numeric_limits<std::size_t>::max(), format, args, count);
  return text;
}

}  // namespace seedmote::platform
