#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "json/Document.h"

namespace seedmote::json::detail {

// A growing stack of plain values whose memory comes from the block pool and goes back to it.
template <class T>
class Stack {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  Stack() = default;
  Stack(const Stack&) = delete;
  Stack& operator=(const Stack&) = delete;
  ~Stack() { BlockPool::give(reinterpret_cast<char*>(begin_), bytes_); }

  std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
  T* at(std::size_t index) { return begin_ + index; }
  T& back() { return end_[-1]; }
  const T& back() const { return end_[-1]; }
  void push(const T& value) { *extend() = value; }
  // One more value, to be filled in.
  T* extend() {
    if (end_ == limit_) [[unlikely]]
      grow();
    return end_++;
  }
  void pop() { --end_; }
  void truncate(std::size_t size) { end_ = begin_ + size; }

 private:
  [[gnu::noinline]] void grow() {
    std::size_t bytes = std::max<std::size_t>(bytes_ * 2, 1024);
    T* fresh = reinterpret_cast<T*>(BlockPool::take(bytes));
    const std::size_t used = size();
    if (used != 0) std::memcpy(static_cast<void*>(fresh), begin_, used * sizeof(T));
    BlockPool::give(reinterpret_cast<char*>(begin_), bytes_);
    begin_ = fresh;
    end_ = fresh + used;
    limit_ = fresh + bytes / sizeof(T);
    bytes_ = bytes;
  }

  T* begin_ = nullptr;
  T* end_ = nullptr;
  T* limit_ = nullptr;
  std::size_t bytes_ = 0;
};

}  // namespace seedmote::json::detail
