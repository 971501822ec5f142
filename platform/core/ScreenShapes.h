#pragma once

namespace seedmote::platform {

struct Size {
  double width = 0;
  double height = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  bool operator==(const Rect&) const = default;
};

// Which way the screen is read. Of an upright screen's edges the reader's top one is: the top, the bottom,
// the right (landscapeLeft) or the left (landscapeRight, as on a desktop).
enum class InterfaceOrientation {
  portrait = 1,
  portraitUpsideDown = 2,
  landscapeRight = 3,
  landscapeLeft = 4
};

constexpr bool isLandscape(InterfaceOrientation orientation) {
  return orientation == InterfaceOrientation::landscapeLeft ||
         orientation == InterfaceOrientation::landscapeRight;
}

}  // namespace seedmote::platform
