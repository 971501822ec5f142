#pragma once

#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>

// The digits of integers, eight at once where the byte order allows. For the files of this room only.
namespace seedmote::json::detail {

constexpr bool eightDigitsAtOnce = std::endian::native == std::endian::little;
constexpr std::size_t mostDigits = 20;  // of 64 bits

// The digits of a number below 10^8, a byte each, the first one lowest.
inline std::uint64_t eightDigits(std::uint64_t value) {
  const std::uint64_t fours = (value / 10000) | ((value % 10000) << 32);
  const std::uint64_t hundreds = ((fours * 10486) >> 20) & 0x0000007F0000007Fu;
  const std::uint64_t twos = hundreds | ((fours - hundreds * 100) << 16);
  const std::uint64_t tens = ((twos * 103) >> 10) & 0x000F000F000F000Fu;
  return tens | ((twos - tens * 10) << 8);
}

// Writes a number, without zeros before it, at `to`, where mostDigits bytes may be touched: where it ends.
inline char* putDigits(char* to, std::uint64_t value) {
  if constexpr (!eightDigitsAtOnce) return std::to_chars(to, to + mostDigits, value).ptr;
  constexpr std::uint64_t limit = 100000000;
  constexpr std::uint64_t zeros = 0x3030303030303030u;
  const auto put = [&](std::uint64_t digits, int skipped) {
    const std::uint64_t bytes = (digits | zeros) >> (8 * skipped);
    std::memcpy(to, &bytes, 8);
    to += 8 - skipped;
  };
  const auto putFirst = [&](std::uint64_t part) {
    const std::uint64_t digits = eightDigits(part);
    put(digits, std::countr_zero(digits | (std::uint64_t{1} << 56)) / 8);
  };
  if (value < 10) {
    *to = static_cast<char>('0' + value);
    return to + 1;
  }
  if (value < limit) {
    putFirst(value);
    return to;
  }
  std::uint64_t upper = value / limit;
  if (upper >= limit) {
    putFirst(upper / limit);
    upper %= limit;
    put(eightDigits(upper), 0);
  } else {
    putFirst(upper);
  }
  put(eightDigits(value % limit), 0);
  return to;
}

}  // namespace seedmote::json::detail
