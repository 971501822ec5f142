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

// The screen held upright, in points: 768 x 1024 for a tablet, 375 x 667 for a phone.
class Screen {
 public:
  explicit Screen(Size upright) : upright_(upright) {}
  Rect bounds() const { return {0, 0, upright_.width, upright_.height}; }

 private:
  Size upright_;
};

}  // namespace seedmote::platform
