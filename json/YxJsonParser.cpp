#include "json/YxJsonParser.h"

#include "json/YxJsonStreamParser.h"
#include "json/YxJsonStreamParserAccumulator.h"
#include "json/YxJsonStreamParserAdapter.h"

namespace seedmote::json {

namespace {

constexpr std::size_t kPiece = std::size_t{64} << 10;  // bytes; well below a millisecond

bool isError(YxJsonStreamParserStatus status) {
  return status == YxJsonStreamParserStatus::YxJsonStreamParserError;
}

}  // namespace

Value YxJsonParser::objectWithData(std::string_view data) {
  if (data.empty()) {
    error_ = "Input was 'nil'";
    return {};
  }
  YxJsonStreamParserAccumulator accumulator;
  YxJsonStreamParserAdapter adapter;
  adapter.setDelegate(&accumulator);
  adapter.expectText(data.size());
  YxJsonStreamParser<YxJsonStreamParserAdapter> parser;
  parser.setMaxDepth(maxDepth_);
  parser.setDelegate(&adapter);
  YxJsonStreamParserStatus status = YxJsonStreamParserStatus::YxJsonStreamParserWaitingForData;
  const std::size_t piece = goOn_ ? kPiece : data.size();
  for (std::size_t at = 0; at < data.size() && !isError(status); at += piece) {
    if (at > 0 && !goOn_(adapter.treeBytes())) {
      error_ = "Reading was given up";
      return {};
    }
    status = parser.parse(data.substr(at, piece));
  }
  switch (status) {
    case YxJsonStreamParserStatus::YxJsonStreamParserComplete:
      return accumulator.value();
    case YxJsonStreamParserStatus::YxJsonStreamParserWaitingForData:
      error_ = "Unexpected end of input";
      return {};
    case YxJsonStreamParserStatus::YxJsonStreamParserError:
      break;
  }
  error_ = parser.error();
  return {};
}

Value YxJsonParser::objectWithString(std::string_view text, std::optional<JsonError>* error) {
  Value value = objectWithString(text);
  if (!value && error != nullptr) *error = JsonError{std::string(jsonErrorDomain), 0, error_};
  return value;
}

}  // namespace seedmote::json
