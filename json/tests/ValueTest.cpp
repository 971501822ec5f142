#include "json/Value.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "json/JSONValue.h"
#include "json/tests/Support.h"

namespace seedmote::json::test {
namespace {

Value element(const std::string& token) {
  return JSONValue("[" + token + "]");
}

TEST(Value, NumbersAreReadLeniently) {
  struct Case {
    std::string token;
    std::int32_t i;
    std::int64_t l;
    double d;
    bool b;
  };
  constexpr auto most32 = std::numeric_limits<std::int32_t>::max();
  constexpr auto least32 = std::numeric_limits<std::int32_t>::min();
  constexpr auto most64 = std::numeric_limits<std::int64_t>::max();
  constexpr auto least64 = std::numeric_limits<std::int64_t>::min();
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const Case cases[] = {
      {"0", 0, 0, 0, false},
      {"-7", -7, -7, -7, true},
      {"5000000007", 705032711, 5000000007, 5000000007.0, true},
      {"2147483648", least32, 2147483648, 2147483648.0, true},
      {"2.9", 2, 2, 2.9, true},
      {"0.4000", 0, 0, 0.4, true},
      {"0.0000", 0, 0, 0, false},
      {"2147483647.5", most32, 2147483647, 2147483647.5, true},
      {"-1e10", least32, -10000000000, -1e10, true},
      {"9223372036854775807", most32, most64, 9223372036854775807.0, true},
      {"-9223372036854775808", least32, least64, -9223372036854775808.0, true},
      {"18446744073709551615", most32, most64, 18446744073709551615.0, true},
      {"1e400", most32, most64, infinity, true},
      {"-1e400", least32, least64, -infinity, true},
      {"1e-400", 0, 0, 0, true},
      {"0.1234567890123456789012345", 0, 0, 0.1234567890123456789012345, true},
      {"123456789012345678e-10", 12345678, 12345678, 12345678.9012345678, true},
      {"true", 1, 1, 1, true},
      {"false", 0, 0, 0, false},
      {"null", 0, 0, 0, false},
      {"[5]", 0, 0, 0, false},
      {"\"12.75abc\"", 12, 12, 12.75, true},
      {"\" -3\"", -3, -3, -3, true},
      {"\"99999999999999999999\"", most32, most64, 1e20, true},
      {"\"abc5\"", 0, 0, 0, false},
      {"\"inf\"", 0, 0, 0, false},
      {"\"-\"", 0, 0, 0, false},
      {"\"\"", 0, 0, 0, false},
  };
  for (const Case& test : cases) {
    const Value list = element(test.token);
    const ValueRef value = list->at(0);
    EXPECT_EQ(value.intValue(), test.i) << test.token;
    EXPECT_EQ(value.longLongValue(), test.l) << test.token;
    EXPECT_EQ(value.doubleValue(), test.d) << test.token;
    EXPECT_EQ(value.floatValue(), static_cast<float>(test.d)) << test.token;
    EXPECT_EQ(value.boolValue(), test.b) << test.token;
  }
  for (const Value& value :
       {Value(), Value::real(std::nan("")), Value::decimal("no number"), Value::foreign("NSDate")}) {
    EXPECT_EQ(value->intValue(), 0);
    EXPECT_EQ(value->longLongValue(), 0);
    EXPECT_EQ(value->doubleValue(), 0);
    EXPECT_FALSE(value->boolValue());
  }
  EXPECT_EQ(element("9007199791611905")->at(0).floatValue(), 9007200328482816.0f) << "rounded once";
  EXPECT_EQ(element("-9007199791611905")->at(0).floatValue(), -9007200328482816.0f);
  EXPECT_EQ(Value::unsignedInteger(~std::uint64_t{0})->longLongValue(), -1);
  EXPECT_EQ(Value::real(-1e300)->longLongValue(), least64);
  EXPECT_EQ(Value::real(9.3e18)->longLongValue(), most64);
  EXPECT_EQ(Value::real(-2.9)->intValue(), -2);
}

TEST(Value, OnlyWholeIntegersAreExact) {
  EXPECT_EQ(element("5")->at(0).exactInteger(), 5);
  EXPECT_EQ(element("-5")->at(0).exactInteger(), -5);
  EXPECT_EQ(Value::integer(std::numeric_limits<std::int64_t>::min())->exactInteger(),
            std::numeric_limits<std::int64_t>::min());
  for (const char* token :
       {"5.0", "5e0", "2.5", "1e400", "9223372036854775807", "true", "\"5\"", "null", "[5]"}) {
    EXPECT_FALSE(element(token)->at(0).exactInteger()) << token;
    EXPECT_FALSE(element(token)->at(0).isInteger()) << token;
  }
  EXPECT_FALSE(Value::unsignedInteger(std::uint64_t{1} << 63)->exactInteger());
  EXPECT_FALSE(ValueRef().exactInteger());
}

TEST(Value, WhatIsNotThereIsAbsent) {
  const Value value = JSONValue(R"({"list":[1,{"a":"b"}],"text":"x","zero":0})");
  EXPECT_EQ(value["list"].at(1)["a"].text(), "b");
  EXPECT_TRUE(value["zero"]);
  EXPECT_FALSE(value["none"]);
  EXPECT_TRUE(value["text"]["a"]["b"].isAbsent());
  EXPECT_FALSE(value["list"].text());
  EXPECT_EQ(value["text"].count() + value["none"].count(), 0u);
  EXPECT_TRUE(value["text"].elements().empty());
  EXPECT_TRUE(value["list"].entries().empty());
  EXPECT_THROW(value["list"].at(2), std::out_of_range);
  EXPECT_THROW(value["text"].at(0), std::out_of_range);
  EXPECT_THROW(value["none"].at(0), std::out_of_range);
  EXPECT_EQ(value["none"].description(), "(null)");
  EXPECT_EQ(value->description(), R"({"list":[1,{"a":"b"}],"text":"x","zero":0})");
}

// Beyond a few keys a dictionary is searched another way, and doubled keys must not confuse it.
TEST(Value, LargeDictionaries) {
  for (const int count : {15, 16, 17, 1000, 100000}) {
    std::string text = "{";
    for (int i = 0; i < count; ++i) text += "\"key" + std::to_string(i) + "\":" + std::to_string(i) + ",";
    text += R"("key7":"later","key0":"later"})";
    const Value value = JSONValue(text);
    ASSERT_EQ(value->count(), static_cast<std::size_t>(count));
    for (int i = 1; i < count; ++i) {
      if (i == 7) continue;
      ASSERT_EQ(value["key" + std::to_string(i)].exactInteger(), i);
    }
    EXPECT_EQ(value["key0"].text(), "later");
    EXPECT_EQ(value["key7"].text(), "later");
    EXPECT_FALSE(value["key" + std::to_string(count)]);
    EXPECT_EQ((*value->entries().begin()).key, "key0");
  }
}

TEST(Value, BuildersKeepWhatTheyAreGiven) {
  const Value shared = JSONValue(R"([{"deep":[1.5]}])");
  Value built =
      Value::dictionary({{"b", Value::array({Value::integer(-1), shared, Value(), Value::boolean(true)})},
                         {"a", shared.share(shared->at(0)["deep"])},
                         {"b", Value::string("later")},
                         {"c", Value::array({shared.share(shared->at(0)), Value::decimal("1e400")})}});
  EXPECT_EQ(dump(built), "{b='later',a=[d1.5],c=[{deep=[d1.5]},d1E400]}");
  built = Value::array({built, built});
  EXPECT_EQ(built->at(1)["a"].at(0).description(), "1.5");
  const Value odd =
      Value::dictionaryWithKeys({{Value::string("a"), Value::null()}, {Value::integer(5), Value::null()}});
  EXPECT_EQ(odd->entries().size(), 2u);
  EXPECT_TRUE(odd["a"]);
  EXPECT_FALSE(odd["5"]) << "the key is a number, not its text";
}

// Each value holds the one before it: to take such a chain down must not need a stack of its length.
TEST(Value, LongChainsOfBuiltValues) {
  Value chain = Value::null();
  for (int i = 0; i < 200000; ++i) chain = Value::array({chain});
  EXPECT_EQ(chain->count(), 1u);
}

TEST(Value, PartsOutliveTheWhole) {
  Value part;
  {
    const Value whole = JSONValue(R"({"torrents":[{"name":"a long enough name to lie in the tree"}]})");
    part = whole.share(whole["torrents"].at(0));
    EXPECT_TRUE(whole.share(whole["none"]).isAbsent());
  }
  EXPECT_EQ(part["name"].text(), "a long enough name to lie in the tree");
}

}  // namespace
}  // namespace seedmote::json::test
