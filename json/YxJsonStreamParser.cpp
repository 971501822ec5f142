#include "json/YxJsonStreamParser.h"

namespace seedmote::json {

YxJsonStreamParserBase::YxJsonStreamParserBase() : state_(&YxJsonStreamParserStateStart::sharedInstance()) {
  stateStack_.reserve(defaultMaxDepth);
}

std::string_view YxJsonStreamParserBase::tokenName(YxJsonToken token) {
  switch (token) {
    case YxJsonToken::arrayStart:
      return "start of array";
    case YxJsonToken::arrayEnd:
      return "end of array";
    case YxJsonToken::objectStart:
      return "start of object";
    case YxJsonToken::objectEnd:
      return "end of object";
    case YxJsonToken::valueSeparator:
      return "value separator";
    case YxJsonToken::keyValueSeparator:
      return "key-value separator";
    case YxJsonToken::number:
      return "number";
    case YxJsonToken::string:
      return "string";
    case YxJsonToken::booleanTrue:
    case YxJsonToken::booleanFalse:
      return "boolean";
    case YxJsonToken::null:
      return "null";
    case YxJsonToken::error:
    case YxJsonToken::end:
      break;
  }
  return "<aaiiie!>";
}

void YxJsonStreamParserBase::fail(std::string_view message) {
  error_ = message;
  state_ = &YxJsonStreamParserStateError::sharedInstance();
}

void YxJsonStreamParserBase::maxDepthError() {
  fail("Input depth exceeds max depth of " + std::to_string(maxDepth_));
}

void YxJsonStreamParserBase::handleTokenNotExpectedHere(YxJsonToken token) {
  std::string message = "Token '";
  message.append(tokenName(token)).append("' not expected ").append(state_->name());
  fail(message);
}

}  // namespace seedmote::json
