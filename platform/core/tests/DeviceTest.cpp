#include "platform/core/Device.h"

#include <gtest/gtest.h>

namespace seedmote::platform {
namespace {

TEST(Device, TheVersionIsTheNumberThatItsTextBeginsWith) {
  const struct {
    const char* text;
    float number;
  } cases[]{{"7.0", 7.0F}, {"7.0.2", 7.0F}, {"6.1.3", 6.1F}, {" 10", 10.0F}, {"6.99999999", 7.0F},
            {"beta 8", 0}, {"", 0},         {"nan", 0},      {"inf", 0},     {"7,5", 7.0F}};
  for (const auto& c : cases) {
    EXPECT_EQ(Device(Idiom::phone, c.text, "here").systemVersionNumber(), c.number) << c.text;
  }
}

TEST(Device, ScreensUnderSixHundredPointsArePhones) {
  EXPECT_EQ(Device::idiomForScreen(599.5), Idiom::phone);
  EXPECT_EQ(Device::idiomForScreen(600), Idiom::tablet);
}

}  // namespace
}  // namespace seedmote::platform
