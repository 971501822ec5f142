#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "json/Document.h"

namespace seedmote::json::detail {

// Sees to it, while a tree is being built, that every key and every sequence of keys is stored once.
class ShapeTable {
 public:
  const Key* intern(Document& document, std::string_view text);
  // A key that is no string; never the same as another one.
  const Key* addOther(Document& document, std::string_view description, const Node* other);

  // The shape of a dictionary that was read as these keys and values. A key that came again is taken out,
  // its later value put into the earlier place: `count` becomes what is left.
  const Shape* shapeOf(Document& document, const Key** keys, Node* values, std::size_t& count);

  void clear();

 private:
  struct KeyEntry {
    const Key* key;
    std::uint64_t seenIn = 0;  // the dictionary that had it last
    std::size_t place = 0;     // and where
  };
  const Key* add(Document& document, std::string_view text, std::uint32_t hash, const Node* other);
  void growSlots();

  std::vector<KeyEntry> entries_;
  std::vector<std::uint32_t> slots_;  // open addressing: index of an entry + 1, 0 for an empty slot
  std::unordered_multimap<std::uint64_t, const Shape*> shapes_;
  std::uint64_t dictionaries_ = 0;
};

}  // namespace seedmote::json::detail
