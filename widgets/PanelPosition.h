#pragma once

#include <QPointF>

#include "platform/core/ScreenShapes.h"

namespace seedmote {

// Where the panel's centre stands on the screen held upright, in points, and how far the panel is turned so
// that it reads upright, in degrees clockwise.
struct PanelPosition {
  QPointF center;
  double rotation = 0;
  bool operator==(const PanelPosition&) const = default;
};

// `bounds` and `statusBar` are those of the screen held upright, `keyboardHeight` is as it is read; 0 for
// none.
PanelPosition placePanel(const platform::Rect& bounds, const platform::Rect& statusBar,
                         platform::InterfaceOrientation orientation, double keyboardHeight);

// The panel's rotation alone.
double panelRotation(platform::InterfaceOrientation orientation);

}  // namespace seedmote
