#include "client/RVUtility.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/core/Log.h"

namespace seedmote {
namespace {

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kSmallest = std::numeric_limits<std::int64_t>::min();

TEST(RVUtility, StatusOfOldDaemonsIsTranslatedAndOfNewOnesLeftAlone) {
  platform::LogRecorder log;
  const int known[][2]{{1, 1}, {2, 2}, {4, 4}, {8, 6}, {16, 0}};
  for (const int version : {13, 5, -1}) {
    for (const auto& [in, out] : known) EXPECT_EQ(RVUtility::changeTransStatus(in, version), out);
  }
  EXPECT_EQ(log.count("Error: unknown status\n"), 0);
  for (const int status : {0, 3, 5, 6, 32, -1}) EXPECT_EQ(RVUtility::changeTransStatus(status, 13), 0);
  EXPECT_EQ(log.count("Error: unknown status\n"), 6);
  for (const int status : {-1, 0, 3, 8, 99}) EXPECT_EQ(RVUtility::changeTransStatus(status, 14), status);
  EXPECT_EQ(log.count("Error: unknown status\n"), 6);
}

TEST(RVUtility, SizesStayInTheSmallerUnitAtAnExactPower) {
  const struct {
    std::int64_t bytes;
    const char* text;
  } cases[]{
      {kSmallest, "-9223372036854775808B"},
      {1024, "1024B"},
      {1025, "1.0KB"},
      {1536, "1.5KB"},
      {std::int64_t{1} << 20, "1024.0KB"},
      {(std::int64_t{1} << 20) + 1, "1.0MB"},
      {std::int64_t{1} << 30, "1024.0MB"},
      {(std::int64_t{1} << 30) + 1, "1.0GB"},
      {std::int64_t{1} << 40, "1024.0GB"},
      {(std::int64_t{1} << 40) + 1, "1.0TB"},
      {std::int64_t{1} << 50, "1024.0TB"},
      {(std::int64_t{1} << 50) + 1, "1.0PB"},
      {kLargest, "8192.0PB"},
  };
  for (const auto& c : cases) EXPECT_EQ(RVUtility::changeSizeFormat(c.bytes), c.text);
}

TEST(RVUtility, RemainingTimesAreWholeUnitsAndLogged) {
  const struct {
    std::int64_t seconds;
    const char* text;
  } cases[]{{-2, "-2s"},  {0, " s"},      {1, "1s"},     {60, "60s"},
            {61, "1m"},   {90, "2m"},     {150, "2m"},   {3600, "60m"},
            {3601, "1h"}, {86400, "24h"}, {86401, "1d"}, {kLargest, "106751991167301d"}};
  for (const auto& c : cases) {
    platform::LogRecorder log;
    EXPECT_EQ(RVUtility::changeETAFormat(c.seconds), c.text) << c.seconds;
    EXPECT_TRUE(log.contains("strSize = " + std::string(c.text) + "\n"));
  }
}

TEST(RVUtility, CumulativeTimesCountEveryUnit) {
  EXPECT_EQ(RVUtility::changeCumTimeFormat(90061), "1day 1hour 1min 1sec");
  EXPECT_EQ(RVUtility::changeCumTimeFormat(0), "0day 0hour 0min 0sec");
  EXPECT_EQ(RVUtility::changeCumTimeFormat(86399), "0day 23hour 59min 59sec");
  EXPECT_EQ(RVUtility::changeCumTimeFormat(-3661), "0day -1hour -1min -1sec");
}

TEST(RVUtility, Base64PadsAndTakesAnyByte) {
  EXPECT_EQ(RVUtility::Data2Base64(""), "");
  EXPECT_EQ(RVUtility::Data2Base64("M"), "TQ==");
  EXPECT_EQ(RVUtility::Data2Base64("Ma"), "TWE=");
  EXPECT_EQ(RVUtility::Data2Base64("Man"), "TWFu");
  EXPECT_EQ(RVUtility::Data2Base64(std::string("\0\xff\xfe", 3)), "AP/+");
  EXPECT_EQ(RVUtility::Data2Base64(std::string(300, 'x')).find('\n'), std::string::npos);
}

TEST(RVUtility, TrimmingKnowsUnicodeBlanksAndKeepsTheInside) {
  const struct {
    const char* text;
    const char* trimmed;
  } cases[]{{" \t\r\n a b \v\f", "a b"},
            {"\u00A0\u2003\u3000host\u2028\u0085", "host"},
            {" \u2009 ", ""},
            {"", ""},
            {"\u200Bx\u200B", "\u200Bx\u200B"},
            {" \xA0x\x85 ", "\xA0x\x85"}};
  for (const auto& c : cases) EXPECT_EQ(RVUtility::trimString(c.text), c.trimmed);
}

TEST(RVUtility, DumpsNameEveryEntryAndNoPassword) {
  platform::LogRecorder log;
  RVUtility::dumpDictionary({{"Title", "Password"},
                             {"Value", "geheim"},
                             {"ValueType", "PasswordBox"},
                             {"Order", platform::PropertyList::integer(4)}});
  RVUtility::dumpFrame({1.5, -20, 1024, 2.5});
  EXPECT_EQ(log.records(),
            (std::vector<std::string>{
                "========== Dump Dict ===========", "Order : 4", "Title : Password", "Value : ••••••••",
                "ValueType : PasswordBox", "================================", "frame.org.x =  2",
                "frame.org.y = -20", "frame.size.width  = 1024", "frame.size.height =  2"}));
}

}  // namespace
}  // namespace seedmote
