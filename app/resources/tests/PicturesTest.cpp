#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "app/resources/Pictures.h"

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

}  // namespace
}  // namespace seedmote
