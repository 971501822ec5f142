#include "platform/core/Device.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>
#include <system_error>

namespace seedmote::platform {

float Device::systemVersionNumber() const {
  std::string_view text = systemVersion_;
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n"), text.size()));
  if (text.find_first_of("0123456789.-") != 0) return 0;  // "nan" and "inf" are no versions
  float number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc::result_out_of_range ? std::numeric_limits<float>::max() : number;
}

}  // namespace seedmote::platform
