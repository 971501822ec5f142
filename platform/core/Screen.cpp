#include "platform/core/Screen.h"

#include <utility>

namespace seedmote::platform {

namespace {
Size exchanged(Size size) {
  return {size.height, size.width};
}
}  // namespace

Rect Screen::statusBarFrame() const {
  return upright({0, 0, sizeAsRead().width, kStatusBarHeight});
}

Size Screen::sizeAsRead() const {
  return isLandscape(orientation_) ? exchanged(upright_) : upright_;
}

Rect Screen::upright(const Rect& asRead) const {
  const auto& [x, y, width, height] = asRead;
  switch (orientation_) {
    case InterfaceOrientation::portrait:
      break;
    case InterfaceOrientation::portraitUpsideDown:
      return {upright_.width - x - width, upright_.height - y - height, width, height};
    case InterfaceOrientation::landscapeLeft:
      return {upright_.width - y - height, x, height, width};
    case InterfaceOrientation::landscapeRight:
      return {y, upright_.height - x - width, height, width};
  }
  return asRead;
}

void Screen::setSizeAsRead(Size size) {
  const Size upright = isLandscape(orientation_) ? exchanged(size) : size;
  if (upright != upright_) {
    upright_ = upright;
    resize_.tell();
  }
}

void Screen::setInterfaceOrientation(InterfaceOrientation orientation) {
  if (orientation != orientation_) {
    orientation_ = orientation;
    orientationChange_.tell();
  }
}

Subscription Screen::onResize(std::function<void()> listener) {
  return resize_.add(std::move(listener));
}

Subscription Screen::onOrientationChange(std::function<void()> listener) {
  return orientationChange_.add(std::move(listener));
}

}  // namespace seedmote::platform
