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
// asked for each token.
class YxJsonStreamParserState {
 public:
  YxJsonStreamParserState(const YxJsonStreamParserState&) = delete;
  YxJsonStreamParserState& operator=(const YxJsonStreamParserState&) = delete;

  bool shouldAcceptToken(YxJsonToken token) const {
    return ((accepted_ >> static_cast<int>(token)) & 1) != 0;
  }
  YxJsonStreamParserStatus parserShouldReturn() const { return status_; }
  // The state that the parser moves to; this one where the token changes nothing.
  const YxJsonStreamParserState* shouldTransitionTo(YxJsonToken token, bool supportMultipleDocuments) const {
    const YxJsonStreamParserState* next = next_[static_cast<std::size_t>(token)];
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
    for (const YxJsonToken token : tokens) bits |= 1u << static_cast<int>(token);
    return static_cast<std::uint16_t>(bits);
  }
  static constexpr bool isContainerEnd(YxJsonToken token) {
    return token == YxJsonToken::arrayEnd || token == YxJsonToken::objectEnd;
  }

  constexpr YxJsonStreamParserState(
      std::string_view name, std::uint16_t accepted,
      YxJsonStreamParserStatus status = YxJsonStreamParserStatus::YxJsonStreamParserWaitingForData)
      : accepted_(accepted), status_(status), name_(name) {}
  constexpr void leadsTo(const YxJsonStreamParserState* next) { next_.fill(next); }
  constexpr void leadsTo(const YxJsonStreamParserState* next, std::initializer_list<YxJsonToken> tokens) {
    for (const YxJsonToken token : tokens) next_[static_cast<std::size_t>(token)] = next;
  }

  bool needKey_ = false;
  bool isStart_ = false;

 private:
  std::uint16_t accepted_;
  YxJsonStreamParserStatus status_;
  std::array<const YxJsonStreamParserState*, 12> next_{};
  std::string_view name_;
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
