#include <algorithm>

#include "json/Node.h"
#include "json/WriterText.h"
#include "json/YxJsonStreamWriter.h"

// The tree side of the stream writer. Open containers lie on a list, not on the machine's stack, so that
// without a depth limit a value of any depth can be written.
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

bool YxJsonStreamWriter::putTree(ValueRef root) {
  std::vector<Level> levels;
  std::vector<Value> proxies;
  if (!putValue(root, levels, proxies)) return false;
  while (!levels.empty()) {
    if (levels.back().next != levels.back().end) {
      if (!putNext(levels, proxies)) return false;
    } else {
      const char bracket = levels.back().keys == nullptr ? ']' : '}';
      levels.pop_back();
      if (!close(bracket)) return false;
    }
  }
  return true;
}

bool YxJsonStreamWriter::putNext(std::vector<Level>& levels, std::vector<Value>& proxies) {
  Level& level = levels.back();
  const Node* value = level.next++;
  if (level.keys != nullptr) {
    auto place = static_cast<std::size_t>(value - level.values);
    if (!level.order.empty()) place = level.order[place];
    value = level.values + place;
    const detail::Key* key = level.keys[place];
    if (key->other != nullptr) return fail("JSON object key must be string: " + std::string(key->view()));
    if (!putString(key->view())) return false;
  }
  return putValue(ValueRef(value), levels, proxies);
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
