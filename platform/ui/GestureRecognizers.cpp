#include "platform/ui/GestureRecognizers.h"

#include <utility>

#include "platform/ui/LayoutEntry.h"

namespace seedmote::platform {

void GestureRecognizers::addSwipe(SwipeDirection direction, SwipeHandler handler) {
  swipes_.insert_or_assign(direction, std::move(handler));
}

void GestureRecognizers::swiped(SwipeDirection direction) {
  pressFromLayout(this, "swipe", [direction](const GestureRecognizers& gestures) {
    const auto known = gestures.swipes_.find(direction);
    if (known != gestures.swipes_.end()) {
      known->second(direction);
    }
  });
}

void GestureRecognizers::tapped() {
  pressFromLayout(this, "tap", [](const GestureRecognizers& gestures) {
    if (const auto handler = gestures.tap_) {  // a copy: the handler may remove itself
      handler();
    }
  });
}

}  // namespace seedmote::platform
