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
  } cases[] = {
      {Idiom::tablet, {1024, 768}, {1024, 768}}, {Idiom::tablet, {2048, 1536}, {1024, 768}},
      {Idiom::tablet, {512, 256}, {1024, 512}},  {Idiom::tablet, {600, 900}, {1024, 1536}},
      {Idiom::phone, {667, 375}, {667, 375}},    {Idiom::phone, {1600, 750}, {800, 375}},
  };
  for (const auto& c : cases) {
    QQuickItem frame;
    platform::Screen screen({768, 1024});
    const RootView root(c.idiom, screen, &frame);
    frame.setSize(c.window);
    EXPECT_EQ(root.size(), c.points);
    EXPECT_EQ(root.size() * root.scale(), c.window);
    EXPECT_EQ(screen.bounds(), (platform::Rect{0, 0, c.points.height(), c.points.width()}));
  }
}

}  // namespace
}  // namespace seedmote
