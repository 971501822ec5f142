#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "json/Decimal.h"
#include "json/Digits.h"
#include "json/Node.h"
#include "json/WriterText.h"
#include "json/YxJsonStreamWriter.h"

// The tree side of the stream writer, and the scalars, which it writes by the thousand. Open containers lie
// on a list, not on the machine's stack, so that without a depth limit a value of any depth can be written.
namespace seedmote::json {

using detail::Node;

// One open container.
struct YxJsonStreamWriter::Level {
  const Node* next = nullptr;
  const Node* end = nullptr;
  const detail::Key* const* keys = nullptr;  // null for an array
  std::vector<std::size_t> order;            // of the entries, when sorted
  const Node* values = nullptr;
};

inline void YxJsonStreamWriter::separate() {
  state_->appendSeparator(*this);
  if (humanReadable_) state_->appendWhitespace(*this);
}

// A string may also be a key.
inline bool YxJsonStreamWriter::beginString() {
  if (state_->isInvalidState(*this)) return false;
  separate();
  return true;
}

inline bool YxJsonStreamWriter::beginScalar() {
  if (state_->isInvalidState(*this) || state_->expectingKey(*this)) return false;
  separate();
  return true;
}

bool YxJsonStreamWriter::putScalar(std::string_view text) {
  if (!beginScalar()) return false;
  put(text);
  state_->transitionState(*this);
  return true;
}

bool YxJsonStreamWriter::putString(std::string_view text) {
  if (!beginString()) return false;
  putQuoted(text);
  state_->transitionState(*this);
  return true;
}

// Copies into the staging buffer as long as nothing has to be escaped, which is nearly always.
void YxJsonStreamWriter::putQuoted(std::string_view text) {
  if (text.size() + 2 > stagingBytes) return putEscaped(text, 0);
  char* to = room(text.size() + 2);
  const std::size_t plain = detail::copyPlain(to + 1, text);
  if (plain != text.size()) [[unlikely]]
    return putEscaped(text, plain);
  to[0] = '"';
  to[text.size() + 1] = '"';
  at_ = to + text.size() + 2;
}

// Which keys need no escapes is known: most are copied at once, with the quote that stands behind them.
bool YxJsonStreamWriter::putKey(const detail::Key& key) {
  if (key.other != nullptr) return fail("JSON object key must be string: " + std::string(key.view()));
  if (!key.plain || key.length > longestCached) return putString(key.view());
  if (!beginString()) return false;
  constexpr std::size_t readable = 16;
  const std::size_t quotedLength = key.length + 1;
  char* const to = room(1 + quotedLength + readable);
  to[0] = '"';
  std::memcpy(to + 1, key.text(), readable);
  if (quotedLength > readable) std::memcpy(to + 1, key.text(), quotedLength);
  at_ = to + 1 + quotedLength;
  state_->transitionState(*this);
  return true;
}

bool YxJsonStreamWriter::putNumber(const Node& node) {
  switch (node.kind()) {
    case Kind::boolean:
      return putScalar(node.unsignedValue != 0 ? "true" : "false");
    case Kind::signedInteger:
      return putInteger(node.signedValue < 0, node.unsignedValue);
    case Kind::unsignedInteger:
      return putInteger(false, node.unsignedValue);
    case Kind::decimal:
      if (!beginScalar()) return false;
      if (detail::isNotANumber(node)) return fail("NaN is not a valid number in JSON");
      put(detail::decimalText(node));
      break;
    default:
      if (!beginScalar() || !putReal(node.real)) return false;
      break;
  }
  state_->transitionState(*this);
  return true;
}

bool YxJsonStreamWriter::putInteger(bool negative, std::uint64_t bits) {
  if (!beginScalar()) return false;
  char* const to = room(1 + detail::mostDigits);
  to[0] = '-';
  at_ = detail::putDigits(to + (negative ? 1 : 0), negative ? 0 - bits : bits);
  state_->transitionState(*this);
  return true;
}

bool YxJsonStreamWriter::putReal(double value) {
  if (std::isnan(value)) return fail("NaN is not a valid number in JSON");
  if (std::isinf(value)) {
    return fail(value > 0 ? "+Infinity is not a valid number in JSON"
                          : "-Infinity is not a valid number in JSON");
  }
  constexpr std::size_t numberBytes = 128;
  char* const to = room(numberBytes);
  at_ = std::to_chars(to, to + numberBytes, value, std::chars_format::general, 17).ptr;
  return true;
}

bool YxJsonStreamWriter::putTree(ValueRef root) {
  std::vector<Level> levels;
  std::vector<Value> proxies;
  if (!putValue(root, levels, proxies)) return false;
  while (!levels.empty()) {
    if (!putRest(levels, proxies)) return false;
  }
  return true;
}

// Goes on with the innermost container, to its end or up to the next one that lies in it.
bool YxJsonStreamWriter::putRest(std::vector<Level>& levels, std::vector<Value>& proxies) {
  const std::size_t depth = levels.size();
  Level& level = levels.back();
  while (level.next != level.end) {
    const Node* value = level.next++;
    if (level.keys != nullptr) {
      auto place = static_cast<std::size_t>(value - level.values);
      if (!level.order.empty()) place = level.order[place];
      value = level.values + place;
      if (!putKey(*level.keys[place])) return false;
    }
    if (!putValue(ValueRef(value), levels, proxies)) return false;
    if (levels.size() != depth) return true;
  }
  const char bracket = level.keys == nullptr ? ']' : '}';
  levels.pop_back();
  return close(bracket);
}

bool YxJsonStreamWriter::openLevel(const Node& node, std::vector<Level>& levels) {
  Level level;
  if (node.kind() == Kind::array) {
    if (!open(YxJsonStreamWriterStateArrayStart::sharedInstance(), '[')) return false;
    level.next = node.elements;
  } else {
    if (!open(YxJsonStreamWriterStateObjectStart::sharedInstance(), '{')) return false;
    level.keys = node.members->shape->keys;
    level.next = level.values = node.members->values();
  }
  level.end = level.next + node.length();
  if (sortKeys_ && level.keys != nullptr) {
    level.order.resize(node.length());
    for (std::size_t i = 0; i < level.order.size(); ++i) level.order[i] = i;
    std::sort(level.order.begin(), level.order.end(), [&](std::size_t left, std::size_t right) {
      return detail::comesBefore(level.keys[left]->view(), level.keys[right]->view());
    });
  }
  levels.push_back(std::move(level));
  return true;
}

bool YxJsonStreamWriter::putValue(ValueRef value, std::vector<Level>& levels, std::vector<Value>& proxies) {
  if (value.isAbsent()) return fail("JSON serialisation not supported for (null)");
  const Node& node = *value.node();
  switch (node.kind()) {
    case Kind::dictionary:
    case Kind::array:
      return openLevel(node, levels);
    case Kind::string:
      putString(node.view());
      return true;
    case Kind::null:
      return putScalar("null");
    case Kind::foreign:
      return putForeign(value, levels, proxies);
    default:
      return putNumber(node);
  }
}

bool YxJsonStreamWriter::putForeign(ValueRef value, std::vector<Level>& levels, std::vector<Value>& proxies) {
  // An object may be its own proxy, which would never end.
  constexpr int mostReplacements = 1000;
  for (int replaced = 0; value.offersProxyForJson() && replaced < mostReplacements; ++replaced) {
    proxies.push_back(value.proxyForJson());
    value = proxies.back();
  }
  if (value.kind() == Kind::foreign) {
    return fail("JSON serialisation not supported for " + std::string(value.className()));
  }
  return putValue(value, levels, proxies);
}

}  // namespace seedmote::json
