#pragma once

// The templates of YxJsonStreamParser.h.

namespace seedmote::json {

template <class Delegate>
YxJsonStreamParserStatus YxJsonStreamParser<Delegate>::parse(std::string_view data) {
  if (state_->isError()) return YxJsonStreamParserStatus::YxJsonStreamParserError;
  YxJsonUTF8Stream& stream = tokeniser_.stream();
  stream.lend(data);
  const char* at = stream.current();
  try {
    const YxJsonStreamParserStatus status = readTokens(at, stream.end());
    // After an error nothing is read any more, so nothing is kept.
    stream.setCurrent(state_->isError() ? stream.end() : at);
    stream.endLoan();
    return status;
  } catch (...) {
    stream.setCurrent(stream.end());
    stream.endLoan();
    fail("Reading was given up");
    throw;
  }
}

template <class Delegate>
YxJsonStreamParserStatus YxJsonStreamParser<Delegate>::readTokens(const char*& place, const char* end) {
  constexpr bool predictsKeys =
      requires(Delegate & delegate, YxJsonStreamParserBase & parser, const char* bytes) {
    delegate.predictObjectKey(parser, bytes, bytes);
  };
  const char* at = place;
  YxJsonTokenValue value;
  for (;;) {
    if constexpr (predictsKeys) {
      if (state_->needKey() && at < end && *at == '"' && delegate_ != nullptr && !tokeniser_.resumesToken()) {
        if (const char* behind = delegate_->predictObjectKey(*this, at + 1, end)) {
          at = behind;
          transition(YxJsonToken::string);
        }
      }
    }
    const YxJsonToken token = tokeniser_.scan(at, end, value);
    if (token == YxJsonToken::error) [[unlikely]] {
      place = at;
      fail(tokeniser_.error());
      return YxJsonStreamParserStatus::YxJsonStreamParserError;
    }
    if (token == YxJsonToken::end) [[unlikely]] {
      place = at;
      return state_->parserShouldReturn();
    }
    if (!state_->shouldAcceptToken(token)) [[unlikely]] {
      place = at;
      handleTokenNotExpectedHere(token);
      return YxJsonStreamParserStatus::YxJsonStreamParserError;
    }
    switch (token) {
      case YxJsonToken::arrayStart:
        handleArrayStart();
        break;
      case YxJsonToken::arrayEnd:
        handleArrayEnd(token);
        break;
      case YxJsonToken::objectStart:
        handleObjectStart();
        break;
      case YxJsonToken::objectEnd:
        handleObjectEnd(token);
        break;
      case YxJsonToken::number:
        tell([&](Delegate& delegate) { delegate.foundNumber(*this, value.number); });
        transition(token);
        break;
      case YxJsonToken::string:
        if (state_->needKey()) {
          tell([&](Delegate& delegate) { delegate.foundObjectKey(*this, value.text); });
        } else {
          tell([&](Delegate& delegate) { delegate.foundString(*this, value.text); });
        }
        transition(token);
        break;
      case YxJsonToken::booleanTrue:
      case YxJsonToken::booleanFalse:
        tell([&](Delegate& delegate) { delegate.foundBoolean(*this, token == YxJsonToken::booleanTrue); });
        transition(token);
        break;
      case YxJsonToken::null:
        tell([&](Delegate& delegate) { delegate.parserFoundNull(*this); });
        transition(token);
        break;
      case YxJsonToken::valueSeparator:
        transition(YxJsonToken::valueSeparator);
        break;
      case YxJsonToken::keyValueSeparator:
        transition(YxJsonToken::keyValueSeparator);
        break;
      default:
        transition(token);
        break;
    }
    if (state_->isError()) [[unlikely]] {
      place = at;
      return YxJsonStreamParserStatus::YxJsonStreamParserError;
    }
  }
}

template <class Delegate>
void YxJsonStreamParser<Delegate>::handleObjectStart() {
  if (stateStack_.size() >= maxDepth_) return maxDepthError();
  tell([&](Delegate& delegate) { delegate.parserFoundObjectStart(*this); });
  pushState(YxJsonStreamParserStateObjectStart::sharedInstance());
}

template <class Delegate>
void YxJsonStreamParser<Delegate>::handleArrayStart() {
  if (stateStack_.size() >= maxDepth_) return maxDepthError();
  tell([&](Delegate& delegate) { delegate.parserFoundArrayStart(*this); });
  pushState(YxJsonStreamParserStateArrayStart::sharedInstance());
}

template <class Delegate>
void YxJsonStreamParser<Delegate>::handleObjectEnd(YxJsonToken token) {
  popState(token);
  tell([&](Delegate& delegate) { delegate.parserFoundObjectEnd(*this); });
}

template <class Delegate>
void YxJsonStreamParser<Delegate>::handleArrayEnd(YxJsonToken token) {
  popState(token);
  tell([&](Delegate& delegate) { delegate.parserFoundArrayEnd(*this); });
}

}  // namespace seedmote::json
