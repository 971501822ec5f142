#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "json/JSONValue.h"
#include "json/Log.h"
#include "json/YxJsonParser.h"
#include "json/YxJsonStreamParser.h"
#include "json/YxJsonStreamParserAdapter.h"
#include "json/tests/ReadSupport.h"
#include "json/tests/Support.h"

using namespace std::string_literals;

namespace seedmote::json::test {
namespace {

using Status = YxJsonStreamParserStatus;

void expectSameInPieces(std::string_view text, const std::string& expected) {
  for (std::size_t cut = 0; cut <= text.size(); ++cut) {
    ASSERT_EQ(readPieces({text.substr(0, cut), text.substr(cut)}), expected) << text << " cut at " << cut;
  }
  ASSERT_EQ(readPieces(cutInto(text, 1)), expected) << text << " byte by byte";
}

struct Vector {
  std::string text;
  std::string expected;  // a dump, or "! " and the message
};

void expectAll(const std::vector<Vector>& vectors) {
  for (const auto& [text, expected] : vectors) {
    EXPECT_EQ(readWhole(text), expected) << text;
    if (!text.empty()) expectSameInPieces(text, expected);
  }
}

std::string nested(std::size_t depth) {
  return std::string(depth, '[') + std::string(depth, ']');
}

TEST(Reader, Structure) {
  expectAll({
      {"[]", "[]"},
      {"{}", "{}"},
      {" \t\r\n[ 1 , 2 ]\n ", "[u1,u2]"},
      {R"({"a":1,"b":[true,false,null,{}],"c":{"d":"e"}})", "{a=u1,b=[true,false,<null>,{}],c={d='e'}}"},
      {R"({"a":1,"a":2})", "{a=u2}"},
      {R"({"a":1,"b":2,"a":{"a":1,"a":[3]},"b":4})", "{a={a=[u3]},b=u4}"},
      {R"([{"a":1,"b":2},{"a":3,"b":4},{"a":5},{"a":6,"c":7},{"b":8,"a":9},{},{"a":1,"b":2,"c":3},{"a":1,"b":2}])",
       "[{a=u1,b=u2},{a=u3,b=u4},{a=u5},{a=u6,c=u7},{b=u8,a=u9},{},{a=u1,b=u2,c=u3},{a=u1,b=u2}]"},
      {R"([{"a":1,"b":2},{"a":1,"a":2},{"a":3,"b":{"a":1,"b":2}},{"\u0061":4,"b" : 5}])",
       "[{a=u1,b=u2},{a=u2},{a=u3,b={a=u1,b=u2}},{a=u4,b=u5}]"},
      {R"([{"a\"b":1,"":2},{"a\"b":3,"":4},{"a":5,"":6}])", "[{a\"b=u1,=u2},{a\"b=u3,=u4},{a=u5,=u6}]"},
      {R"([{"a key of more than sixteen bytes":1},{"a key of more than sixteen bytes":2},)"
       R"({"a key of more than sixteen bytez":3}])",
       "[{a key of more than sixteen bytes=u1},{a key of more than sixteen bytes=u2},"
       "{a key of more than sixteen bytez=u3}]"},
      {nested(32), nested(32)},
      {nested(33), "! Input depth exceeds max depth of 32"},
  });
}

TEST(Reader, MisplacedTokens) {
  expectAll({
      {"", "! Input was 'nil'"},
      {"\"a\"", "! Token 'string' not expected before outer-most array or object"},
      {"1 ", "! Token 'number' not expected before outer-most array or object"},
      {"true", "! Token 'boolean' not expected before outer-most array or object"},
      {"1", "! Unexpected end of input"},
      {" ", "! Unexpected end of input"},
      {"[1,]", "! Token 'end of array' not expected as array value"},
      {"[,1]", "! Token 'value separator' not expected at array start"},
      {"[1 2]", "! Token 'number' not expected after array value"},
      {"[1:2]", "! Token 'key-value separator' not expected after array value"},
      {"[}", "! Token 'end of object' not expected at array start"},
      {"{]", "! Token 'end of array' not expected at beginning of object"},
      {R"({"a":1,})", "! Token 'end of object' not expected in place of object key"},
      {"{1:2}", "! Token 'number' not expected at beginning of object"},
      {R"({"a" "b"})", "! Token 'string' not expected after object key"},
      {R"({"a":})", "! Token 'end of object' not expected as object value"},
      {R"({"a":1 {)", "! Token 'start of object' not expected after object value"},
      {R"([{"a":1},{"a"}])", "! Token 'end of object' not expected after object key"},
      {"[1] [2]", "! Token 'start of array' not expected after outer-most array or object"},
      {"[1]x", "! Illegal start of token [x]"},
      {"[1", "! Unexpected end of input"},
  });
}

TEST(Reader, IllegalTokens) {
  expectAll({
      {"[tr", "! Unexpected end of input"},
      {"[tx]", "! Unexpected end of input"},
      {"[trux]", "! Expected 'true' after initial 't'"},
      {"[fals ]", "! Expected 'false' after initial 'f'"},
      {"[nil ]", "! Expected 'null' after initial 'n'"},
      {"[truex]", "! Illegal start of token [x]"},
      {"[.5]", "! Illegal start of token [.]"},
      {"[\x80]", "! Illegal start of token [\u0080]"},
      {"\xEF\xBB\xBF[]", "! Illegal start of token [\u00EF]"},
      {"[\xFF]", "! Illegal start of token [\u00FF]"},
      {"[\0]"s, "! Illegal start of token [\0]"s},
      {"[\x0B]", "! Illegal start of token [\x0B]"},
  });
}

TEST(Reader, Numbers) {
  const std::string zeros(130, '0');
  expectAll({
      {"[0]", "[u0]"},
      {"[-0]", "[i0]"},
      {"[999999999999999999]", "[u999999999999999999]"},
      {"[-999999999999999999]", "[i-999999999999999999]"},
      {"[1000000000000000000]", "[d1000000000000000000]"},
      {"[9223372036854775807,-9223372036854775808]", "[d9223372036854775807,d-9223372036854775808]"},
      {"[18446744073709551616]", "[d18446744073709551616]"},
      {"[1.5,1.50,-.5,-0.0,0.4000,100e-2]", "[d1.5,d1.5,d-0.5,d0,d0.4,d1]"},
      {"[1e2,1E+2,1e-2,5.0]", "[d100,d100,d0.01,d5]"},
      {"[1e127,1e-128]", "[d1" + std::string(127, '0') + ",d0." + std::string(127, '0') + "1]"},
      {"[1e128,1e-129,1.5e400]", "[d1E128,d1E-129,d15E399]"},
      {"[1e32767,1e32768,1e65536,1e-32769]", "[d1E32767,d1E-32768,d1,d1E32767]"},
      {"[0." + zeros + "12345678901234567890]", "[d1234567890123456789E-149]"},
      {"[1" + zeros + "]", "[d1E130]"},
      {"[0.0000000000000000000,-0.0000000000000000000]", "[d0,d0]"},
      {"[1234567890123456789e99999]", "[d1234567890123456789E99999]"},
      {"[01]", "! Leading zero is illegal in number"},
      {"[-00]", "! Leading zero is illegal in number"},
      {"[+1]", "! Leading + is illegal in number"},
      {"[-]", "! No digits after initial minus"},
      {"[-a]", "! No digits after initial minus"},
      {"[1.]", "! No digits after decimal point"},
      {"[-.e5]", "! No digits after decimal point"},
      {"[1e]", "! No digits in exponent"},
      {"[1e+-5]", "! No digits in exponent"},
      {"[1.5", "! Unexpected end of input"},
  });
}

TEST(Reader, Strings) {
  expectAll({
      {R"([""])", "['']"},
      {R"(["\"\\\/\b\f\n\r\t"])", "['\"\\/\b\f\n\r\t']"},
      {R"(["\u00e9\u00E9\u20ac\u0000x"])", "['\u00e9\u00e9\u20ac\0x']"s},
      {R"(["a\ud834\udd1eb"])", "['a\U0001D11Eb']"},
      {"[\"plain text of more than thirty-two bytes, \u00e9\u20ac\U0001D11E in it\"]",
       "['plain text of more than thirty-two bytes, \u00e9\u20ac\U0001D11E in it']"},
      {"[\"\x7F\U0010FFFF\u07FF\uD7FF\uE000\"]", "['\x7F\U0010FFFF\u07FF\uD7FF\uE000']"},
      {R"(["\u1f600"])", "['\u1f600']"},
      {R"(["\x"])", "! Illegal escape character"},
      {R"(["\u12g4"])", "! Invalid hex quad"},
      {R"(["\udc00"])", "! Invalid high character in surrogate pair"},
      {R"(["\ud834abcdef"])", "! Missing low character in surrogate pair"},
      {R"(["\ud834\n12345"])", "! Missing low character in surrogate pair"},
      {R"(["\ud834\u12g4"])", "! Missing low character in surrogate pair"},
      {R"(["\ud834\u0041"])", "! Invalid low character in surrogate pair"},
      {R"(["\ud834\ue000"])", "! Invalid low character in surrogate pair"},
      {R"(["\ud834abc)", "! Unexpected end of input"},
      {R"(["\ud834"])", "! Unexpected end of input"},
      {R"(["\u12)", "! Unexpected end of input"},
      {R"(["\)", "! Unexpected end of input"},
      {"[\"a\tb\"]", "! Unescaped control character [0x09]"},
      {"[\"a\x1F", "! Unescaped control character [0x1F]"},
      {"[\"a\0\"]"s, "! Unescaped control character [0x00]"},
  });
}

