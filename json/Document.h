#pragma once

#include <atomic>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "json/Node.h"

namespace seedmote::json::detail {

// Large blocks of memory that finished trees and readers gave back, kept for the next ones: a list that is
// fetched every few seconds then costs no page faults. Any thread.
class BlockPool {
 public:
  static constexpr std::size_t standardSize = std::size_t{256} << 10;
  static constexpr std::size_t keptBytes = std::size_t{32} << 20;

  // A block of at least `size` bytes; `size` becomes what it really has.
  static char* take(std::size_t& size);
  static void give(char* block, std::size_t size) noexcept;
};

// The memory of one tree and the count of those who share it. Filled by one thread, then never changed.
class Document {
 public:
  // `expectedBytes` sizes the first block.
  explicit Document(std::size_t expectedBytes);
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  void retain() { shares_.fetch_add(1, std::memory_order_relaxed); }
  void release() noexcept;

  std::size_t bytes() const { return bytes_; }  // taken from the system, used or not

  // Memory for nodes and the like, aligned to 8 bytes.
  void* allocate(std::size_t bytes) {
    bytes = (bytes + 7) & ~std::size_t{7};
    if (static_cast<std::size_t>(high_ - low_) < bytes) [[unlikely]]
      return allocateElsewhere(bytes);
    char* place = low_;
    low_ += bytes;
    return place;
  }
  Node* allocateNodes(std::size_t count) { return static_cast<Node*>(allocate(count * sizeof(Node))); }

  // Memory for text, unaligned: it grows down from the end of the block, nodes grow up from its start.
  char* allocateText(std::size_t bytes) {
    if (static_cast<std::size_t>(high_ - low_) < bytes) [[unlikely]]
      return static_cast<char*>(allocateElsewhere((bytes + 7) & ~std::size_t{7}));
    high_ -= bytes;
    return high_;
  }
  const char* copyText(std::string_view text) {
    char* place = allocateText(text.size());
    copyBytes(place, text.data(), text.size());
    return place;
  }

  const Key* makeKey(std::string_view text, std::uint32_t hash, std::uint32_t id, const Node* other);
  // The keys must differ from each other.
  const Shape* makeShape(const Key* const* keys, std::size_t count);
  const Foreign* adopt(std::unique_ptr<Foreign> foreign);
  // Keeps another tree alive as long as this one.
  void adopt(Document* shared);

 private:
  struct Block {
    char* bytes;
    std::size_t size;
  };
  ~Document();
  void* allocateElsewhere(std::size_t bytes);
  void addBlock(std::size_t size);

  // Most texts are short: a call of memcpy would cost more than the copy.
  static void copyBytes(char* to, const char* from, std::size_t count) {
    if (count < 8) {
      if (count >= 4) return copyEnds<4>(to, from, count);
      if (count == 0) return;
      to[0] = from[0];
      to[count / 2] = from[count / 2];
      to[count - 1] = from[count - 1];
    } else if (count <= 16) {
      copyEnds<8>(to, from, count);
    } else if (count <= 32) {
      copyEnds<16>(to, from, count);
    } else if (count <= 64) {
      std::memcpy(to, from, 32);
      std::memcpy(to + count - 32, from + count - 32, 32);
    } else {
      std::memcpy(to, from, count);
    }
  }
  template <std::size_t half>
  static void copyEnds(char* to, const char* from, std::size_t count) {
    char first[half];
    char last[half];
    std::memcpy(first, from, half);
    std::memcpy(last, from + count - half, half);
    std::memcpy(to, first, half);
    std::memcpy(to + count - half, last, half);
  }

  std::atomic<std::size_t> shares_{1};
  char* low_ = nullptr;
  char* high_ = nullptr;
  std::size_t nextSize_;
  std::size_t bytes_ = 0;
  Document* nextUnused_ = nullptr;  // while release() takes a chain down
  std::vector<Block> blocks_;
  std::vector<Document*> sharedDocuments_;
  std::vector<std::unique_ptr<Foreign>> foreigners_;
};

}  // namespace seedmote::json::detail
