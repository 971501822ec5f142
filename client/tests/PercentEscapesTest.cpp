#include "client/PercentEscapes.h"

#include <gtest/gtest.h>

namespace seedmote {
namespace {

TEST(PercentEscapes, EscapeWhatNoUrlMayHoldAndNothingTwice) {
  const struct {
    std::string_view text;
    const char* escaped;
  } cases[]{
      {"https://anna:x@[fd00::1]:80/a_(b)~!*'.torrent?q=1&r=$,;+", nullptr},
      {"magnet:?xt=urn:btih:0123&dn=a b&tr=http%3A%2f%2Ftracker",
       "magnet:?xt=urn:btih:0123&dn=a%20b&tr=http%3A%2f%2Ftracker"},
      {"100% of %4 %zz%", "100%25%20of%20%254%20%25zz%25"},
      {"<br>\"{}|\\^`#", "%3Cbr%3E%22%7B%7D%7C%5C%5E%60%23"},
      {"\xC3\xA9\xF0\x9F\x8C\xB1\n\x7F", "%C3%A9%F0%9F%8C%B1%0A%7F"},
      {std::string_view("a\0b", 3), "a%00b"},
  };
  for (const auto& [text, escaped] : cases) {
    EXPECT_EQ(addingPercentEscapes(text), escaped != nullptr ? escaped : text);
  }
}

}  // namespace
}  // namespace seedmote
