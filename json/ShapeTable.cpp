#include "json/ShapeTable.h"

#include <algorithm>

namespace seedmote::json::detail {

namespace {

// A daemon's lists have a handful of shapes. Where nearly every dictionary has its own, to remember them
// costs more than it saves.
constexpr std::size_t kMostShared = 10'000;

}  // namespace

const Key* ShapeTable::intern(Document& document, std::string_view text) {
  if (slots_.size() < (entries_.size() + 1) * 2) growSlots();
  const std::uint32_t hash = hashOf(text);
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
    const Key* key = entries_[slots_[slot] - 1].key;
    if (key->hash == hash && key->view() == text) return key;
  }
  const Key* key = add(document, text, hash, nullptr);
  slots_[slot] = static_cast<std::uint32_t>(entries_.size());
  return key;
}

const Key* ShapeTable::addOther(Document& document, std::string_view description, const Node* other) {
  return add(document, description, 0, other);
}

const Key* ShapeTable::add(Document& document, std::string_view text, std::uint32_t hash, const Node* other) {
  const Key* key = document.makeKey(text, hash, static_cast<std::uint32_t>(entries_.size()), other);
  entries_.push_back({key});
  return key;
}

void ShapeTable::growSlots() {
  slots_.assign(std::max<std::size_t>(slots_.size() * 2, 64), 0);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (entries_[i].key->other != nullptr) continue;
    std::size_t slot = entries_[i].key->hash & mask;
    while (slots_[slot] != 0) slot = (slot + 1) & mask;
    slots_[slot] = static_cast<std::uint32_t>(i + 1);
  }
}

const Shape* ShapeTable::shapeOf(Document& document, const Key** keys, Node* values, std::size_t& count) {
  ++dictionaries_;
  std::size_t kept = 0;
  std::uint64_t hash = hashSeed();
  for (std::size_t i = 0; i < count; ++i) {
    KeyEntry& entry = entries_[keys[i]->id];
    if (entry.seenIn == dictionaries_) {
      values[entry.place] = values[i];
      continue;
    }
    entry.seenIn = dictionaries_;
    entry.place = kept;
    hash = (hash ^ keys[i]->id) * 0x9E3779B97F4A7C15u;
    hash ^= hash >> 29;
    values[kept] = values[i];
    keys[kept++] = keys[i];
  }
  count = kept;
  const auto [first, last] = shapes_.equal_range(hash);
  for (auto known = first; known != last; ++known) {
    const Shape* shape = known->second;
    if (shape->count == count && std::equal(keys, keys + count, shape->keys)) return shape;
  }
  const Shape* shape = document.makeShape(keys, count);
  if (shapes_.size() < kMostShared) shapes_.emplace(hash, shape);
  return shape;
}

void ShapeTable::clear() {
  entries_.clear();
  std::fill(slots_.begin(), slots_.end(), 0);
  shapes_.clear();
}

}  // namespace seedmote::json::detail
