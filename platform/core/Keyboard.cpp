#include "platform/core/Keyboard.h"

#include <utility>

#include "platform/core/Screen.h"

namespace seedmote::platform {

using Kind = KeyboardNotice::Kind;

Subscription Keyboard::onNotice(std::function<void(const KeyboardNotice&)> listener) {
  return listeners_.add(std::move(listener));
}

void Keyboard::show(Size size, double duration) {
  const double bottom = screen_.sizeAsRead().height;
  const double top = size_ ? bottom - size_->height : bottom;
  const Rect begin = screen_.upright({0, top, size.width, size.height});
  listeners_.tell({Kind::willShow, begin, duration});
  size_ = size;
  listeners_.tell({Kind::didShow, begin, duration});
}

void Keyboard::hide(double duration) {
  if (!size_) {
    return;
  }
  const double bottom = screen_.sizeAsRead().height;
  const Rect begin = screen_.upright({0, bottom - size_->height, size_->width, size_->height});
  listeners_.tell({Kind::willHide, begin, duration});
  size_.reset();
  listeners_.tell({Kind::didHide, begin, duration});
}

}  // namespace seedmote::platform
