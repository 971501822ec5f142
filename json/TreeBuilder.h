#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "json/Decimal.h"
#include "json/Document.h"
#include "json/ShapeTable.h"
#include "json/Stack.h"
#include "json/YxJsonNumber.h"

namespace seedmote::json::detail {

// Builds one tree after the other from the inside out: the children of open containers lie on a stack and
// are copied into the document when their container closes. A dictionary is expected to have the keys of
// the last one at its depth: then each key costs one comparison.
class TreeBuilder {
 public:
  TreeBuilder() = default;
  TreeBuilder(const TreeBuilder&) = delete;
  TreeBuilder& operator=(const TreeBuilder&) = delete;
  ~TreeBuilder() {
    if (document_ != nullptr) document_->release();
  }

  // Sizes the first block of the next tree.
  void expect(std::size_t bytes) { expectedBytes_ = bytes; }

  // Of the tree under construction.
  std::size_t bytes() const {
    return nodes_.size() * sizeof(Node) + (document_ == nullptr ? 0 : document_->bytes());
  }

  bool isOpen() const { return frames_.size() != 0; }
  bool isInDictionary() const { return frames_.back().isDictionary; }
  Document& document() {
    if (document_ == nullptr) [[unlikely]]
      document_ = new Document(expectedBytes_);
    return *document_;
  }

  void openArray() { open(false); }
  void openDictionary() {
    open(true);
    const std::size_t level = frames_.size();
    if (level < lastShapes_.size() && lastShapes_[level] != nullptr) {
      predicted_ = lastShapes_[level]->keys;
      predictedEnd_ = predicted_ + lastShapes_[level]->count;
    }
  }
  // Takes the key that stands in JSON text at `at`, if it is the expected one: the text behind its closing
  // quote, else null.
  const char* takePredictedKey(const char* at, const char* end);
  void addKey(std::string_view text);
  void addOtherKey(std::string_view description, const Node* other);
  // In two halves, as nodes are made: a copy in one would wait until both halves are in memory.
  void add(const Node& node) {
    Node* const place = nodes_.extend();
    place->meta = node.meta;
    place->unsignedValue = node.unsignedValue;
  }
  Node closeArray();
  Node closeDictionary();

  Node textNode(std::string_view text) { return Node::withText(document().copyText(text), text.size()); }
  Node numberNode(const YxJsonNumber& number);

  // The tree whose outermost value is `root`; the builder is ready for the next one.
  Value finish(const Node& root);

 private:
  struct Frame {
    std::size_t firstNode;
    std::size_t firstKey;
    const Key* const* outerPredicted;
    const Key* const* outerPredictedEnd;
    bool isDictionary;
    bool hasOwnKeys;  // the keys are in keys_; else they are those of the last shape so far
  };

  void open(bool isDictionary) {
    document();
    frames_.push({nodes_.size(), keys_.size(), predicted_, predictedEnd_, isDictionary, false});
    predicted_ = predictedEnd_ = nullptr;
  }
  void close() {
    const Frame& frame = frames_.back();
    nodes_.truncate(frame.firstNode);
    keys_.truncate(frame.firstKey);
    predicted_ = frame.outerPredicted;
    predictedEnd_ = frame.outerPredictedEnd;
    frames_.pop();
  }
  void useOwnKeys();
  const Shape* ownShape(std::size_t& count);

  Document* document_ = nullptr;
  std::size_t expectedBytes_ = 0;
  Stack<Frame> frames_;
  Stack<Node> nodes_;
  Stack<const Key*> keys_;
  const Key* const* predicted_ = nullptr;
  const Key* const* predictedEnd_ = nullptr;
  std::vector<const Shape*> lastShapes_;  // by the number of open containers
  ShapeTable shapes_;
};

inline const char* TreeBuilder::takePredictedKey(const char* at, const char* end) {
  if (predicted_ == predictedEnd_) return nullptr;
  const Key& key = **predicted_;
  const std::size_t quotedLength = key.length + 1;
  const auto available = static_cast<std::size_t>(end - at);
  if (!key.plain || available < quotedLength) return nullptr;
#if defined(__SSE2__)
  if (available >= 16) [[likely]] {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const __m128i wanted = _mm_loadu_si128(reinterpret_cast<const __m128i*>(key.text()));
    const auto equal = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, wanted)));
    if ((equal & key.prefixMask) != key.prefixMask) return nullptr;
    if (quotedLength > 16 && std::memcmp(at + 16, key.text() + 16, quotedLength - 16) != 0) return nullptr;
  } else
#endif
  {
    if (std::memcmp(at, key.text(), quotedLength) != 0) return nullptr;
  }
  ++predicted_;
  return at + quotedLength;
}

inline Node TreeBuilder::numberNode(const YxJsonNumber& number) {
  if (number.kind != Kind::decimal) [[likely]] {
    return Node::withBits(number.kind, number.negative ? 0 - number.magnitude : number.magnitude);
  }
  if (!number.isLong) return shortDecimalNode(number.negative, number.magnitude, number.exponent);
  return decimalNode(document(), number.text).value_or(notANumberNode());
}

inline Node TreeBuilder::closeArray() {
  const Frame& frame = frames_.back();
  const std::size_t count = nodes_.size() - frame.firstNode;
  Node* elements = document_->allocateNodes(count);
  if (count != 0) std::memcpy(static_cast<void*>(elements), nodes_.at(frame.firstNode), count * sizeof(Node));
  close();
  return Node::withElements(elements, count);
}

inline Node TreeBuilder::closeDictionary() {
  const Frame& frame = frames_.back();
  std::size_t count = nodes_.size() - frame.firstNode;
  const Shape* shape = nullptr;
  if (!frame.hasOwnKeys && predicted_ != nullptr && predicted_ == predictedEnd_) [[likely]] {
    shape = lastShapes_[frames_.size()];
  } else {
    shape = ownShape(count);
  }
  auto* members = static_cast<Members*>(document_->allocate(sizeof(Members) + count * sizeof(Node)));
  members->shape = shape;
  if (count != 0) {
    std::memcpy(static_cast<void*>(members + 1), nodes_.at(frame.firstNode), count * sizeof(Node));
  }
  close();
  return Node::withMembers(members, count);
}

}  // namespace seedmote::json::detail
