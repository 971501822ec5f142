#pragma once

#include <string_view>

#include "json/YxJsonNumber.h"

namespace seedmote::json {

// What the tokeniser found. `end`: no more data, or a token that is not complete yet.
enum class YxJsonToken : int {
  error = -1,
  end = 0,
  arrayStart = 1,
  arrayEnd = 2,
  objectStart = 3,
  objectEnd = 4,
  valueSeparator = 5,
  keyValueSeparator = 6,
  number = 7,
  string = 8,
  booleanTrue = 9,
  booleanFalse = 10,
  null = 11
};

// The value of a number or string token. Texts are borrowed: from the input, or for a string with escapes
// from the tokeniser, until it is asked for the next token.
struct YxJsonTokenValue {
  std::string_view text;
  YxJsonNumber number;
};

}  // namespace seedmote::json
