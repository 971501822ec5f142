// Any format with any argument gives what printf gives, and any numbers of a daemon give texts.
#include <cmath>
#include <cstdio>
#include <string>

#include "client/RVUtility.h"
#include "fuzz/Source.h"
#include "fuzz/Target.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"

namespace seedmote::fuzz {
namespace {

template <class Argument>
std::string printed(const std::string& format, Argument argument) {
  const int length = std::snprintf(nullptr, 0, format.c_str(), argument);
  std::string text(static_cast<std::size_t>(length), '\0');
  std::snprintf(text.data(), text.size() + 1, format.c_str(), argument);
  return text;
}

template <class Argument>
void compare(const std::string& format, Argument argument) {
  checkEqual(platform::format(format, argument), printed(format, argument), format.c_str());
}

// Between "%" and the conversion.
std::string directive(Source& source) {
  const std::uint8_t flags = source.byte();
  std::string text = "<%";
  for (int i = 0; i < 5; ++i) {
    if ((flags >> i & 1) != 0) text += "-+ #0"[i];
  }
  if ((flags & 32) != 0) text += std::to_string(source.byte() % 70);
  if ((flags & 64) != 0) text += "." + std::to_string(source.byte() % 70);
  if ((flags & 128) != 0) text += ".";
  return (flags & 192) == 192 ? text.substr(0, text.size() - 1) : text;
}

void formats(Source& source) {
  const std::string begun = directive(source);
  const std::uint8_t conversion = source.byte();
  if (conversion % 2 == 0) {
    const double value = source.real();
    // Which sign not-a-number has is nobody's business.
    if (!std::isnan(value)) compare(begun + "fFeEgG"[conversion / 2 % 6] + ">", value);
    return;
  }
  const char letter = "diuxXo"[conversion / 2 % 6];
  const std::int64_t value = source.integer();
  compare(begun + "ll" + letter + ">", value);
  compare(begun + letter + ">", static_cast<int>(value));
}

void numbers(Source& source) {
  const std::int64_t number = source.integer();
  check(!RVUtility::changeSizeFormat(number).empty(), "a size has a text");
  check(!RVUtility::changeETAFormat(number).empty(), "a time has a text");
  check(!RVUtility::changeCumTimeFormat(number).empty(), "a sum of times has a text");
  RVUtility::changeTransStatus(static_cast<int>(number), source.byte());
}

// A format that is any text at all.
void anything(Source& source) {
  const double real = source.real();
  const std::int64_t integer = source.integer();
  const std::string text = source.text();
  const std::string format = source.rest();
  const std::string whole =
      platform::format(format, text, integer, real, std::nullopt, platform::Secret{text});
  const platform::FormatArg arguments[] = {text, integer, real, std::nullopt, platform::Secret{text}};
  std::string cut;
  const std::size_t wanted = platform::appendFormat(cut, 10, format, arguments, std::size(arguments));
  check(wanted == whole.size() && cut == whole.substr(0, 10), "cut off is no other text");
}

}  // namespace
}  // namespace seedmote::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace seedmote;
  platform::silenceLog();
  fuzz::Source source(fuzz::textOf(data, size));
  switch (source.byte() % 3) {
    case 0:
      fuzz::formats(source);
      break;
    case 1:
      fuzz::numbers(source);
      break;
    default:
      fuzz::anything(source);
  }
  return 0;
}
