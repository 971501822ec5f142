#pragma once

#include <string>
#include <string_view>

#include "json/Value.h"

namespace seedmote::json::test {

// A value with its kinds: i and u before integers, d before decimals, r before reals, texts in quotes.
inline std::string dump(ValueRef value) {
  std::string text;
  switch (value.kind()) {
    case Kind::array:
      for (const ValueRef element : value.elements())
        text.append(text.empty() ? "" : ",").append(dump(element));
      return "[" + text + "]";
    case Kind::dictionary:
      for (const Entry& entry : value.entries()) {
        text.append(text.empty() ? "" : ",").append(entry.key).append("=").append(dump(entry.value));
      }
      return "{" + text + "}";
    case Kind::boolean:
      return value.boolValue() ? "true" : "false";
    case Kind::signedInteger:
      return std::string("i") + value.description();
    case Kind::unsignedInteger:
      return std::string("u") + value.description();
    case Kind::decimal:
      return std::string("d") + value.description();
    case Kind::real:
      return std::string("r") + value.description();
    case Kind::string:
      return std::string("'") + value.description() + "'";
    default:
      return value.description();
  }
}

}  // namespace seedmote::json::test
