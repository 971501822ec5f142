#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>

#include "app/resources/Pictures.h"
#include "app/resources/RVRes.h"
#include "app/resources/RVResource.h"

namespace seedmote {
namespace {

const Color kBlue{0, 0, 1, 1};

bool isPicture(const std::string& name) {
  return std::any_of(pictures().begin(), pictures().end(),
                     [&name](const Picture& picture) { return picture.name == name; });
}

// The colour in which an image is drawn; every drawn pixel must have it.
std::optional<QRgb> drawnIn(const QImage& image) {
  std::optional<QRgb> color;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb pixel = image.pixel(x, y);
      if (qAlpha(pixel) < 255) continue;
      if (color && *color != pixel) return std::nullopt;
      color = pixel;
    }
  }
  return color;
}

TEST(RVRes, EveryImageIsThere) {
  for (const int id :
       {1, 2, 3, 4, 5, 6, 7, 11, 12, 13, 14, 15, 16, 17, 21, 22, 23, 24, 25, 26, 27, 28, 30, 31}) {
    const Image image = RVRes::getImage(id);
    EXPECT_FALSE(image.fill) << id;
    EXPECT_TRUE(isPicture(image.name)) << image.name;
    EXPECT_EQ(image.url(), "qrc:/seedmote/images/" + image.name);
  }
}

TEST(RVRes, ASelectedIconIsTheSameDrawingInBlue) {
  for (int id = 1; id <= 7; ++id) {
    const QImage plain = load(RVRes::getImage(id).name, 3);
    const QImage selected = load(RVRes::getImage(id + 10).name, 3);
    EXPECT_EQ(drawnIn(selected), qRgb(0, 0, 255)) << id;
    EXPECT_NE(drawnIn(plain), qRgb(0, 0, 255)) << id;
    EXPECT_EQ(plain.convertToFormat(QImage::Format_Alpha8), selected.convertToFormat(QImage::Format_Alpha8))
        << id;
  }
  EXPECT_EQ(RVRes::getImage(24), RVRes::getImage(2));
}

TEST(RVRes, UnknownIdsFallBack) {
  for (const int id : {-1, 0, 8, 10, 18, 29, 32, 1000}) {
    const Image image = RVRes::getImage(id);
    ASSERT_TRUE(image.fill) << id;
    EXPECT_EQ(*image.fill, RVUtility::colorWithGray(250));
    EXPECT_EQ(image.url(), "");
  }
  for (const int id : {0, 31, 35, 54})
    EXPECT_EQ(static_cast<Color>(RVRes::getColor(id)), (Color{0, 0, 0, 1}));
  for (const int id : {0, 8, 100, 112}) EXPECT_EQ(RVRes::getWording(id), "");
}

TEST(RVResource, FollowsStyleAndLanguage) {
  for (const char* style : {"Default", "Ellegant"}) {
    RVResource::setStyle(style);
    for (const char* key :
         {"All", "Paused", "Downloading", "Finished", "Seeding", "Verifying", "Waiting", "Refresh"}) {
      EXPECT_TRUE(isPicture(RVResource::getIcon(key).value_or(""))) << key;
    }
    EXPECT_EQ(RVResource::getIcon("Finished"), "Ellegant_Finish_Stopped_44_44.png");
  }
  RVResource::setStyle("Plain");
  EXPECT_EQ(RVResource::getIcon("All"), std::nullopt);
  RVResource::setStyle("Default");
  const std::pair<const char*, std::optional<std::string>> waiting[] = {
      {"Chinese", "等待检查"}, {"", std::nullopt}, {"English", "Waiting"}};
  for (const auto& [language, words] : waiting) {
    RVResource::setLang(language);
    EXPECT_EQ(RVResource::getWording("Waiting"), words);
    EXPECT_EQ(RVResource::getWording("Refresh"), std::nullopt);
  }
}

TEST(Pictures, EachHasItsSizeAtEachScale) {
  for (const Picture& picture : pictures()) {
    for (int scale = 1; scale <= 3; ++scale) {
      EXPECT_EQ(load(picture.name, scale).size(), QSize(picture.width, picture.height) * scale)
          << picture.name;
    }
  }
}

}  // namespace
}  // namespace seedmote
