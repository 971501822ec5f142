#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "json/tests/ReadSupport.h"

namespace seedmote::json::test {
namespace {

// Long tokens in small pieces are taken up where they were left; the result must not differ.
TEST(Pieces, LongTokensInPieces) {
  const std::string ascii(9000, 'x');
  std::string mixed;
  for (int i = 0; i < 1000; ++i) mixed += "a\u00e9\U0001D11E\\n\\ud834\\udd1e";
  std::vector<std::string> texts = {"[\"" + ascii + "\"]",         "[\"" + mixed + "\"]",
                                    "[\"" + ascii + "\xE2\x82\"]", "[\"" + mixed + "\xFFzzzzz\\n\"]",
                                    "[\"" + mixed + "\\ud834\"]",  "[\"" + ascii + "\\x\"]",
                                    "[\"" + ascii + "\xE2\x28zz",  "{\"" + mixed + "\":[\"" + ascii + "\"]}"};
  const std::string digits(5000, '7');
  for (const std::string& number :
       {digits, "-" + digits, "0." + digits + "e" + digits, "1e-" + digits + "3",
        digits + "." + digits + "E+", digits + ".e5", digits + ".5.5", digits + "-", digits + "e+-5"}) {
    texts.push_back("{\"a\":" + number + ",\"b\":[\"text\",1,true]}");
  }
  // The key of the dictionary before is taken without scanning, also when a piece ended within it.
  const std::string key = "k" + std::string(6000, 'x');
  for (const std::string& second :
       {key, "\\u006b" + key.substr(1), key.substr(0, 5500) + "y" + key.substr(5501), key.substr(0, 4200)}) {
    texts.push_back("[{\"" + key + "\":\"one\",\"n\":1},{\"" + second + "\":\"two\",\"n\":2},{\"" + key +
                    "\":\"three\"}]");
  }
  std::mt19937 random(7);
  for (const std::string_view text : texts) {
    const std::string expected = readWhole(text);
    // Not EXPECT_EQ: it would print tens of thousands of bytes.
    for (const std::size_t size : {1, 2, 3, 7, 64, 1024, 4097}) {
      if (size == 1 && text.size() > 20000) continue;
      EXPECT_TRUE(readPieces(cutInto(text, size)) == expected) << text.substr(0, 20) << " by " << size;
    }
    for (int round = 0; round < 100; ++round) {
      std::size_t cut = random() % (text.size() - 1);
      const std::size_t change = text.find_first_not_of(text[cut], cut);  // where a long token ends, mostly
      if (round % 2 == 0) cut = std::min(change, text.size() - 9) + random() % 8;
      EXPECT_TRUE(readPieces({text.substr(0, cut), text.substr(cut)}) == expected) << "cut at " << cut;
      EXPECT_TRUE(readPieces({text.substr(0, cut), text.substr(cut, 1), text.substr(cut + 1)}) == expected)
          << text.substr(0, 20) << " cut before and behind byte " << cut;
    }
  }
  // Would take minutes if each piece had the number read from its start.
  const std::string endless = "[" + std::string(1000000, '7') + "]";
  EXPECT_TRUE(readPieces(cutInto(endless, 1)) == readWhole(endless));
}

}  // namespace
}  // namespace seedmote::json::test