// Whether a fragment is UTF-8 shows at its stopping byte, not before; an escape ends a fragment.
TEST(Reader, BrokenUnicode) {
  const std::string broken = "! Broken Unicode encoding";
  for (const std::string bytes : {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC3", "\xE0\x9F\xBF",
                                  "\xED\xA0\x80", "\xE2\x82", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
                                  "\xF5\x80\x80\x80", "\xFF", "\xC3(", "\xE2\x82(", "\xF0\x9D\x84"}) {
    expectAll({{"[\"abc" + bytes + "def\"]", broken},
               {"[\"" + bytes + "\"]", broken},
               {"[\"" + bytes + "\\n\"]", broken},
               {"[\"" + bytes + "\x01", broken},
               {"{\"" + bytes + "\":1}", broken},
               {"[\"abc" + bytes, "! Unexpected end of input"}});
  }
  expectAll({{"[\"\xC3\\n\xA9\"]", broken}, {"[\"\\n\xE2\x82\"]", broken}});
}

TEST(Reader, DepthLimit) {
  for (const std::size_t limit : {0, 1, 2, 100}) {
    YxJsonParser parser;
    parser.setMaxDepth(limit);
    EXPECT_TRUE(parser.objectWithString(nested(limit + 1)).isAbsent());
    EXPECT_EQ(parser.error(), "Input depth exceeds max depth of " + std::to_string(limit));
    EXPECT_EQ(parser.objectWithString(nested(limit)).isAbsent(), limit == 0);
  }
  YxJsonParser deep;
  deep.setMaxDepth(2000000);
  const Value value = deep.objectWithString(nested(1000000));
  EXPECT_EQ(value->count(), 1u);
  EXPECT_EQ(value->description(), nested(1000000));
}

