#pragma once

#include <string>
#include <string_view>

namespace seedmote::json {

// What went wrong, for a caller that hands errors on.
struct JsonError {
  std::string domain;
  int code = 0;
  std::string localizedDescription;
};
inline constexpr std::string_view jsonErrorDomain = "org.seedmote.json";

}  // namespace seedmote::json
