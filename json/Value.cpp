#include "json/Value.h"

#include <stdexcept>

#include "json/Document.h"
#include "json/Node.h"

namespace seedmote::json {

Kind ValueRef::kind() const {
  return node_ == nullptr ? Kind::absent : node_->kind();
}

ValueRef ValueRef::operator[](std::string_view key) const {
  if (kind() != Kind::dictionary) return {};
  const std::size_t place = node_->members->shape->find(key);
  return place == detail::Shape::npos ? ValueRef() : ValueRef(node_->members->values() + place);
}

ValueRef ValueRef::at(std::size_t index) const {
  if (kind() != Kind::array) throw std::out_of_range("element of a JSON value that is no array");
  if (index >= node_->length()) {
    throw std::out_of_range("index " + std::to_string(index) + " beyond the " +
                            std::to_string(node_->length()) + " elements of a JSON array");
  }
  return ValueRef(node_->elements + index);
}

std::size_t ValueRef::count() const {
  return kind() == Kind::array || kind() == Kind::dictionary ? node_->length() : 0;
}

ElementRange ValueRef::elements() const {
  return kind() == Kind::array ? ElementRange(node_->elements, node_->length()) : ElementRange(nullptr, 0);
}

EntryRange ValueRef::entries() const {
  if (kind() != Kind::dictionary) return {nullptr, nullptr, 0};
  return {node_->members->shape, node_->members->values(), node_->length()};
}

std::optional<std::string_view> ValueRef::text() const {
  if (kind() != Kind::string) return std::nullopt;
  return node_->view();
}

std::string_view ValueRef::className() const {
  return kind() == Kind::foreign ? std::string_view(node_->foreign->className) : std::string_view();
}

bool ValueRef::offersProxyForJson() const {
  return kind() == Kind::foreign && node_->foreign->proxyForJson != nullptr;
}

Value ValueRef::proxyForJson() const {
  return offersProxyForJson() ? node_->foreign->proxyForJson() : Value();
}

ElementRange::Iterator& ElementRange::Iterator::operator++() {
  ++node_;
  return *this;
}

ElementRange::Iterator ElementRange::Iterator::operator++(int) {
  Iterator before = *this;
  ++node_;
  return before;
}

ElementRange::Iterator ElementRange::end() const {
  return Iterator(first_ + count_);
}

Entry EntryRange::Iterator::operator*() const {
  const detail::Key* key = shape_->keys[index_];
  return {key->view(), ValueRef(values_ + index_), ValueRef(key->other)};
}

Value::Value(const Value& other) : document_(other.document_), node_(other.node_) {
  if (document_ != nullptr) document_->retain();
}

Value::Value(Value&& other) noexcept
    : document_(std::exchange(other.document_, nullptr)), node_(std::exchange(other.node_, nullptr)) {}

Value& Value::operator=(Value other) noexcept {
  std::swap(document_, other.document_);
  std::swap(node_, other.node_);
  return *this;
}

Value::~Value() {
  if (document_ != nullptr) document_->release();
}

Value Value::share(ValueRef part) const {
  if (part.isAbsent() || document_ == nullptr) return {};
  document_->retain();
  return Value(document_, part.node());
}

}  // namespace seedmote::json
