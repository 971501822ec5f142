#include "platform/ui/ViewGeometry.h"

#include <cmath>
#include <utility>

namespace seedmote::platform {

namespace {
int currentMilliseconds = 0;  // of the animate() that runs now
}  // namespace

void ViewGeometry::animate(double seconds, const std::function<void()>& changes) {
  const int before = std::exchange(currentMilliseconds, static_cast<int>(std::lround(seconds * 1000)));
  changes();
  currentMilliseconds = before;
}

void ViewGeometry::takeAnimation() {
  if (animationMilliseconds_ != currentMilliseconds) {
    animationMilliseconds_ = currentMilliseconds;
    Q_EMIT animationChanged();
  }
}

}  // namespace seedmote::platform
