#include "app/RootView.h"

#include <gtest/gtest.h>

namespace seedmote {
namespace {

using platform::Idiom;

TEST(RootView, FillsItsWindowAndMakesTheScreen) {
  const struct {
    Idiom idiom;
    QSizeF window;
    QSizeF points;
    bool turned = false;
  } cases[] = {
      {Idiom::tablet, {1024, 768}, {1024, 768}},     {Idiom::tablet, {2048, 1536}, {1024, 768}},
      {Idiom::tablet, {512, 256}, {1024, 512}},      {Idiom::tablet, {768, 1024}, {1024, 768}, true},
      {Idiom::phone, {667, 375}, {667, 375}},        {Idiom::phone, {1600, 750}, {800, 375}},
      {Idiom::phone, {750, 1600}, {800, 375}, true},
  };
  for (const auto& c : cases) {
    QQuickItem frame;
    platform::Screen screen({768, 1024});
    const RootView root(
        c.idiom, screen, [](platform::InterfaceOrientation wanted) { return platform::isLandscape(wanted); },
        &frame);
    frame.setSize(c.window);
    EXPECT_EQ(root.size(), c.points);
    EXPECT_EQ(root.mapRectToItem(&frame, {QPointF(), root.size()}), QRectF(QPointF(), c.window));
    EXPECT_EQ(root.mapToItem(&frame, {0, 0}), QPointF(0, c.turned ? c.window.height() : 0));
    EXPECT_EQ(screen.bounds(), (platform::Rect{0, 0, c.points.height(), c.points.width()}));
  }
}

}  // namespace
}  // namespace seedmote
