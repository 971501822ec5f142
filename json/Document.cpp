#include "json/Document.h"

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <new>
#include <random>

namespace seedmote::json::detail {

namespace {

constexpr std::size_t fewKeys = 16;  // up to here comparing one after the other is fastest

struct Pool {
  struct Block {
    char* bytes;
    std::size_t size;
  };
  std::mutex mutex;
  std::vector<Block> blocks;
  std::size_t bytes = 0;
};

// Never destroyed: values with static lifetime may be dropped after it would be.
Pool& pool() {
  static Pool* const instance = [] {
    auto* fresh = new Pool;
    fresh->blocks.reserve(BlockPool::keptBytes / BlockPool::standardSize);  // giving back never allocates
    return fresh;
  }();
  return *instance;
}

}  // namespace

char* BlockPool::take(std::size_t& size) {
  {
    Pool& shared = pool();
    const std::lock_guard lock(shared.mutex);
    for (std::size_t i = shared.blocks.size(); i-- > 0;) {
      const Pool::Block block = shared.blocks[i];
      if (block.size < size || block.size / 2 > size) continue;
      shared.blocks.erase(shared.blocks.begin() + static_cast<std::ptrdiff_t>(i));
      shared.bytes -= block.size;
      size = block.size;
      return block.bytes;
    }
  }
  void* fresh = std::malloc(size);
  if (fresh == nullptr) throw std::bad_alloc();
  return static_cast<char*>(fresh);
}

void BlockPool::give(char* block, std::size_t size) noexcept {
  if (block == nullptr) return;
  if (size < standardSize || size > keptBytes) return std::free(block);
  Pool& shared = pool();
  const std::lock_guard lock(shared.mutex);
  // The oldest make room, or blocks of a size that nobody asks for would fill the pool for good.
  std::size_t dropped = 0;
  for (; shared.bytes + size > keptBytes; ++dropped) {
    shared.bytes -= shared.blocks[dropped].size;
    std::free(shared.blocks[dropped].bytes);
  }
  shared.blocks.erase(shared.blocks.begin(), shared.blocks.begin() + static_cast<std::ptrdiff_t>(dropped));
  shared.blocks.push_back({block, size});
  shared.bytes += size;
}

Document::Document(std::size_t expectedBytes)
    : nextSize_(std::clamp<std::size_t>(expectedBytes, 128, BlockPool::standardSize)) {}

Document::~Document() {
  for (const Block& block : blocks_) BlockPool::give(block.bytes, block.size);
}

void Document::release() noexcept {
  if (shares_.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
  // A loop, not a recursion: values may hold each other in chains of any length.
  Document* unused = this;
  while (unused != nullptr) {
    Document* document = unused;
    unused = document->nextUnused_;
    for (Document* shared : document->sharedDocuments_) {
      if (shared->shares_.fetch_sub(1, std::memory_order_acq_rel) != 1) continue;
      shared->nextUnused_ = unused;
      unused = shared;
    }
    delete document;
  }
}

void Document::addBlock(std::size_t size) {
  blocks_.push_back({nullptr, 0});  // first, so that nothing is lost when memory runs out
  char* bytes = BlockPool::take(size);
  blocks_.back() = {bytes, size};
  bytes_ += size;
}

void* Document::allocateElsewhere(std::size_t bytes) {
  if (bytes > BlockPool::standardSize / 4) {
    // A block of its own; what is left in the present one stays in use.
    addBlock(bytes);
    return blocks_.back().bytes;
  }
  addBlock(std::max(nextSize_, bytes));
  nextSize_ = std::min(std::max(nextSize_, bytes) * 2, BlockPool::standardSize);
  low_ = blocks_.back().bytes;
  high_ = low_ + (blocks_.back().size & ~std::size_t{7});
  char* place = low_;
  low_ += bytes;
  return place;
}

const Key* Document::makeKey(std::string_view text, std::uint32_t hash, std::uint32_t id, const Node* other) {
  const std::size_t quotedLength = text.size() + 1;
  const std::size_t stored = std::max<std::size_t>(quotedLength, 16);
  Key* key = static_cast<Key*>(allocate(sizeof(Key) + stored));
  char* copy = reinterpret_cast<char*>(key + 1);
  std::memset(copy + text.size(), 0, stored - text.size());
  if (!text.empty()) std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = '"';
  const bool needsEscape = other != nullptr || std::any_of(text.begin(), text.end(), [](char c) {
                             return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
                           });
  key->other = other;
  key->length = text.size();
  key->hash = hash;
  key->id = id;
  key->plain = !needsEscape;
  key->prefixMask = (std::uint32_t{1} << std::min<std::size_t>(quotedLength, 16)) - 1;
  return key;
}

const Shape* Document::makeShape(const Key* const* keys, std::size_t count) {
  Shape* shape = static_cast<Shape*>(allocate(sizeof(Shape)));
  const Key** ownKeys = static_cast<const Key**>(allocate(count * sizeof(Key*)));
  std::copy(keys, keys + count, ownKeys);
  shape->count = count;
  shape->keys = ownKeys;
  shape->slots = nullptr;
  shape->slotMask = 0;
  if (count > fewKeys && count < ~std::uint32_t{0}) {
    const std::size_t slotCount = std::bit_ceil(count * 2);
    auto* slots = static_cast<std::uint32_t*>(allocate(slotCount * sizeof(std::uint32_t)));
    std::fill(slots, slots + slotCount, 0);
    shape->slots = slots;
    shape->slotMask = slotCount - 1;
    for (std::size_t i = 0; i < count; ++i) {
      std::size_t slot = keys[i]->hash & shape->slotMask;
      while (slots[slot] != 0) slot = (slot + 1) & shape->slotMask;
      slots[slot] = static_cast<std::uint32_t>(i + 1);
    }
  }
  return shape;
}

const Foreign* Document::adopt(std::unique_ptr<Foreign> foreign) {
  foreigners_.push_back(std::move(foreign));
  return foreigners_.back().get();
}

void Document::adopt(Document* shared) {
  if (shared == nullptr) return;
  sharedDocuments_.push_back(shared);
  shared->retain();
}

namespace {

// Both halves of a product, as one.
std::uint64_t folded(std::uint64_t a, std::uint64_t b) {
#ifdef __SIZEOF_INT128__
  __extension__ using Product = unsigned __int128;
  const Product product = Product{a} * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
#else
  constexpr std::uint64_t low = 0xFFFFFFFF;
  const std::uint64_t lows = (a & low) * (b & low);
  const std::uint64_t middle = (a >> 32) * (b & low) + (lows >> 32);
  const std::uint64_t other = (a & low) * (b >> 32) + (middle & low);
  return ((other << 32) | (lows & low)) ^ ((a >> 32) * (b >> 32) + (middle >> 32) + (other >> 32));
#endif
}

}  // namespace

std::uint64_t hashSeed() {
  static const std::uint64_t seed = [] {
    std::random_device source;
    return (std::uint64_t{source()} << 32) | source();
  }();
  return seed;
}

// Another one in each process: whoever chooses the keys must not know which of them fall together.
std::uint32_t hashOf(std::string_view text) {
  constexpr std::uint64_t factor = 0x9E3779B97F4A7C15u;
  std::uint64_t hash = hashSeed() ^ (text.size() * factor);
  const char* from = text.data();
  std::size_t left = text.size();
  while (left >= 8) {
    std::uint64_t word;
    std::memcpy(&word, from, 8);
    hash = folded(hash ^ word, factor);
    from += 8;
    left -= 8;
  }
  std::uint64_t word = 0;
  if (left != 0) std::memcpy(&word, from, left);
  hash = folded(hash ^ word, factor);
  return static_cast<std::uint32_t>(folded(hash, hashSeed() | 1));
}

std::size_t Shape::find(std::string_view key) const {
  if (slots == nullptr) {
    for (std::size_t i = 0; i < count; ++i) {
      const Key* candidate = keys[i];
      if (candidate->view() == key && candidate->other == nullptr) return i;
    }
    return npos;
  }
  const std::uint32_t hash = hashOf(key);
  for (std::size_t slot = hash & slotMask; slots[slot] != 0; slot = (slot + 1) & slotMask) {
    const Key* candidate = keys[slots[slot] - 1];
    if (candidate->hash == hash && candidate->other == nullptr && candidate->view() == key) {
      return slots[slot] - 1;
    }
  }
  return npos;
}

}  // namespace seedmote::json::detail
