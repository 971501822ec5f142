#include "platform/core/Screen.h"

#include <gtest/gtest.h>

#include <vector>

namespace seedmote::platform {
namespace {

TEST(Screen, IsMeasuredUprightWhicheverWayItIsRead) {
  const struct {
    InterfaceOrientation orientation;
    Rect bounds, statusBar, corner, keyboard;
  } cases[] = {
      {InterfaceOrientation::portrait, {0, 0, 500, 300}, {0, 0, 500, 20}, {10, 0, 30, 40}, {0, 300, 500, 90}},
      {InterfaceOrientation::portraitUpsideDown,
       {0, 0, 500, 300},
       {0, 280, 500, 20},
       {460, 260, 30, 40},
       {0, -90, 500, 90}},
      {InterfaceOrientation::landscapeRight,
       {0, 0, 300, 500},
       {0, 0, 20, 500},
       {0, 460, 40, 30},
       {300, 0, 90, 500}},
      {InterfaceOrientation::landscapeLeft,
       {0, 0, 300, 500},
       {280, 0, 20, 500},
       {260, 10, 40, 30},
       {-90, 0, 90, 500}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.orientation));
    Screen screen({768, 1024});
    screen.setInterfaceOrientation(c.orientation);
    screen.setSizeAsRead({500, 300});
    EXPECT_EQ(screen.sizeAsRead(), (Size{500, 300}));
    EXPECT_EQ(screen.bounds(), c.bounds);
    EXPECT_EQ(screen.statusBarFrame(), c.statusBar);
    EXPECT_EQ(screen.upright({10, 0, 30, 40}), c.corner);
    Rect begin;
    const Subscription notices =
        screen.keyboard().onNotice([&](const KeyboardNotice& notice) { begin = notice.beginFrame; });
    screen.keyboard().show({500, 90});
    EXPECT_EQ(begin, c.keyboard);
  }
}

TEST(Keyboard, SaysThatItComesGrowsAndGoes) {
  using Kind = KeyboardNotice::Kind;
  struct Heard {
    Kind kind;
    double top;
    double duration;
    bool up;
    bool operator==(const Heard&) const = default;
  };
  Screen screen({768, 1024});
  Keyboard& keyboard = screen.keyboard();
  std::vector<Heard> heard;
  const Subscription notices = keyboard.onNotice([&](const KeyboardNotice& notice) {
    heard.push_back(
        {notice.kind, notice.beginFrame.x, notice.animationDuration, keyboard.size().has_value()});
  });
  keyboard.hide();
  keyboard.show({1024, 352}, 0.3);
  keyboard.show({1024, 400});
  keyboard.hide(0.2);
  EXPECT_EQ(heard, (std::vector<Heard>{{Kind::willShow, 768, 0.3, false},
                                       {Kind::didShow, 768, 0.3, true},
                                       {Kind::willShow, 416, 0.25, true},
                                       {Kind::didShow, 416, 0.25, true},
                                       {Kind::willHide, 368, 0.2, true},
                                       {Kind::didHide, 368, 0.2, false}}));
}

}  // namespace
}  // namespace seedmote::platform
