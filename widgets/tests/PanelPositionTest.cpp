#include "widgets/PanelPosition.h"

#include <gtest/gtest.h>

#include "platform/core/Screen.h"

namespace seedmote {
namespace {

using platform::InterfaceOrientation;

TEST(PanelPosition, FollowsOrientationAndKeyboard) {
  const platform::Size phone{375, 667};
  const platform::Size tablet{768, 1024};
  const struct {
    const char* what;
    platform::Size upright;
    InterfaceOrientation orientation;
    double keyboard;
    QPointF center;
    double rotation;
  } cases[] = {
      {"portrait", tablet, InterfaceOrientation::portrait, 0, {384, 460.8}, 0},
      {"portrait, keyboard", tablet, InterfaceOrientation::portrait, 264, {384, 360}, 0},
      {"upside down", tablet, InterfaceOrientation::portraitUpsideDown, 0, {384, 563.2}, 180},
      {"upside down, keyboard", tablet, InterfaceOrientation::portraitUpsideDown, 264, {384, 664}, 180},
      {"right", tablet, InterfaceOrientation::landscapeRight, 0, {345.6, 512}, -90},
      {"right, keyboard", tablet, InterfaceOrientation::landscapeRight, 352, {205.2, 512}, -90},
      {"left", tablet, InterfaceOrientation::landscapeLeft, 0, {422.4, 512}, 90},
      {"left, keyboard", tablet, InterfaceOrientation::landscapeLeft, 352, {562.8, 512}, 90},
      {"phone", phone, InterfaceOrientation::landscapeRight, 0, {168.75, 333.5}, -90},
      {"phone, keyboard", phone, InterfaceOrientation::landscapeRight, 162, {113.85, 333.5}, -90},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    platform::Screen screen(c.upright);
    screen.setInterfaceOrientation(c.orientation);
    const PanelPosition place =
        placePanel(screen.bounds(), screen.statusBarFrame(), c.orientation, c.keyboard);
    EXPECT_NEAR(place.center.x(), c.center.x(), 1e-9);
    EXPECT_NEAR(place.center.y(), c.center.y(), 1e-9);
    EXPECT_EQ(place.rotation, c.rotation);
  }
}

}  // namespace
}  // namespace seedmote
