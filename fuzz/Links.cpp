// Any text as a link: escaped it is fit for a URL, means the same, and stays as it is when it is escaped
// again. With it what else is done to texts that users and daemons give.
#include <QByteArray>
#include <charconv>
#include <string>
#include <string_view>

#include "client/PercentEscapes.h"
#include "client/RVUtility.h"
#include "fuzz/Target.h"
#include "json/Utf8.h"
#include "platform/core/NumberText.h"
#include "platform/core/Utf8.h"

namespace seedmote::fuzz {
namespace {

QByteArray bytesOf(const std::string& text) {
  return {text.data(), static_cast<qsizetype>(text.size())};
}

// Only what has its two digits is an escape.
bool isEscapeAt(std::string_view text, std::size_t at) {
  unsigned char byte = 0;
  const char* const digits = text.data() + at + 1;
  return text[at] == '%' && text.size() - at > 2 &&
         std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
}

std::string meaningOf(std::string_view text) {
  std::string meaning;
  for (std::size_t at = 0; at < text.size(); ++at) {
    unsigned char byte = static_cast<unsigned char>(text[at]);
    if (isEscapeAt(text, at)) {
      std::from_chars(text.data() + at + 1, text.data() + at + 3, byte, 16);
      at += 2;
    }
    meaning += static_cast<char>(byte);
  }
  return meaning;
}

void escape(const std::string& text) {
  const std::string escaped = addingPercentEscapes(text);
  for (std::size_t at = 0; at < escaped.size(); ++at) {
    const char c = escaped[at];
    check(c > ' ' && c < 0x7f && c != '#' && c != '"', "only what a URL may hold");
    check(c != '%' || isEscapeAt(escaped, at), "no percent sign but of an escape");
  }
  checkEqual(addingPercentEscapes(escaped), escaped, "escaped once is enough");
  checkEqual(meaningOf(escaped), meaningOf(text), "what it means");
}

void encode(const std::string& text) {
  const auto back = QByteArray::fromBase64Encoding(bytesOf(RVUtility::Data2Base64(text)),
                                                   QByteArray::AbortOnBase64DecodingErrors);
  check(back && *back == bytesOf(text), "Base64 and back");
}

void trim(const std::string& text) {
  const std::string trimmed = RVUtility::trimString(text);
  check(text.find(trimmed) != std::string::npos, "trimming only takes away");
  checkEqual(RVUtility::trimString(trimmed), trimmed, "trimmed once is enough");
}

}  // namespace
}  // namespace seedmote::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace seedmote;
  const std::string text(fuzz::textOf(data, size));
  fuzz::escape(text);
  fuzz::encode(text);
  fuzz::trim(text);
  fuzz::check(platform::isValidUtf8(text) == json::detail::isUtf8(text), "both agree on UTF-8");
  platform::leadingInteger(text);
  return 0;
}
