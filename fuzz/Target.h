#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

// What each file of this folder defines: handles one input, and aborts when something about it is wrong. The
// fuzzer calls it with inputs that it makes up, the replay with those that are kept.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace seedmote::fuzz {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  // Of a pointer to bytes to one to characters, which may look at any.
  return {reinterpret_cast<const char*>(data), size};
}

// Ends the program unless `holds`; `what` says what should have held.
inline void check(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "not so: %s\n", what);
    std::abort();
  }
}

inline void checkEqual(const std::string& one, const std::string& other, const char* what) {
  if (one != other) {
    std::fprintf(stderr, "%s\n--- one\n%s\n--- other\n%s\n", what, one.c_str(), other.c_str());
    std::abort();
  }
}

}  // namespace seedmote::fuzz
