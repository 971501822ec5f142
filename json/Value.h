#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace seedmote::json {

namespace detail {
struct Node;
struct Shape;
class Document;
}  // namespace detail

// What a value is. `decimal` is an exact decimal number (2.5, 1e400, or an integer of 19 and more digits
// as it was read); `real` is a double that the program made itself; `foreign` is an object of the program
// that JSON does not know.
enum class Kind : std::uint8_t {
  absent,
  null,
  boolean,
  signedInteger,
  unsignedInteger,
  decimal,
  real,
  string,
  array,
  dictionary,
  foreign
};

class ElementRange;
class EntryRange;
struct YxJsonNumber;

// A borrowed view of one value, as cheap as a pointer. Valid while a Value that shares its tree lives;
// never changes, so any number of threads may read it. A default-constructed one is absent, and so is what
// is not there: reading it gives nothing or 0, whatever it is read as.
class ValueRef {
 public:
  ValueRef() = default;
  explicit ValueRef(const detail::Node* node) : node_(node) {}

  Kind kind() const;
  bool isAbsent() const { return node_ == nullptr; }
  explicit operator bool() const { return node_ != nullptr; }

  // The value under a key; absent when there is none or this is no dictionary.
  ValueRef operator[](std::string_view key) const;
  ValueRef operator[](int) const = delete;  // a literal 0 would be taken for a null text
  // The element at an index; throws std::out_of_range, also for anything that is no array.
  ValueRef at(std::size_t index) const;
  // Elements of an array, entries of a dictionary; 0 for anything else.
  std::size_t count() const;
  ElementRange elements() const;  // empty for anything that is no array
  EntryRange entries() const;     // empty for anything that is no dictionary

  std::optional<std::string_view> text() const;  // strings only

  // True for the two integer kinds only, not for booleans and not for a decimal such as 5.0.
  bool isInteger() const;
  // The value of an integer kind that fits; absent for everything else (2.5, 5.0, 1e400, true, "5").
  std::optional<std::int64_t> exactInteger() const;

  // Lenient reading. An integer kind gives its low 32 or 64 bits; a decimal or a real truncates toward
  // zero and saturates; a boolean is 1 or 0; text gives its leading digits; not-a-number, null, any other
  // kind and nothing give 0. boolValue is true for every number that is not zero.
  std::int32_t intValue() const;
  std::int64_t longLongValue() const;
  float floatValue() const;
  double doubleValue() const;
  bool boolValue() const;

  // What a log line shows: a string's own text, a number's text, 1 or 0 for a boolean, "<null>", compact
  // JSON for containers, the first 16 MiB of it; a foreign object's description; "(null)" for nothing.
  std::string description() const;

  // Of a foreign object: its class's name and what stands in for it in JSON (absent when it offers nothing).
  std::string_view className() const;
  bool offersProxyForJson() const;
  class Value proxyForJson() const;

  const detail::Node* node() const { return node_; }

 private:
  const detail::Node* node_ = nullptr;
};

// Owns a share of an immutable tree: a copy costs one reference count, and copies may be made, read and
// dropped on any thread. Absent when default-constructed.
class Value {
 public:
  Value() = default;
  Value(const Value& other);
  Value(Value&& other) noexcept;
  Value& operator=(Value other) noexcept;
  ~Value();

  static Value null();
  static Value boolean(bool value);
  static Value integer(std::int64_t value);
  static Value unsignedInteger(std::uint64_t value);
  static Value real(double value);
  // The exact number that the text (JSON's number grammar) stands for; decimal not-a-number for any other.
  static Value decimal(std::string_view text);
  static Value number(const YxJsonNumber& number);  // as a stream parser found it
  static Value string(std::string_view text);       // UTF-8
  // Absent elements are taken as null.
  static Value array(const std::vector<Value>& elements);
  // Keeps the order given; a key that comes again replaces the earlier value in the earlier place.
  static Value dictionary(const std::vector<std::pair<std::string, Value>>& entries);
  // As above with keys of any kind. One that is no string is found by iteration only and can't be written.
  static Value dictionaryWithKeys(const std::vector<std::pair<Value, Value>>& entries);
  // An object that is no JSON value. `proxyForJson`, when given, is asked for the value that is written in
  // its place; it is called on the thread that writes.
  static Value foreign(std::string className, std::function<Value()> proxyForJson = {},
                       std::string description = {});

  ValueRef ref() const { return ValueRef(node_); }
  operator ValueRef() const { return ref(); }  // NOLINT: a Value is read like a ValueRef
  explicit operator bool() const { return node_ != nullptr; }
  bool isAbsent() const { return node_ == nullptr; }
  ValueRef operator[](std::string_view key) const { return ref()[key]; }
  ValueRef operator[](int) const = delete;
  // The readers of ValueRef, as in `value->count()`.
  struct Arrow {
    ValueRef ref;
    const ValueRef* operator->() const { return &ref; }
  };
  Arrow operator->() const { return Arrow{ref()}; }

  // Owns `part`, a view into this value's tree, together with the whole tree; absent for an absent part.
  Value share(ValueRef part) const;

  // For the builders of this room: takes over one reference to `document`.
  Value(detail::Document* document, const detail::Node* node) : document_(document), node_(node) {}
  detail::Document* document() const { return document_; }

 private:
  detail::Document* document_ = nullptr;
  const detail::Node* node_ = nullptr;
};

// The elements of an array in order.
class ElementRange {
 public:
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = ValueRef;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = ValueRef;
    Iterator() = default;
    explicit Iterator(const detail::Node* node) : node_(node) {}
    ValueRef operator*() const { return ValueRef(node_); }
    Iterator& operator++();
    Iterator operator++(int);
    bool operator==(const Iterator&) const = default;

   private:
    const detail::Node* node_ = nullptr;
  };

  ElementRange(const detail::Node* first, std::size_t count) : first_(first), count_(count) {}
  Iterator begin() const { return Iterator(first_); }
  Iterator end() const;
  std::size_t size() const { return count_; }
  bool empty() const { return count_ == 0; }

 private:
  const detail::Node* first_;
  std::size_t count_;
};

// One entry of a dictionary. A key that is no string has its description as `key` and itself as
// `otherKey`, which is absent otherwise.
struct Entry {
  std::string_view key;
  ValueRef value;
  ValueRef otherKey;
};

// The entries of a dictionary in the order in which they were read or given.
class EntryRange {
 public:
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = Entry;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = Entry;
    Iterator() = default;
    Iterator(const detail::Shape* shape, const detail::Node* values, std::size_t index)
        : shape_(shape), values_(values), index_(index) {}
    Entry operator*() const;
    Iterator& operator++() {
      ++index_;
      return *this;
    }
    Iterator operator++(int) {
      Iterator before = *this;
      ++index_;
      return before;
    }
    bool operator==(const Iterator& other) const { return index_ == other.index_; }

   private:
    const detail::Shape* shape_ = nullptr;
    const detail::Node* values_ = nullptr;
    std::size_t index_ = 0;
  };

  EntryRange(const detail::Shape* shape, const detail::Node* values, std::size_t count)
      : shape_(shape), values_(values), count_(count) {}
  Iterator begin() const { return Iterator(shape_, values_, 0); }
  Iterator end() const { return Iterator(shape_, values_, count_); }
  std::size_t size() const { return count_; }
  bool empty() const { return count_ == 0; }

 private:
  const detail::Shape* shape_;
  const detail::Node* values_;
  std::size_t count_;
};

}  // namespace seedmote::json
