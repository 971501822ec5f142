#include <gtest/gtest.h>

#include <string>

#include "json/JSONValue.h"

namespace seedmote::json {
namespace {

// 2.5 MiB: three pieces.
std::string longArray() {
  std::string text = "[0";
  while (text.size() < (std::size_t{5} << 19)) text += R"(,{"name":"größe","n":[1,2.5e3,true,null]})";
  return text;
}

TEST(GoOn, ALargeTextIsReadInPiecesAsInOne) {
  const std::string text = longArray();
  for (const std::string& whole :
       {text + "]", text + "]   \n", text + "] x", text, text + "}", text + "\xff"}) {
    std::string oneError;
    std::string piecesError;
    const Value one = JSONValue(whole, oneError);
    const Value pieces = JSONValue(whole, piecesError, [](std::size_t) { return true; });
    EXPECT_EQ(piecesError, oneError);
    EXPECT_EQ(pieces.isAbsent(), one.isAbsent());
    EXPECT_EQ(pieces->description(), one->description());
  }
}

TEST(GoOn, IsGivenUpByMemoryAndAtWish) {
  std::string error;
  std::size_t most = 0;
  EXPECT_TRUE(JSONValue(longArray() + "]", error, [&most](std::size_t bytes) {
                most = std::max(most, bytes);
                return bytes < (std::size_t{1} << 20);
              }).isAbsent());
  EXPECT_EQ(error, "Reading was given up");
  EXPECT_GT(most, std::size_t{1} << 20);
  EXPECT_LT(most, std::size_t{16} << 20);
}

}  // namespace
}  // namespace seedmote::json
