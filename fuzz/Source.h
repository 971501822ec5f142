#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace seedmote::fuzz {

// Deals an input out as decisions, numbers and texts; zeros when it is used up.
class Source {
 public:
  explicit Source(std::string_view bytes) : bytes_(bytes) {}

  bool isEmpty() const { return bytes_.empty(); }
  std::uint8_t byte() {
    if (bytes_.empty()) return 0;
    const auto taken = static_cast<std::uint8_t>(bytes_.front());
    bytes_.remove_prefix(1);
    return taken;
  }
  std::uint64_t number() {
    std::uint64_t made = 0;
    for (int i = 0; i < 8; ++i) made = made << 8 | byte();
    return made;
  }
  // Small and large ones, and those at the limits, are all likely.
  std::int64_t integer() { return static_cast<std::int64_t>(number()) >> byte() % 64; }
  double real() { return std::bit_cast<double>(number()); }
  std::string text() {
    const std::string_view taken = bytes_.substr(0, byte());
    bytes_.remove_prefix(taken.size());
    return std::string(taken);
  }
  std::string rest() { return std::string(bytes_); }

 private:
  std::string_view bytes_;
};

}  // namespace seedmote::fuzz
