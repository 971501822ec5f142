#include "platform/core/Utf8.h"

#include <gtest/gtest.h>

namespace seedmote::platform {
namespace {

TEST(Utf8, WhatIsNoUnicodeTextIsRefused) {
  for (const char* good : {"", "plain", "größe 日本 \xF0\x9F\x98\x80", "\xEF\xBF\xBF", "\xF4\x8F\xBF\xBF"}) {
    EXPECT_TRUE(isValidUtf8(good)) << good;
  }
  for (const char* bad : {"\xFF", "\x80", "a long enough text, then \xC3", "\xC0\xAF", "\xE0\x80\xAF",
                          "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE6\x97", "\xF0\x80\x80\xAF"}) {
    EXPECT_FALSE(isValidUtf8(bad)) << bad;
  }
}

}  // namespace
}  // namespace seedmote::platform
