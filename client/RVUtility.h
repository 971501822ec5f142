#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/core/PropertyList.h"
#include "platform/core/Screen.h"

namespace seedmote {

// Components from 0 to 1.
struct Color {
  float red = 0;
  float green = 0;
  float blue = 0;
  float alpha = 1;
  bool operator==(const Color&) const = default;
};

// How values of the daemon are shown, and a few helpers without state that every screen uses. Any thread.
class RVUtility {
 public:
  RVUtility() = delete;

  // A torrent's status in the numbering of RPC version 14 and later (0 stopped, 1 and 2 checking, 3 and 4
  // downloading, 5 and 6 seeding); older daemons, and those whose version is unknown (-1), use bit values.
  static int changeTransStatus(int status, int rpcVersion);

  // Bytes in steps of 1024 with one decimal: "1024B", "1.0KB", "1.5GB".
  static std::string changeSizeFormat(std::int64_t bytes);

  // Seconds in their largest whole unit: "60s", "1m", "24h", "2d".
  static std::string changeETAFormat(std::int64_t seconds);

  // "1day 1hour 1min 1sec".
  static std::string changeCumTimeFormat(std::int64_t seconds);

  // Base64 (RFC 4648) without line breaks.
  static std::string Data2Base64(std::string_view bytes);

  // Without Unicode's white space and line ends at both ends.
  static std::string trimString(std::string_view text);

  // From components of 0 to 255.
  static Color colorWithRed(int red, int green, int blue);
  static Color colorWithGray(int gray);

  // Shows a message with a button, from a thread of its own; returns at once.
  static void showMessage(std::string text);
  static void dismissMessage();

  // Writes to the log. Passwords show as bullets.
  static void dumpDictionary(const platform::PropertyList::Dictionary& dictionary);
  static void dumpFrame(const platform::Rect& frame);
};

}  // namespace seedmote
