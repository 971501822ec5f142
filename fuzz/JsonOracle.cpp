#include "fuzz/JsonOracle.h"

#if __has_include(<rapidjson/document.h>)
#include <rapidjson/document.h>
#include <rapidjson/memorystream.h>

#include <cstdlib>
#include <string>

#include "fuzz/Target.h"
#include "json/Value.h"
#include "json/YxJsonParser.h"

namespace seedmote::fuzz {
namespace {

constexpr unsigned kOracleFlags = rapidjson::kParseValidateEncodingFlag |
                                  rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseStopWhenDoneFlag |
                                  rapidjson::kParseIterativeFlag;
constexpr std::size_t kDeepest = 1000;

// Here "-.5" is a number; to the oracle it must be "-0.5".
std::string asTheOracleWants(std::string_view text) {
  std::string written;
  for (const char c : text) {
    if (c == '.' && written.ends_with('-')) written += '0';
    written += c;
  }
  return written;
}

// Exponents have 16 bits here, so only numbers of usual size can be compared.
bool isUsual(const std::string& number) {
  const std::size_t exponent = number.find_first_of("eE");
  return number.size() < 300 && (exponent == std::string::npos || number.size() - exponent < 5);
}

void compareNumber(json::ValueRef mine, const std::string& number) {
  if (isUsual(number)) {
    check(mine.doubleValue() == std::strtod(number.c_str(), nullptr), "a number is the oracle's");
  }
}

void compare(json::ValueRef mine, const rapidjson::Value& other);

// The last of several entries with one key counts.
void compareEntries(json::ValueRef mine, const rapidjson::Value& other) {
  std::size_t keys = 0;
  for (auto entry = other.MemberBegin(); entry != other.MemberEnd(); ++entry) {
    bool again = false;
    for (auto later = entry + 1; later != other.MemberEnd() && !again; ++later)
      again = later->name == entry->name;
    if (again) continue;
    ++keys;
    compare(mine[{entry->name.GetString(), entry->name.GetStringLength()}], entry->value);
  }
  check(mine.count() == keys, "a dictionary has the oracle's keys");
}

// Numbers are texts to the oracle, too.
void compareText(json::ValueRef mine, const std::string& other) {
  if (mine.text()) {
    checkEqual(std::string(*mine.text()), other, "a text is the oracle's");
  } else {
    check(mine.kind() == json::Kind::decimal || mine.isInteger(), "what the oracle has as text is a number");
    compareNumber(mine, other);
  }
}

void compare(json::ValueRef mine, const rapidjson::Value& other) {
  if (other.IsObject()) {
    check(mine.kind() == json::Kind::dictionary, "a dictionary is one");
    compareEntries(mine, other);
  } else if (other.IsArray()) {
    check(mine.kind() == json::Kind::array && mine.count() == other.Size(), "an array is the oracle's");
    for (rapidjson::SizeType i = 0; i < other.Size(); ++i) compare(mine.at(i), other[i]);
  } else if (other.IsString()) {
    compareText(mine, {other.GetString(), other.GetStringLength()});
  } else {
    check(mine.kind() == (other.IsNull() ? json::Kind::null : json::Kind::boolean), "a constant is one");
    check(other.IsNull() || mine.boolValue() == other.GetBool(), "a boolean is the oracle's");
  }
}

}  // namespace

// The oracle reads one value and stops behind it, for here an unfinished token may follow. A lone number or
// text is no document here.
void compareWithOracle(std::string_view original) {
  const std::string text = asTheOracleWants(original);
  rapidjson::MemoryStream stream(text.data(), text.size());
  rapidjson::Document other;
  other.ParseStream<kOracleFlags>(stream);
  if (other.GetParseError() == rapidjson::kParseErrorNumberTooBig) return;  // here there is none
  json::YxJsonParser parser;
  parser.setMaxDepth(kDeepest);
  if (other.HasParseError() || !(other.IsObject() || other.IsArray())) {
    check(parser.objectWithString(text).isAbsent(), "what the oracle refuses is refused");
    return;
  }
  const json::Value mine = parser.objectWithString(std::string_view(text).substr(0, stream.Tell()));
  // The oracle takes half a surrogate pair when it is the second half.
  if (!mine && (parser.error().starts_with("Input depth") || parser.error().starts_with("Invalid high")))
    return;
  checkEqual(parser.error(), "", "what the oracle accepts is accepted");
  compare(mine, other);
}

}  // namespace seedmote::fuzz

#else

void seedmote::fuzz::compareWithOracle(std::string_view) {}

#endif
