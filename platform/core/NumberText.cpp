#include "platform/core/NumberText.h"

#include <charconv>
#include <limits>

namespace seedmote::platform {

std::int64_t leadingInteger(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
  if (start == std::string_view::npos) {
    return 0;
  }
  text.remove_prefix(start);
  const bool negative = text.front() == '-';
  if (text.front() == '+') {
    text.remove_prefix(1);
    if (text.starts_with('-')) {
      return 0;
    }
  }
  std::int64_t value = 0;
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (problem == std::errc::result_out_of_range) {
    return negative ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
  }
  return value;
}

}  // namespace seedmote::platform
