#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "json/JSONRepresentation.h"
#include "json/JSONValue.h"
#include "json/Log.h"
#include "json/YxJsonStreamWriter.h"
#include "json/YxJsonStreamWriterAccumulator.h"
#include "json/YxJsonWriter.h"
#include "json/tests/Support.h"

using namespace std::string_literals;

namespace seedmote::json::test {
namespace {

Value listOf(Value value) {
  return Value::array({std::move(value)});
}

// The text, or "! " and the message.
std::string write(ValueRef value, YxJsonWriter writer = {}) {
  const auto text = writer.stringWithObject(value);
  return text ? *text : "! " + writer.error();
}

TEST(Writer, Values) {
  struct Case {
    Value value;
    std::string text;
  };
  const double infinity = std::numeric_limits<double>::infinity();
  const std::vector<Case> cases = {
      {Value::null(), "null"},
      {Value::boolean(true), "true"},
      {Value::integer(-1), "-1"},
      {Value::integer(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808"},
      {Value::unsignedInteger(~std::uint64_t{0}), "18446744073709551615"},
      {Value::real(0.5), "0.5"},
      {Value::real(0.1), "0.10000000000000001"},
      {Value::real(1e300), "1.0000000000000001e+300"},
      {Value::real(-0.0), "-0"},
      {Value::decimal("1.50"), "1.5"},
      {Value::decimal("1e400"), "1E400"},
      {Value::string(""), "\"\""},
      {Value::string("a/b\n\t\"\\\x01\x1F\x7F"), R"("a/b\n\t\"\\\u0001\u001f)"s + "\x7F\""},
      {Value::string("\0\b\f\r\x0B"s), R"("\u0000\b\f\r\u000b")"},
      {Value::string("caf\u00e9 \U0001D11E"), "\"caf\u00e9 \U0001D11E\""},
      {Value::array({}), "[]"},
      {Value::dictionary({}), "{}"},
      {Value::foreign("Holder", [] { return Value::array({Value::integer(7)}); }), "[7]"},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(write(listOf(test.value)), "[" + test.text + "]");
    EXPECT_EQ(write(Value::dictionary({{"k", test.value}})), "{\"k\":" + test.text + "}");
  }
  EXPECT_EQ(write(Value::foreign("Holder", [] { return listOf(Value::null()); })), "[null]");
  const std::vector<Case> failures = {
      {listOf(Value::real(infinity)), "+Infinity is not a valid number in JSON"},
      {listOf(Value::real(-infinity)), "-Infinity is not a valid number in JSON"},
      {listOf(Value::decimal("NaN")), "NaN is not a valid number in JSON"},
      {listOf(Value::real(std::nan(""))), "NaN is not a valid number in JSON"},
      {listOf(Value::foreign("NSDate")), "JSON serialisation not supported for NSDate"},
      {Value::dictionaryWithKeys({{Value::integer(5), Value::null()}}), "JSON object key must be string: 5"},
      {Value::string("a"), "Not valid type for JSON"},
      {Value(), "Not valid type for JSON"},
      {Value::foreign("NSDate"), "Not valid type for JSON"},
      {listOf(Value::string("\xFF")), "A text is not valid UTF-8"},
  };
  for (const Case& test : failures) EXPECT_EQ(write(test.value), "! " + test.text);
}

TEST(Writer, IntegersOfEveryLength) {
  std::mt19937_64 random(5);
  for (int shift = 0; shift < 64; ++shift) {
    std::uint64_t power = 1;
    for (int i = 0; i < shift % 20; ++i) power *= 10;
    for (const std::uint64_t value : {power - 1, power, power + 1, random() >> shift}) {
      EXPECT_EQ(write(listOf(Value::unsignedInteger(value))), "[" + std::to_string(value) + "]");
      const auto negative = -static_cast<std::int64_t>(value >> 1);
      EXPECT_EQ(write(listOf(Value::integer(negative))), "[" + std::to_string(negative) + "]");
    }
  }
}

// An object that names itself as its proxy must not keep the writer for ever.
TEST(Writer, EndlessProxiesAreRefused) {
  Value self;
  self = Value::foreign("Mirror", [&self] { return self; });
  EXPECT_EQ(write(listOf(self)), "! JSON serialisation not supported for Mirror");
  EXPECT_EQ(write(self), "! Not valid type for JSON");
  self = {};
}

TEST(Writer, IndentsAndSorts) {
  YxJsonWriter readable;
  readable.setHumanReadable(true);
  const Value value = JSONValue(R"({"a":[1,2]})");
  EXPECT_EQ(write(value, readable), "{\n  \"a\": [\n    1,\n    2\n  ]\n}");
  EXPECT_EQ(write(JSONValue("{}"), readable), "{\n}");
  EXPECT_EQ(write(JSONValue(R"([{"b":{},"a":"x"},[]])"), readable),
            "[\n  {\n    \"b\": {\n    },\n    \"a\": \"x\"\n  },\n  [\n  ]\n]");
  YxJsonWriter sorted;
  sorted.setSortKeys(true);
  EXPECT_EQ(write(JSONValue(R"({"b":1,"a":{"d":2,"c":3},"c":4})"), sorted),
            R"({"a":{"c":3,"d":2},"b":1,"c":4})");
  EXPECT_EQ(write(JSONValue("{\"\uE000\":1,\"ab\":2,\"\U00010000\":3,\"a\":4,\"\uD7FF\":5,\"\":6}"), sorted),
            "{\"\":6,\"a\":4,\"ab\":2,\"\uD7FF\":5,\"\U00010000\":3,\"\uE000\":1}");
}

TEST(Writer, DepthLimit) {
  Value value = Value::array({});
  for (int i = 1; i < 32; ++i) value = listOf(value);
  EXPECT_EQ(write(value), std::string(32, '[') + std::string(32, ']'));
  value = listOf(value);
  EXPECT_EQ(write(value), "! Nested too deep");
  EXPECT_EQ(write(Value::dictionary({{"a", value}})), "! Nested too deep");
  for (int i = 33; i < 100000; ++i) value = listOf(value);
  YxJsonWriter unlimited;
  unlimited.setMaxDepth(0);
  EXPECT_EQ(write(value, unlimited), std::string(100000, '[') + std::string(100000, ']'));
}

TEST(Writer, FailuresAreReported) {
  static std::vector<std::string> logged;
  setLogFunction([](std::string_view line) { logged.emplace_back(line); });
  EXPECT_EQ(JSONRepresentation(Value::array({Value::null()})), "[null]");
  EXPECT_FALSE(JSONRepresentation(Value::null()));
  setLogFunction(nullptr);
  EXPECT_THAT(logged, testing::ElementsAre("-JSONRepresentation failed. Error is: Not valid type for JSON"));
  YxJsonWriter writer;
  std::optional<JsonError> report;
  EXPECT_FALSE(writer.stringWithObject(Value(), &report));
  ASSERT_TRUE(report);
  EXPECT_EQ(report->localizedDescription, "Not valid type for JSON");
  EXPECT_TRUE(writer.stringWithObject(Value::array({})));
  EXPECT_EQ(writer.error(), "");
}

TEST(StreamWriter, EventsAndTheirOrder) {
  YxJsonStreamWriterAccumulator out;
  YxJsonStreamWriter writer;
  writer.setDelegate(&out);
  EXPECT_TRUE(writer.writeObjectOpen());
  EXPECT_EQ(out.data(), "{") << "an event is with the delegate when it ends";
  EXPECT_FALSE(writer.writeNull());
  EXPECT_EQ(writer.error(), "JSON object key must be string");
  EXPECT_FALSE(writer.writeArrayOpen());
  EXPECT_FALSE(writer.writeArrayClose());
  EXPECT_FALSE(writer.writeNumber(Value::integer(1)));
  EXPECT_TRUE(writer.writeString("a"));
  EXPECT_TRUE(writer.writeArrayOpen());
  EXPECT_TRUE(writer.writeBool(true));
  EXPECT_TRUE(writer.writeNumber(Value::boolean(false)));
  EXPECT_TRUE(writer.writeValue(JSONValue(R"({"x":[]})")));
  EXPECT_FALSE(writer.writeNumber(Value::real(std::numeric_limits<double>::infinity())));
  EXPECT_EQ(out.data(), R"({"a":[true,false,{"x":[]},)") << "the separator stays";
  EXPECT_TRUE(writer.writeArrayClose());
  EXPECT_TRUE(writer.writeString("b\n"));
  EXPECT_TRUE(writer.writeString("b\n"));
  EXPECT_TRUE(writer.writeObjectClose());
  EXPECT_EQ(out.data(), R"({"a":[true,false,{"x":[]},],"b\n":"b\n"})");
  EXPECT_FALSE(writer.writeObjectOpen());
  EXPECT_EQ(writer.error(), "Stream is closed");
  EXPECT_FALSE(writer.writeString("c"));
  EXPECT_FALSE(writer.writeObjectClose());
  EXPECT_TRUE(writer.writeValue(Value::string("c"))) << "a string reports success in any case";
  EXPECT_EQ(out.data(), R"({"a":[true,false,{"x":[]},],"b\n":"b\n"})");
}

// Texts around the sizes at which copying, caching and the output buffer change their ways.
TEST(Writer, TextsOfEveryLengthSurvive) {
  std::vector<Value> texts;
  for (const std::size_t length :
       {1, 3, 7, 8, 9, 15, 16, 17, 31, 33, 4095, 4097, 16381, 16382, 16383, 16385, 40000}) {
    for (const std::size_t special : {std::size_t{0}, length / 2, length - 1}) {
      for (const char byte : {'"', '\n', 'x'}) {
        std::string text(length, 'a');
        text[special] = byte;
        texts.push_back(Value::string(text));
        texts.push_back(Value::string(text));
        texts.push_back(Value::dictionary({{text, Value::null()}}));
      }
    }
  }
  const Value all = Value::array(texts);
  const std::string written = write(all);
  EXPECT_EQ(written.find('\n'), std::string::npos);
  EXPECT_EQ(dump(JSONValue(written)), dump(all));
}

}  // namespace
}  // namespace seedmote::json::test
