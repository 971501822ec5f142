#include "widgets/PanelPosition.h"

#include <utility>

namespace seedmote {

using platform::InterfaceOrientation;

namespace {

constexpr double kLine = 0.45;  // of the height that the keyboard leaves

bool isMirrored(InterfaceOrientation orientation) {
  return orientation == InterfaceOrientation::portraitUpsideDown ||
         orientation == InterfaceOrientation::landscapeLeft;
}

}  // namespace

PanelPosition placePanel(const platform::Rect& bounds, const platform::Rect& statusBar,
                         InterfaceOrientation orientation, double keyboardHeight) {
  double width = bounds.width;
  double height = bounds.height;
  double statusBarHeight = statusBar.height;
  const bool landscape = platform::isLandscape(orientation);
  if (landscape) {
    std::swap(width, height);
    statusBarHeight = statusBar.width;
  }
  double activeHeight = height - keyboardHeight;
  if (keyboardHeight > 0) {
    activeHeight += 2 * statusBarHeight;
  }
  QPointF center(width / 2, kLine * activeHeight);
  if (isMirrored(orientation)) {
    center.setY(height - center.y());
  }
  return {landscape ? center.transposed() : center, panelRotation(orientation)};
}

double panelRotation(InterfaceOrientation orientation) {
  switch (orientation) {
    case InterfaceOrientation::portrait:
      return 0;
    case InterfaceOrientation::portraitUpsideDown:
      return 180;
    case InterfaceOrientation::landscapeLeft:
      return 90;
    case InterfaceOrientation::landscapeRight:
      return -90;
  }
  return 0;
}

}  // namespace seedmote
