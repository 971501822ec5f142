#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "json/Value.h"
#include "json/YxJsonStreamWriterState.h"

namespace seedmote::json {

namespace detail {
struct Key;
}

// Gets the text of a stream writer, UTF-8, in pieces: at the latest when the operation ends that made it.
class YxJsonStreamWriterDelegate {
 public:
  virtual ~YxJsonStreamWriterDelegate() = default;
  virtual void appendBytes(YxJsonStreamWriter& writer, const char* bytes, std::size_t length) = 0;
};

// Writes one value, or one event after the other, as JSON text, and checks their order. An operation that
// fails answers false with error() set; what was written before stays written. Used by one thread.
class YxJsonStreamWriter {
 public:
  YxJsonStreamWriter();
  YxJsonStreamWriter(const YxJsonStreamWriter&) = delete;
  YxJsonStreamWriter& operator=(const YxJsonStreamWriter&) = delete;
  ~YxJsonStreamWriter() { setState(nullptr); }

  YxJsonStreamWriterDelegate* delegate() const { return delegate_; }
  void setDelegate(YxJsonStreamWriterDelegate* delegate) { delegate_ = delegate; }  // not owned
  const std::string& error() const { return error_; }
  void setError(std::string_view error) { error_ = error; }
  // Containers within each other; 32 unless set, 0 for any number.
  std::size_t maxDepth() const { return maxDepth_; }
  void setMaxDepth(std::size_t depth) { maxDepth_ = depth; }
  // One entry or element a line, indented by two blanks a level.
  bool humanReadable() const { return humanReadable_; }
  void setHumanReadable(bool readable) { humanReadable_ = readable; }
  // By UTF-16 units; else in the dictionary's order.
  bool sortKeys() const { return sortKeys_; }
  void setSortKeys(bool sort) { sortKeys_ = sort; }
  const YxJsonStreamWriterState* state() const { return state_; }
  void setState(const YxJsonStreamWriterState* state) { state_ = state; }
  std::vector<const YxJsonStreamWriterState*>& stateStack() { return stateStack_; }

  bool writeObject(ValueRef dictionary);
  bool writeArray(ValueRef array);
  bool writeObjectOpen();
  bool writeObjectClose();
  bool writeArrayOpen();
  bool writeArrayClose();
  bool writeNull();
  bool writeBool(bool value);
  // Any value. True for a string in any case.
  bool writeValue(ValueRef value);
  bool writeString(std::string_view text);  // also how keys are written
  bool writeNumber(ValueRef number);

  void appendBytes(const char* bytes, std::size_t length) {
    if (delegate_ != nullptr) delegate_->appendBytes(*this, bytes, length);
  }

 private:
  friend class YxJsonStreamWriterState;

  struct Level;
  struct Flush;
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
  };

  bool fail(std::string_view message);
  bool open(const YxJsonStreamWriterState& inner, char bracket);
  bool close(char bracket);
  void separate();
  bool beginString();
  bool beginScalar();
  bool putScalar(std::string_view text);
  bool putString(std::string_view text);
  bool putKey(const detail::Key& key);
  bool putNumber(const detail::Node& node);
  bool putInteger(bool negative, std::uint64_t bits);
  bool putReal(double value);
  void putQuoted(std::string_view text);
  void putEscaped(std::string_view text, std::size_t plain);
  std::string escaped(std::string_view text) const;
  bool putTree(ValueRef root);
  bool openLevel(const detail::Node& node, std::vector<Level>& levels);
  bool putForeign(ValueRef value, std::vector<Level>& levels, std::vector<Value>& proxies);
  bool putValue(ValueRef value, std::vector<Level>& levels, std::vector<Value>& proxies);
  bool putRest(std::vector<Level>& levels, std::vector<Value>& proxies);
  void putWhitespace(bool oneBlank);

  void put(char byte) {
    char* const to = room(1);
    *to = byte;
    at_ = to + 1;
  }
  void put(std::string_view text);
  // Where the next bytes go, at most stagingBytes; who writes them moves at_ behind them.
  char* room(std::size_t bytes) {
    if (static_cast<std::size_t>(limit_ - at_) < bytes) [[unlikely]]
      flush();
    return at_;
  }
  void flush();

  static constexpr std::size_t stagingBytes = 16384;
  static constexpr std::size_t longestCached = 4096;  // what is longer is cheaper to escape again

  YxJsonStreamWriterDelegate* delegate_ = nullptr;
  std::string error_;
  std::size_t maxDepth_ = 32;
  bool humanReadable_ = false;
  bool sortKeys_ = false;
  const YxJsonStreamWriterState* state_;
  std::vector<const YxJsonStreamWriterState*> stateStack_;
  // Quoted and escaped texts by what they were made from. A text that needs no escapes is as quickly copied
  // as looked up, and is not kept.
  std::unordered_map<std::string, std::string, TextHash, std::equal_to<>> cache_;
  std::unique_ptr<char[]> staging_;
  char* at_;           // in the staging buffer, where the next byte goes
  const char* limit_;  // the staging buffer's end
};

inline bool YxJsonStreamWriterState::isInvalidState(YxJsonStreamWriter& writer) const {
  return behaviour_.invalid && !writer.fail("Stream is closed");
}
inline void YxJsonStreamWriterState::appendSeparator(YxJsonStreamWriter& writer) const {
  if (behaviour_.separator != 0) writer.put(behaviour_.separator);
}
inline bool YxJsonStreamWriterState::expectingKey(YxJsonStreamWriter& writer) const {
  return behaviour_.expectsKey && !writer.fail("JSON object key must be string");
}
inline void YxJsonStreamWriterState::transitionState(YxJsonStreamWriter& writer) const {
  if (behaviour_.next != nullptr) writer.setState(behaviour_.next);
}
inline void YxJsonStreamWriterState::appendWhitespace(YxJsonStreamWriter& writer) const {
  writer.putWhitespace(behaviour_.oneBlank);
}

}  // namespace seedmote::json
