#pragma once

#include <cstdint>
#include <string_view>

namespace seedmote::platform {

// The number that a text begins with: blanks, a sign, digits; what follows is not looked at. 0 when there
// are no digits; saturates at the 64-bit limits.
std::int64_t leadingInteger(std::string_view text);

}  // namespace seedmote::platform
