#include "json/YxJsonStreamParserState.h"

namespace seedmote::json {

namespace {
using Token = YxJsonToken;
}  // namespace

#define VALUE_TOKENS                                                                       \
  Token::arrayStart, Token::objectStart, Token::number, Token::string, Token::booleanTrue, \
      Token::booleanFalse, Token::null

constexpr YxJsonStreamParserStateStart::YxJsonStreamParserStateStart()
    : YxJsonStreamParserState("before outer-most array or object",
                              set({Token::arrayStart, Token::objectStart})) {
  isStart_ = true;
  leadsTo(&YxJsonStreamParserStateError::sharedInstance());
  leadsTo(nullptr, {Token::end});
  leadsTo(&YxJsonStreamParserStateArrayStart::sharedInstance(), {Token::arrayStart});
  leadsTo(&YxJsonStreamParserStateObjectStart::sharedInstance(), {Token::objectStart});
  // A closed top-level container returns here.
  leadsTo(&YxJsonStreamParserStateComplete::sharedInstance(), {Token::arrayEnd, Token::objectEnd});
}

constexpr YxJsonStreamParserStateComplete::YxJsonStreamParserStateComplete()
    : YxJsonStreamParserState("after outer-most array or object", 0,
                              YxJsonStreamParserStatus::YxJsonStreamParserComplete) {}

constexpr YxJsonStreamParserStateError::YxJsonStreamParserStateError()
    : YxJsonStreamParserState("in error", 0, YxJsonStreamParserStatus::YxJsonStreamParserError) {}

constexpr YxJsonStreamParserStateObjectStart::YxJsonStreamParserStateObjectStart()
    : YxJsonStreamParserState("at beginning of object", set({Token::objectEnd, Token::string})) {
  needKey_ = true;
  leadsTo(&YxJsonStreamParserStateObjectGotKey::sharedInstance());
}

constexpr YxJsonStreamParserStateObjectGotKey::YxJsonStreamParserStateObjectGotKey()
    : YxJsonStreamParserState("after object key", set({Token::keyValueSeparator})) {
  leadsTo(&YxJsonStreamParserStateObjectSeparator::sharedInstance());
}

constexpr YxJsonStreamParserStateObjectSeparator::YxJsonStreamParserStateObjectSeparator()
    : YxJsonStreamParserState("as object value", set({VALUE_TOKENS})) {
  leadsTo(&YxJsonStreamParserStateObjectGotValue::sharedInstance());
}

constexpr YxJsonStreamParserStateObjectGotValue::YxJsonStreamParserStateObjectGotValue()
    : YxJsonStreamParserState("after object value", set({Token::objectEnd, Token::valueSeparator})) {
  leadsTo(&YxJsonStreamParserStateObjectNeedKey::sharedInstance());
}

constexpr YxJsonStreamParserStateObjectNeedKey::YxJsonStreamParserStateObjectNeedKey()
    : YxJsonStreamParserState("in place of object key", set({Token::string})) {
  needKey_ = true;
  leadsTo(&YxJsonStreamParserStateObjectGotKey::sharedInstance());
}

constexpr YxJsonStreamParserStateArrayStart::YxJsonStreamParserStateArrayStart()
    : YxJsonStreamParserState("at array start", set({VALUE_TOKENS, Token::arrayEnd})) {
  leadsTo(&YxJsonStreamParserStateArrayGotValue::sharedInstance());
}

constexpr YxJsonStreamParserStateArrayGotValue::YxJsonStreamParserStateArrayGotValue()
    : YxJsonStreamParserState("after array value", set({Token::arrayEnd, Token::valueSeparator})) {
  leadsTo(&YxJsonStreamParserStateArrayNeedValue::sharedInstance(), {Token::valueSeparator});
}

constexpr YxJsonStreamParserStateArrayNeedValue::YxJsonStreamParserStateArrayNeedValue()
    : YxJsonStreamParserState("as array value", set({VALUE_TOKENS})) {
  leadsTo(&YxJsonStreamParserStateArrayGotValue::sharedInstance());
}

constinit const YxJsonStreamParserStateStart YxJsonStreamParserStateStart::instance_;
constinit const YxJsonStreamParserStateComplete YxJsonStreamParserStateComplete::instance_;
constinit const YxJsonStreamParserStateError YxJsonStreamParserStateError::instance_;
constinit const YxJsonStreamParserStateObjectStart YxJsonStreamParserStateObjectStart::instance_;
constinit const YxJsonStreamParserStateObjectGotKey YxJsonStreamParserStateObjectGotKey::instance_;
constinit const YxJsonStreamParserStateObjectSeparator YxJsonStreamParserStateObjectSeparator::instance_;
constinit const YxJsonStreamParserStateObjectGotValue YxJsonStreamParserStateObjectGotValue::instance_;
constinit const YxJsonStreamParserStateObjectNeedKey YxJsonStreamParserStateObjectNeedKey::instance_;
constinit const YxJsonStreamParserStateArrayStart YxJsonStreamParserStateArrayStart::instance_;
constinit const YxJsonStreamParserStateArrayGotValue YxJsonStreamParserStateArrayGotValue::instance_;
constinit const YxJsonStreamParserStateArrayNeedValue YxJsonStreamParserStateArrayNeedValue::instance_;

#undef VALUE_TOKENS

}  // namespace seedmote::json
