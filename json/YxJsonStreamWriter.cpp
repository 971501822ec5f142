#include "json/YxJsonStreamWriter.h"

#include <algorithm>
#include <cstring>

#include "json/Node.h"
#include "json/WriterText.h"

namespace seedmote::json {

using detail::Node;

// Whatever way an operation ends, what it wrote goes to the delegate.
struct YxJsonStreamWriter::Flush {
  explicit Flush(YxJsonStreamWriter& owner) : writer(owner) {}
  ~Flush() { writer.flush(); }
  YxJsonStreamWriter& writer;
};

YxJsonStreamWriter::YxJsonStreamWriter()
    : state_(&YxJsonStreamWriterStateStart::sharedInstance()),
      staging_(new char[stagingBytes]),
      at_(staging_.get()),
      limit_(at_ + stagingBytes) {
  stateStack_.reserve(32);
}

void YxJsonStreamWriter::flush() {
  const auto length = static_cast<std::size_t>(at_ - staging_.get());
  if (length == 0) return;
  at_ = staging_.get();
  appendBytes(at_, length);
}

void YxJsonStreamWriter::put(std::string_view text) {
  if (text.size() > stagingBytes) {
    flush();
    return appendBytes(text.data(), text.size());
  }
  char* to = room(text.size());
  if (!text.empty()) std::memcpy(to, text.data(), text.size());
  at_ = to + text.size();
}

bool YxJsonStreamWriter::fail(std::string_view message) {
  error_ = message;
  return false;
}

void YxJsonStreamWriter::putWhitespace(bool oneBlank) {
  if (oneBlank) return put(' ');
  put('\n');
  for (std::size_t i = 0; i < stateStack_.size(); ++i) put("  ");
}

bool YxJsonStreamWriter::open(const YxJsonStreamWriterState& inner, char bracket) {
  if (state_->isInvalidState(*this) || state_->expectingKey(*this)) return false;
  state_->appendSeparator(*this);
  if (humanReadable_ && !stateStack_.empty()) state_->appendWhitespace(*this);
  stateStack_.push_back(state_);
  state_ = &inner;
  if (maxDepth_ != 0 && stateStack_.size() > maxDepth_) return fail("Nested too deep");
  put(bracket);
  return true;
}

bool YxJsonStreamWriter::close(char bracket) {
  if (state_->isInvalidState(*this)) return false;
  if (bracket == ']' && state_->expectingKey(*this)) return false;
  if (stateStack_.empty()) return fail("There is nothing to close");
  const YxJsonStreamWriterState* inner = state_;
  state_ = stateStack_.back();
  stateStack_.pop_back();
  if (humanReadable_) inner->appendWhitespace(*this);
  put(bracket);
  state_->transitionState(*this);
  return true;
}

// For a text whose first `plain` bytes at least need no escape.
void YxJsonStreamWriter::putEscaped(std::string_view text, std::size_t plain) {
  if (text.size() <= longestCached) {
    auto known = cache_.find(text);
    if (known == cache_.end()) known = cache_.emplace(std::string(text), escaped(text)).first;
    return put(known->second);
  }
  put('"');
  for (std::size_t start = 0; start < text.size();) {
    plain = std::max(plain, start) + detail::plainPrefix(text.substr(std::max(plain, start)));
    put(text.substr(start, plain - start));
    if (plain == text.size()) break;
    put(detail::escapeFor(text[plain]));
    start = ++plain;
  }
  put('"');
}

std::string YxJsonStreamWriter::escaped(std::string_view text) const {
  std::string quoted;
  quoted.reserve(text.size() + text.size() / 10 + 2);
  quoted += '"';
  for (;;) {
    const std::size_t plain = detail::plainPrefix(text);
    quoted.append(text.substr(0, plain));
    if (plain == text.size()) break;
    quoted.append(detail::escapeFor(text[plain]));
    text.remove_prefix(plain + 1);
  }
  return quoted += '"';
}

bool YxJsonStreamWriter::writeObject(ValueRef dictionary) {
  const Flush flushing(*this);
  return putTree(dictionary);
}
bool YxJsonStreamWriter::writeArray(ValueRef array) {
  const Flush flushing(*this);
  return putTree(array);
}
bool YxJsonStreamWriter::writeValue(ValueRef value) {
  const Flush flushing(*this);
  return putTree(value);
}
bool YxJsonStreamWriter::writeObjectOpen() {
  const Flush flushing(*this);
  return open(YxJsonStreamWriterStateObjectStart::sharedInstance(), '{');
}
bool YxJsonStreamWriter::writeObjectClose() {
  const Flush flushing(*this);
  return close('}');
}
bool YxJsonStreamWriter::writeArrayOpen() {
  const Flush flushing(*this);
  return open(YxJsonStreamWriterStateArrayStart::sharedInstance(), '[');
}
bool YxJsonStreamWriter::writeArrayClose() {
  const Flush flushing(*this);
  return close(']');
}
bool YxJsonStreamWriter::writeNull() {
  const Flush flushing(*this);
  return putScalar("null");
}
bool YxJsonStreamWriter::writeBool(bool value) {
  const Flush flushing(*this);
  return putScalar(value ? "true" : "false");
}
bool YxJsonStreamWriter::writeString(std::string_view text) {
  const Flush flushing(*this);
  return putString(text);
}

bool YxJsonStreamWriter::writeNumber(ValueRef number) {
  const Flush flushing(*this);
  switch (number.kind()) {
    case Kind::boolean:
    case Kind::signedInteger:
    case Kind::unsignedInteger:
    case Kind::decimal:
    case Kind::real:
      return putNumber(*number.node());
    default:
      return fail("Not valid type for JSON");
  }
}

}  // namespace seedmote::json
