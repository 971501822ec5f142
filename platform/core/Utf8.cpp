#include "platform/core/Utf8.h"

#include <cstdint>
#include <cstring>

namespace seedmote::platform {

namespace {

struct Lead {
  int length;            // of the whole character; 0 for a byte that begins none
  std::uint8_t lowest;   // bounds of the second byte, which alone tells overlong forms, surrogates
  std::uint8_t highest;  // and too large numbers apart
};

Lead leadOf(std::uint8_t byte) {
  if (byte < 0x80) return {1, 0, 0};
  if (byte < 0xC2) return {0, 0, 0};
  if (byte < 0xE0) return {2, 0x80, 0xBF};
  if (byte == 0xE0) return {3, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0x80, 0x9F};
  if (byte < 0xF0) return {3, 0x80, 0xBF};
  if (byte == 0xF0) return {4, 0x90, 0xBF};
  if (byte < 0xF4) return {4, 0x80, 0xBF};
  if (byte == 0xF4) return {4, 0x80, 0x8F};
  return {0, 0, 0};
}

std::size_t asciiRun(const char* at, std::size_t left) {
  std::size_t run = 0;
  std::uint64_t eight = 0;
  while (left - run >= sizeof eight) {
    std::memcpy(&eight, at + run, sizeof eight);
    if ((eight & 0x8080808080808080U) != 0) {
      break;
    }
    run += sizeof eight;
  }
  return run;
}

}  // namespace

bool isValidUtf8(std::string_view bytes) {
  std::size_t at = 0;
  while (at < bytes.size()) {
    at += asciiRun(bytes.data() + at, bytes.size() - at);
    if (at == bytes.size()) {
      return true;
    }
    const Lead lead = leadOf(static_cast<std::uint8_t>(bytes[at]));
    if (lead.length == 0 || bytes.size() - at < static_cast<std::size_t>(lead.length)) {
      return false;
    }
    for (int i = 1; i < lead.length; ++i) {
      const auto byte = static_cast<std::uint8_t>(bytes[at + i]);
      const bool inRange = i == 1 ? byte >= lead.lowest && byte <= lead.highest : (byte & 0xC0) == 0x80;
      if (!inRange) {
        return false;
      }
    }
    at += lead.length;
  }
  return true;
}

}  // namespace seedmote::platform
