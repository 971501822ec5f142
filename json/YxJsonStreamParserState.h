#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "json/YxJsonToken.h"

namespace seedmote::json {

class YxJsonStreamParserBase;

// What parse() answers.
enum class YxJsonStreamParserStatus : int {
  YxJsonStreamParserComplete = 0,
  YxJsonStreamParserWaitingForData = 1,
  YxJsonStreamParserError = 2
};

// Where a parser stands between two tokens: which tokens may come and which state each leads to. Every
// concrete state is one shared constant. The answers stand in tables, not in virtual functions: they are
// asked for each token. A state that says nothing else accepts no token, stays, and waits for more data.
class YxJsonStreamParserState {
 public:
  YxJsonStreamParserState(const YxJsonStreamParserState&) = delete;
  YxJsonStreamParserState& operator=(const YxJsonStreamParserState&) = delete;

  bool shouldAcceptToken(YxJsonToken token) const { return ((accepted_ >> slot(token)) & 1) != 0; }
  YxJsonStreamParserStatus parserShouldReturn() const { return status_; }
  // The state that the parser moves to; this one where the token changes nothing.
  const YxJsonStreamParserState* shouldTransitionTo(YxJsonToken token, bool supportMultipleDocuments) const {
    const YxJsonStreamParserState* next = next_[slot(token)];
    return next == nullptr || (supportMultipleDocuments && isStart_ && isContainerEnd(token)) ? this : next;
  }
  bool needKey() const { return needKey_; }
  std::string_view name() const { return name_; }
  bool isError() const { return status_ == YxJsonStreamParserStatus::YxJsonStreamParserError; }

 protected:
  struct Transition {
    std::initializer_list<YxJsonToken> tokens;
    const YxJsonStreamParserState* next;
  };
  static constexpr std::uint16_t set(std::initializer_list<YxJsonToken> tokens) {
    unsigned bits = 0;
    for (const YxJsonToken token : tokens) bits |= 1u << slot(token);
    return static_cast<std::uint16_t>(bits);
  }
  static constexpr bool isContainerEnd(YxJsonToken token) {
    return token == YxJsonToken::arrayEnd || token == YxJsonToken::objectEnd;
  }

  constexpr YxJsonStreamParserState() = default;
  constexpr YxJsonStreamParserState(
      std::string_view name, std::uint16_t accepted,
      YxJsonStreamParserStatus status = YxJsonStreamParserStatus::YxJsonStreamParserWaitingForData)
      : accepted_(accepted), status_(status), name_(name) {}
  constexpr void leadsTo(const YxJsonStreamParserState* next) { next_.fill(next); }
  constexpr void leadsTo(const YxJsonStreamParserState* next, std::initializer_list<YxJsonToken> tokens) {
    for (const YxJsonToken token : tokens) next_[slot(token)] = next;
  }

  bool needKey_ = false;
  bool isStart_ = false;

 private:
  // The tokens from `end` to `null` have a place each in the tables; `error` and any other number share one.
  static constexpr unsigned namedTokens = 12;
  static constexpr unsigned slot(YxJsonToken token) {
    const auto code = static_cast<unsigned>(token);
    return code < namedTokens ? code : namedTokens;
  }

  std::uint16_t accepted_ = 0;  // a bit for each place
  YxJsonStreamParserStatus status_ = YxJsonStreamParserStatus::YxJsonStreamParserWaitingForData;
  std::array<const YxJsonStreamParserState*, namedTokens + 1> next_{};  // null: stays
  std::string_view name_ = "<aaiie!>";
};

// Each concrete state: sharedInstance() is the one that parsers use.
#define SEEDMOTE_PARSER_STATE(ClassName)                                     \
  class ClassName final : public YxJsonStreamParserState {                   \
   public:                                                                   \
    static constexpr const ClassName& sharedInstance() { return instance_; } \
                                                                             \
   private:                                                                  \
    constexpr ClassName();                                                   \
    static const ClassName instance_;                                        \
  }

SEEDMOTE_PARSER_STATE(YxJsonStreamParserStateStart);
SEEDMOTE_PARSER_STATE(YxJsonStreamParserStateComplete);
SEEDMOTE_PARSER_STATE(YxJsonStreamParserStateError);
SEEDMOTE_PARSER_STATE(YxJsonStreamParserStateObjectStart);
SEEDMOTE_PARSER_STATE(YxJsonStreamParserStateObjectGotKey);
SEEDMOTE_PARSER_STATE(YxJsonStreamParserStateObjectSeparator);
SEEDMOTE_PARSER_STATE(YxJsonStreamParserStateObjectGotValue);
SEEDMOTE_PARSER_STATE(YxJsonStreamParserStateObjectNeedKey);
SEEDMOTE_PARSER_STATE(YxJsonStreamParserStateArrayStart);
SEEDMOTE_PARSER_STATE(YxJsonStreamParserStateArrayGotValue);
SEEDMOTE_PARSER_STATE(YxJsonStreamParserStateArrayNeedValue);

#undef SEEDMOTE_PARSER_STATE

}  // namespace seedmote::json
