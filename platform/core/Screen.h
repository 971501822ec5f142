#pragma once

#include <functional>

#include "platform/core/Keyboard.h"
#include "platform/core/Listeners.h"
#include "platform/core/ScreenShapes.h"

namespace seedmote::platform {

// The screen, measured in points as if it were held upright, whichever way what it shows is read: a tablet
// that is read in landscape is 768 wide and 1024 high, a phone 375 and 667. Main thread.
class Screen final {
 public:
  static constexpr double kStatusBarHeight = 20;

  explicit Screen(Size upright) : upright_(upright) {}
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  // All rectangles are those of the screen held upright.
  Rect bounds() const { return {0, 0, upright_.width, upright_.height}; }
  InterfaceOrientation interfaceOrientation() const { return orientation_; }
  Rect statusBarFrame() const;

  // The screen's size, and a rectangle of it as it is read, from the reader's top left corner.
  Size sizeAsRead() const;
  Rect upright(const Rect& asRead) const;

  void setSizeAsRead(Size size);
  void setInterfaceOrientation(InterfaceOrientation orientation);
  [[nodiscard]] Subscription onResize(std::function<void()> listener);
  [[nodiscard]] Subscription onOrientationChange(std::function<void()> listener);

  // The keyboard that the system may lay over the screen.
  Keyboard& keyboard() { return keyboard_; }

 private:
  Size upright_;
  InterfaceOrientation orientation_ = InterfaceOrientation::landscapeRight;
  Listeners<> resize_;
  Listeners<> orientationChange_;
  Keyboard keyboard_{*this};
};

}  // namespace seedmote::platform
