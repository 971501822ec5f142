#include <memory>

#include "json/Decimal.h"
#include "json/TreeBuilder.h"
#include "json/Value.h"

namespace seedmote::json {

namespace {

using detail::Node;

constexpr std::size_t scalarBytes = 128;

Value scalar(const Node& node) {
  detail::TreeBuilder builder;
  builder.expect(scalarBytes);
  return builder.finish(node);
}

// A child's node is copied; what it points to stays in its own tree, which is kept alive.
void addChild(detail::TreeBuilder& builder, const Value& child) {
  builder.document().adopt(child.document());
  builder.add(child.isAbsent() ? Node::plain(Kind::null) : *child.ref().node());
}

}  // namespace

Value Value::null() {
  return scalar(Node::plain(Kind::null));
}
Value Value::boolean(bool value) {
  return scalar(Node::withBits(Kind::boolean, value ? 1 : 0));
}
Value Value::integer(std::int64_t value) {
  return scalar(Node::withBits(Kind::signedInteger, static_cast<std::uint64_t>(value)));
}
Value Value::unsignedInteger(std::uint64_t value) {
  return scalar(Node::withBits(Kind::unsignedInteger, value));
}
Value Value::real(double value) {
  return scalar(Node::withReal(value));
}

Value Value::decimal(std::string_view text) {
  detail::TreeBuilder builder;
  builder.expect(scalarBytes);
  return builder.finish(detail::decimalNode(builder.document(), text).value_or(detail::notANumberNode()));
}

Value Value::number(const YxJsonNumber& number) {
  detail::TreeBuilder builder;
  builder.expect(scalarBytes);
  return builder.finish(builder.numberNode(number));
}

Value Value::string(std::string_view text) {
  detail::TreeBuilder builder;
  builder.expect(scalarBytes + text.size());
  return builder.finish(builder.textNode(text));
}

Value Value::array(const std::vector<Value>& elements) {
  detail::TreeBuilder builder;
  builder.openArray();
  for (const Value& element : elements) addChild(builder, element);
  return builder.finish(builder.closeArray());
}

Value Value::dictionary(const std::vector<std::pair<std::string, Value>>& entries) {
  detail::TreeBuilder builder;
  builder.openDictionary();
  for (const auto& [key, value] : entries) {
    builder.addKey(key);
    addChild(builder, value);
  }
  return builder.finish(builder.closeDictionary());
}

Value Value::dictionaryWithKeys(const std::vector<std::pair<Value, Value>>& entries) {
  detail::TreeBuilder builder;
  builder.openDictionary();
  for (const auto& [key, value] : entries) {
    if (const auto text = key->text()) {
      builder.addKey(*text);
    } else {
      const Value other = key ? key : Value::null();
      builder.document().adopt(other.document());
      builder.addOtherKey(other->description(), other.ref().node());
    }
    addChild(builder, value);
  }
  return builder.finish(builder.closeDictionary());
}

Value Value::foreign(std::string className, std::function<Value()> proxyForJson, std::string description) {
  detail::TreeBuilder builder;
  builder.expect(scalarBytes);
  auto foreign = std::make_unique<detail::Foreign>();
  foreign->className = std::move(className);
  foreign->description = std::move(description);
  foreign->proxyForJson = std::move(proxyForJson);
  Node node = Node::plain(Kind::foreign);
  node.foreign = builder.document().adopt(std::move(foreign));
  return builder.finish(node);
}

}  // namespace seedmote::json
