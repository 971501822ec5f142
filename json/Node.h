#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "json/Value.h"

// How a tree lies in memory. For the files of this room only; users read through ValueRef.
namespace seedmote::json::detail {

struct Node;
struct Shape;

// A decimal whose digits or exponent don't fit a node: digits without zeros at either end.
struct LongDecimal {
  std::int64_t exponent;  // of the last digit, as a power of ten
  std::size_t digitCount;
  const char* digits() const { return reinterpret_cast<const char*>(this + 1); }
};

struct Foreign {
  std::string className;
  std::string description;
  std::function<Value()> proxyForJson;
};

// The values of a dictionary; as many nodes as the shape has keys follow.
struct Members {
  const Shape* shape;
  const Node* values() const;
};

// One value. The low byte of `meta` is its kind; above it stands the byte count of a string, the number of
// elements or entries of a container, or what Decimal.h says of a decimal.
struct Node {
  std::uint64_t meta;
  union {
    std::int64_t signedValue;
    std::uint64_t unsignedValue;  // also a short decimal's mantissa, and a boolean's 0 or 1
    double real;
    const char* text;
    const Node* elements;
    const Members* members;
    const LongDecimal* longDecimal;
    const Foreign* foreign;
  };

  Kind kind() const { return static_cast<Kind>(meta & 0xFF); }
  std::size_t length() const { return static_cast<std::size_t>(meta >> 8); }
  std::string_view view() const { return {text, length()}; }

  static Node plain(Kind kind) {
    Node node;
    node.meta = static_cast<std::uint64_t>(kind);
    node.unsignedValue = 0;
    return node;
  }
  static Node withBits(Kind kind, std::uint64_t bits) {
    Node node;
    node.meta = static_cast<std::uint64_t>(kind);
    node.unsignedValue = bits;
    return node;
  }
  static Node withReal(double value) {
    Node node;
    node.meta = static_cast<std::uint64_t>(Kind::real);
    node.real = value;
    return node;
  }
  static Node withText(const char* text, std::size_t length) {
    Node node;
    node.meta = static_cast<std::uint64_t>(Kind::string) | (static_cast<std::uint64_t>(length) << 8);
    node.text = text;
    return node;
  }
  static Node withElements(const Node* elements, std::size_t count) {
    Node node;
    node.meta = static_cast<std::uint64_t>(Kind::array) | (static_cast<std::uint64_t>(count) << 8);
    node.elements = elements;
    return node;
  }
  static Node withMembers(const Members* members, std::size_t count) {
    Node node;
    node.meta = static_cast<std::uint64_t>(Kind::dictionary) | (static_cast<std::uint64_t>(count) << 8);
    node.members = members;
    return node;
  }
};
static_assert(sizeof(Node) == 16);

inline const Node* Members::values() const {
  return reinterpret_cast<const Node*>(this + 1);
}

// A key, stored once for each document. The text is followed by a closing quote and padding up to at least
// 16 bytes, so that a reader can compare it with input in one step.
struct Key {
  const Node* other;  // the key itself when it is no string, else null
  std::size_t length;
  std::uint32_t hash;
  std::uint32_t prefixMask;  // which of the first 16 bytes count, closing quote included
  std::uint32_t id;          // counts the document's keys, for the builder
  bool plain;                // JSON text shows the key without escapes
  const char* text() const { return reinterpret_cast<const char*>(this + 1); }
  std::string_view view() const { return {text(), length}; }
};

// The keys of all dictionaries that have the same keys in the same order, no key twice.
struct Shape {
  std::size_t count;
  const Key* const* keys;
  // Open addressing over the keys' hashes: index + 1 of a key, 0 for an empty slot. Null for few keys.
  const std::uint32_t* slots;
  std::size_t slotMask;

  static constexpr std::size_t npos = ~std::size_t{0};
  std::size_t find(std::string_view key) const;  // npos when there is none
};

std::uint64_t hashSeed();
std::uint32_t hashOf(std::string_view text);

}  // namespace seedmote::json::detail
