#pragma once

#include <cstdint>
#include <string_view>

#include "json/Value.h"

namespace seedmote::json {

// A number as the tokeniser reads it. The integer kinds and short decimals are complete in themselves; a
// long decimal (`isLong`) stands in its token's text.
struct YxJsonNumber {
  Kind kind = Kind::absent;  // signedInteger, unsignedInteger or decimal
  bool negative = false;
  bool isLong = false;
  std::int16_t exponent = 0;    // decimals
  std::uint64_t magnitude = 0;  // without the sign
  std::string_view text;        // the token, borrowed; only set for a long decimal
};

}  // namespace seedmote::json
