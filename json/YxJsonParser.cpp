#include "json/YxJsonParser.h"

#include "json/YxJsonStreamParser.h"
#include "json/YxJsonStreamParserAccumulator.h"
#include "json/YxJsonStreamParserAdapter.h"

namespace seedmote::json {

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
  switch (parser.parse(data)) {
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
