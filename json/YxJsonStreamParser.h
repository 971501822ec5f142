#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "json/YxJsonStreamParserDelegate.h"
#include "json/YxJsonStreamParserState.h"
#include "json/YxJsonTokeniser.h"

namespace seedmote::json {

// What every stream parser has, whoever its delegate is.
class YxJsonStreamParserBase {
 public:
  YxJsonStreamParserBase();
  YxJsonStreamParserBase(const YxJsonStreamParserBase&) = delete;
  YxJsonStreamParserBase& operator=(const YxJsonStreamParserBase&) = delete;

  // Whether one text may hold a run of documents.
  bool supportMultipleDocuments() const { return supportMultipleDocuments_; }
  void setSupportMultipleDocuments(bool support) { supportMultipleDocuments_ = support; }
  // Containers within each other; 0 refuses every container.
  std::size_t maxDepth() const { return maxDepth_; }
  void setMaxDepth(std::size_t depth) { maxDepth_ = depth; }
  const std::string& error() const { return error_; }
  void setError(std::string_view error) { error_ = error; }
  const YxJsonStreamParserState* state() const { return state_; }
  void setState(const YxJsonStreamParserState* state) { state_ = state; }
  std::vector<const YxJsonStreamParserState*>& stateStack() { return stateStack_; }

  // What messages call a token.
  static std::string_view tokenName(YxJsonToken token);

 protected:
  ~YxJsonStreamParserBase() = default;

  void handleTokenNotExpectedHere(YxJsonToken token);
  void maxDepthError();
  void fail(std::string_view message);
  void pushState(const YxJsonStreamParserState& inner) {
    stateStack_.push_back(state_);
    state_ = &inner;
  }
  void popState(YxJsonToken token) {
    if (stateStack_.empty()) [[unlikely]]  // only when somebody else set the state
      return handleTokenNotExpectedHere(token);
    state_ = stateStack_.back();
    stateStack_.pop_back();
    transition(token);
  }
  void transition(YxJsonToken token) {
    state_ = state_->shouldTransitionTo(token, supportMultipleDocuments_);
  }

  static constexpr std::size_t defaultMaxDepth = 32;

  YxJsonTokeniser tokeniser_;
  const YxJsonStreamParserState* state_;
  std::vector<const YxJsonStreamParserState*> stateStack_;
  std::size_t maxDepth_ = defaultMaxDepth;
  bool supportMultipleDocuments_ = false;
  std::string error_;
};

// Checks the order of the tokens and reports events to a delegate: the third layer of the reader. Text may
// come in pieces of any size. Used by one thread.
//
// `Delegate` has the event functions of YxJsonStreamParserDelegate, which is the one to use when the
// delegate is only known at run time; a final class of its own costs no virtual calls. It may also have
//   const char* predictObjectKey(YxJsonStreamParserBase&, const char* at, const char* end);
// which is asked first where a key may begin: it takes the key at `at` (behind the opening quote) and
// answers where the bytes behind its closing quote begin, or null when it can't tell yet.
template <class Delegate = YxJsonStreamParserDelegate>
class YxJsonStreamParser : public YxJsonStreamParserBase {
 public:
  ~YxJsonStreamParser() { setState(nullptr); }

  Delegate* delegate() const { return delegate_; }
  void setDelegate(Delegate* delegate) { delegate_ = delegate; }  // not owned; may be null

  // Reads the next piece of UTF-8 text. Once in error, reads nothing and answers the error again. When the
  // delegate throws, the parser is in error and the exception goes on.
  YxJsonStreamParserStatus parse(std::string_view data);

 private:
  YxJsonStreamParserStatus readTokens(const char*& place, const char* end);
  void handleObjectStart();
  void handleObjectEnd(YxJsonToken token);
  void handleArrayStart();
  void handleArrayEnd(YxJsonToken token);
  template <class Event>
  void tell(Event event) {
    if (delegate_ != nullptr) event(*delegate_);
  }

  Delegate* delegate_ = nullptr;
};

}  // namespace seedmote::json

#include "json/YxJsonStreamParserImpl.h"
