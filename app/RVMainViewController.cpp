#include "app/RVMainViewController.h"

#include "platform/core/Log.h"

namespace seedmote {

void RVMainViewController::viewDidLoad() {
  platform::log("Main view is loaded.\n");
}

void RVMainViewController::setTopbarColor(const QColor& color) {
  topbarColor_ = color;
  Q_EMIT topbarChanged();
}

void RVMainViewController::setTopbarAlpha(double alpha) {
  topbarAlpha_ = alpha;
  Q_EMIT topbarChanged();
}

}  // namespace seedmote
