#pragma once

#include <functional>
#include <optional>

#include "platform/core/Listeners.h"
#include "platform/core/ScreenShapes.h"

namespace seedmote::platform {

class Screen;

// What is told when the keyboard on the screen comes or goes.
struct KeyboardNotice {
  enum class Kind { willShow, didShow, willHide, didHide };
  Kind kind = Kind::willShow;
  Rect beginFrame;               // where it starts to move, on the screen held upright
  double animationDuration = 0;  // seconds
};

// The keyboard on the screen. Whoever knows the system's (platform/ui; a test) tells it what happens, and
// it tells its listeners. Main thread.
class Keyboard final {
 public:
  // How long a keyboard moves of which this isn't known, in seconds.
  static constexpr double kUsualDuration = 0.25;

  explicit Keyboard(const Screen& screen) : screen_(screen) {}
  Keyboard(const Keyboard&) = delete;
  Keyboard& operator=(const Keyboard&) = delete;

  // Its size as it is read, in points; absent while none is up.
  std::optional<Size> size() const { return size_; }
  [[nodiscard]] Subscription onNotice(std::function<void(const KeyboardNotice&)> listener);

  // It comes up from below the screen, or goes on with another size.
  void show(Size size, double duration = kUsualDuration);
  // It goes down; nothing while none is up.
  void hide(double duration = kUsualDuration);

 private:
  const Screen& screen_;
  std::optional<Size> size_;
  Listeners<KeyboardNotice> listeners_;
};

}  // namespace seedmote::platform
