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

// Whatever a text is made of, cutting it changes nothing; and what is read twice is the same.
TEST(Pieces, DamagedTextsInPieces) {
  const std::string good =
      R"({"arguments":{"torrents":[{"id":1,"name":"caf\u00e9 \ud834\udd1e","percentDone":0.4000,"done":true},)"
      "{\"id\":-20,\"name\":\"\u00e9\u20ac\U0001D11E plain text that fills more than sixteen "
      "bytes\",\"percentDone\":1e-3,"
      R"("done":null}, {"id":12345678901234567890,"name":"","percentDone":[{},[]],"more":false}]},"id":"x"} )";
  ASSERT_NE(readWhole(good)[0], '!');
  std::mt19937 random(7);
  const std::string_view pool = "{}[],:\"\\u0019+-.eEtfn \n\x80\xC3\xE2\xFF\x01";
  for (int round = 0; round < 4000; ++round) {
    std::string text = good;
    for (std::size_t damage = 1 + random() % 2; damage > 0; --damage) {
      const std::size_t at = random() % text.size();
      if (random() % 3 == 0) {
        text.erase(at, 1 + random() % 4);
      } else {
        text[at] = pool[random() % pool.size()];
      }
    }
    const std::string expected = readWhole(text);
    const std::string_view view = text;
    const std::size_t first = random() % text.size();
    const std::size_t second = first + random() % (text.size() - first);
    ASSERT_EQ(readPieces({view.substr(0, first), view.substr(first, second - first), view.substr(second)}),
              expected)
        << text << " cut at " << first << " and " << second;
  }
}

}  // namespace
}  // namespace seedmote::json::test
