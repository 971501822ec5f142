#include "json/TreeBuilder.h"

namespace seedmote::json::detail {

// The keys so far were the predicted ones; from here on they are listed.
void TreeBuilder::useOwnKeys() {
  Frame& frame = frames_.back();
  if (frame.hasOwnKeys) return;
  frame.hasOwnKeys = true;
  if (predicted_ != nullptr) {
    const Shape* shape = lastShapes_[frames_.size()];
    for (const Key* const* key = shape->keys; key != predicted_; ++key) keys_.push(*key);
  }
  predicted_ = predictedEnd_ = nullptr;
}

void TreeBuilder::addKey(std::string_view text) {
  if (predicted_ != predictedEnd_ && (*predicted_)->other == nullptr && (*predicted_)->view() == text) {
    ++predicted_;
    return;
  }
  useOwnKeys();
  keys_.push(shapes_.intern(*document_, text));
}

void TreeBuilder::addOtherKey(std::string_view description, const Node* other) {
  useOwnKeys();
  keys_.push(shapes_.addOther(*document_, description, other));
}

const Shape* TreeBuilder::ownShape(std::size_t& count) {
  useOwnKeys();
  const Frame& frame = frames_.back();
  // A value without a key can't come from the parser; it would have no place here.
  count = std::min(count, keys_.size() - frame.firstKey);
  const Shape* shape =
      shapes_.shapeOf(*document_, keys_.at(frame.firstKey), nodes_.at(frame.firstNode), count);
  const std::size_t level = frames_.size();
  if (count != 0) {
    if (lastShapes_.size() <= level) lastShapes_.resize(level + 1, nullptr);
    lastShapes_[level] = shape;
  }
  return shape;
}

Value TreeBuilder::finish(const Node& root) {
  Node* node = document().allocateNodes(1);
  *node = root;
  Document* finished = document_;
  document_ = nullptr;
  lastShapes_.clear();
  shapes_.clear();
  return Value(finished, node);
}

}  // namespace seedmote::json::detail
