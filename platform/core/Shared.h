#pragma once

#include <mutex>
#include <utility>

namespace seedmote::platform {

// A value that one thread replaces while others read it. A reader gets a copy, so T is something that is
// cheap to copy: a text, a small record, a share of an immutable tree.
template <class T>
class Shared {
 public:
  Shared() = default;
  explicit Shared(T value) : value_(std::move(value)) {}

  T get() const {
    const std::lock_guard lock(mutex_);
    return value_;
  }

  void set(T value) {
    const std::lock_guard lock(mutex_);
    std::swap(value_, value);  // the old value goes after the lock
  }

  // Runs `look` on the value under the lock, to read a part of it without a copy of the whole.
  template <class Look>
  auto read(Look&& look) const {
    const std::lock_guard lock(mutex_);
    return look(value_);
  }

  // Runs `change` on the value under the lock.
  template <class Change>
  void update(Change&& change) {
    const std::lock_guard lock(mutex_);
    change(value_);
  }

 private:
  mutable std::mutex mutex_;
  T value_{};
};

}  // namespace seedmote::platform
