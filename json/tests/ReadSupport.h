#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "json/YxJsonParser.h"
#include "json/YxJsonStreamParser.h"
#include "json/YxJsonStreamParserAccumulator.h"
#include "json/YxJsonStreamParserAdapter.h"
#include "json/tests/Support.h"

namespace seedmote::json::test {

// A dump of what the text holds, or "! " and the message.
inline std::string readWhole(std::string_view text) {
  YxJsonParser parser;
  const Value value = parser.objectWithString(text);
  return value ? dump(value) : "! " + parser.error();
}

// Feeds the pieces one after the other; each lies in memory of its own that is gone afterwards.
inline std::string readPieces(const std::vector<std::string_view>& pieces) {
  YxJsonStreamParserAccumulator accumulator;
  YxJsonStreamParserAdapter adapter;
  adapter.setDelegate(&accumulator);
  YxJsonStreamParser<YxJsonStreamParserAdapter> parser;
  parser.setDelegate(&adapter);
  using Status = YxJsonStreamParserStatus;
  Status status = Status::YxJsonStreamParserWaitingForData;
  for (const std::string_view piece : pieces) {
    const std::vector<char> bytes(piece.begin(), piece.end());
    status = parser.parse({bytes.data(), bytes.size()});
  }
  if (status == Status::YxJsonStreamParserError) return "! " + parser.error();
  if (status == Status::YxJsonStreamParserWaitingForData) return "! Unexpected end of input";
  return dump(accumulator.value());
}

inline std::vector<std::string_view> cutInto(std::string_view text, std::size_t size) {
  std::vector<std::string_view> pieces;
  for (std::size_t at = 0; at < text.size(); at += size) pieces.push_back(text.substr(at, size));
  return pieces;
}

}  // namespace seedmote::json::test
