#include <gtest/gtest.h>

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "app/resources/tests/Pictures.h"

namespace seedmote {
namespace {

int alpha(const QImage& image, int x, int y) {
  return qAlpha(image.pixel(x, y));
}

// Where anything is drawn; empty when nothing is.
QRect drawnArea(const QImage& image) {
  QRect area;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (alpha(image, x, y) > 0) area |= QRect(x, y, 1, 1);
  return area;
}

TEST(Pictures, EachHasItsSizeAtEachScale) {
  for (const Picture& picture : pictures()) {
    for (int scale = 1; scale <= 3; ++scale) {
      const QImage image = load(picture.name, scale);
      EXPECT_EQ(image.size(), QSize(picture.width, picture.height) * scale) << picture.name << " " << scale;
      EXPECT_FALSE(drawnArea(image).isEmpty()) << picture.name << " " << scale;
    }
  }
}

TEST(Pictures, NoStrokeIsCutAndEachStandsInTheMiddle) {
  for (const Picture& picture : pictures()) {
    if (picture.kind == Kind::kSwitch || picture.kind == Kind::kPattern) continue;
    for (int scale = 1; scale <= 3; ++scale) {
      const QRect area = drawnArea(load(picture.name, scale));
      const QRect whole(0, 0, picture.width * scale, picture.height * scale);
      EXPECT_TRUE(whole.adjusted(1, 1, -1, -1).contains(area)) << picture.name << " " << scale;
      const QPoint aside = area.topLeft() - (whole.bottomRight() - area.bottomRight());
      EXPECT_LE(std::max(std::abs(aside.x()), std::abs(aside.y())), 2 * scale)
          << picture.name << " " << scale;
      // A picture that is much smaller than its neighbours would look lost beside them.
      EXPECT_GE(std::max(area.width(), area.height()) * 100, 65 * whole.width())
          << picture.name << " " << scale;
    }
  }
  for (const char* thumb : {"square-switch-thumb.png", "square-switch-thumb-highlight.png"}) {
    EXPECT_TRUE(QRect(1, 1, 97, 97).contains(drawnArea(load(thumb, 3)))) << "the shadow of " << thumb;
  }
}

TEST(Pictures, NoTwoAreTheSame) {
  const std::vector<Picture>& all = pictures();
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (std::size_t j = i + 1; j < all.size(); ++j) {
      EXPECT_NE(load(all[i].name, 1), load(all[j].name, 1)) << all[i].name << " and " << all[j].name;
    }
  }
}

TEST(Pictures, PatternsTileWithoutSeams) {
  for (const Picture& picture : pictures()) {
    if (picture.kind != Kind::kPattern) continue;
    for (int scale = 1; scale <= 3; ++scale) {
      const QImage tile = load(picture.name, scale);
      const int size = tile.width();
      // The stripes run up to the right; going along one, over the edges too, the colour stays.
      for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
          EXPECT_LE(
              std::abs(qGray(tile.pixel(x, y)) - qGray(tile.pixel((x + 1) % size, (y + size - 1) % size))), 1)
              << picture.name << " " << scale << " at " << x << "," << y;
      EXPECT_NE(tile.pixel(0, 0), tile.pixel(size / 2, 0)) << picture.name;
    }
  }
}

TEST(Pictures, TheSwitchFitsTogether) {
  for (int scale = 1; scale <= 3; ++scale) {
    const QImage mask = load("square-switch-mask.png", scale);
    const QImage overlay = load("square-switch-overlay.png", scale);
    const QImage track = load("square-switch-track.png", scale);
    const auto outline = [](const QImage& image, int y) {
      int left = 0;
      while (left < image.width() && alpha(image, left, y) == 0) ++left;
      return left;
    };
    for (int y = 0; y < mask.height(); ++y) {
      EXPECT_EQ(outline(mask, y), outline(overlay, y)) << scale << " row " << y;
      EXPECT_EQ(alpha(track, 0, y) + alpha(track, track.width() - 1, y), 2 * 255);
    }
    EXPECT_GT(outline(mask, 0), 0) << "the corners are round";
    // The thumb's centre stands 13.5 points from either end; the track, centred on it, reaches the other.
    EXPECT_GE(track.width(), 2 * (76 - 13.5) * scale);
    // Its two colours meet in the middle, under the thumb.
    const int middle = track.width() / 2;
    EXPECT_EQ(track.pixel(0, 0), track.pixel(middle - 2, 0)) << scale;
    EXPECT_NE(track.pixel(0, 0), track.pixel(middle + 2, 0)) << scale;
  }
}

}  // namespace
}  // namespace seedmote
