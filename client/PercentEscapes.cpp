#include "client/PercentEscapes.h"

namespace seedmote {
namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

// Brackets are among them because an IPv6 address stands in them.
constexpr std::string_view kLegalMarks = "-_.!~*'();/?:@&=+$,[]";

bool isAsciiAlphanumeric(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

bool isEscape(std::string_view text) {
  return text.size() >= 3 && text[0] == '%' && isHexDigit(text[1]) && isHexDigit(text[2]);
}

}  // namespace

std::string addingPercentEscapes(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (isAsciiAlphanumeric(c) || kLegalMarks.find(c) != std::string_view::npos ||
        isEscape(text.substr(at))) {
      escaped += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    escaped += '%';
    escaped += kHexDigits[byte >> 4];
    escaped += kHexDigits[byte & 15];
  }
  return escaped;
}

}  // namespace seedmote
