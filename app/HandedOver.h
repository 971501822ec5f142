#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace seedmote {

// Keeps the URIs that were handed to the program, in order. Any thread.
class HandedOver final {
 public:
  // `taken` is called on the thread that hands over, after something came.
  explicit HandedOver(std::function<void()> taken) : taken_(std::move(taken)) {}

  void take(const std::vector<std::string>& uris);
  std::vector<std::string> all() const;

 private:
  const std::function<void()> taken_;
  mutable std::mutex mutex_;
  std::vector<std::string> uris_;
};

}  // namespace seedmote