// Keeps all top-level values as text.
class Collector final : public YxJsonStreamParserAdapterDelegate {
 public:
  void foundArray(YxJsonStreamParserBase&, Value array) override { values.push_back("array " + dump(array)); }
  void foundObject(YxJsonStreamParserBase&, Value object) override { values.push_back(dump(object)); }
  std::vector<std::string> values;
};

std::vector<std::string> collect(std::string_view text, std::size_t levelsToSkip, bool many) {
  Collector collector;
  YxJsonStreamParserAdapter adapter;
  adapter.setDelegate(&collector);
  adapter.setLevelsToSkip(levelsToSkip);
  YxJsonStreamParser<YxJsonStreamParserAdapter> parser;
  parser.setDelegate(&adapter);
  parser.setSupportMultipleDocuments(many);
  Status status = Status::YxJsonStreamParserComplete;
  for (const char& byte : text) status = parser.parse({&byte, 1});
  EXPECT_EQ(status, many ? Status::YxJsonStreamParserWaitingForData : Status::YxJsonStreamParserComplete);
  return collector.values;
}

TEST(Reader, ManyDocumentsAndSkippedLevels) {
  using testing::ElementsAre;
  EXPECT_THAT(collect(R"([1][{"a":2}]{"a":[]} {"a":{}})", 0, true),
              ElementsAre("array [u1]", "array [{a=u2}]", "{a=[]}", "{a={}}"));
  EXPECT_THAT(collect(R"([1,"a",[2],{"b":3},null,true])", 1, false),
              ElementsAre("u1", "'a'", "array [u2]", "{b=u3}", "<null>", "true"));
  EXPECT_THAT(collect(R"({"a":1,"b":{"c":{"d":2}},"e":[3]})", 1, false),
              ElementsAre("u1", "{c={d=u2}}", "array [u3]"));
  EXPECT_THAT(collect(R"({"a":[{"b":[4]},5],"c":6})", 2, false), ElementsAre("{b=[u4]}", "u5", "u6"));
}

TEST(Reader, FailuresAreReported) {
  static std::vector<std::string> logged;
  setLogFunction([](std::string_view line) { logged.emplace_back(line); });
  std::string error = "untouched";
  EXPECT_EQ(dump(JSONValue("[1]", error)), "[u1]");
  EXPECT_EQ(error, "untouched");
  EXPECT_TRUE(JSONValue("[1", error).isAbsent());
  EXPECT_EQ(error, "Unexpected end of input");
  EXPECT_TRUE(JSONValue("[x]").isAbsent());
  setLogFunction(nullptr);
  EXPECT_THAT(logged, testing::ElementsAre("-JSONValue failed. Error is: Unexpected end of input",
                                           "-JSONValue failed. Error is: Illegal start of token [x]"));
  YxJsonParser parser;
  std::optional<JsonError> report;
  EXPECT_TRUE(parser.objectWithString("{", &report).isAbsent());
  ASSERT_TRUE(report);
  EXPECT_EQ(report->code, 0);
  EXPECT_EQ(report->localizedDescription, "Unexpected end of input");
  EXPECT_FALSE(parser.objectWithString("{}").isAbsent());
  EXPECT_EQ(parser.error(), "Unexpected end of input") << "a success keeps the earlier message";
}

}  // namespace
}  // namespace seedmote::json::test
