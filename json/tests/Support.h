#pragma once

#include <string>
#include <string_view>

#include "json/Value.h"
#include "json/YxJsonStreamParser.h"

namespace seedmote::json::test {

// A value with its kinds: i and u before integers, d before decimals, r before reals, texts in quotes.
inline std::string dump(ValueRef value) {
  std::string text;
  switch (value.kind()) {
    case Kind::array:
      for (const ValueRef element : value.elements())
        text.append(text.empty() ? "" : ",").append(dump(element));
      return "[" + text + "]";
    case Kind::dictionary:
      for (const Entry& entry : value.entries()) {
        text.append(text.empty() ? "" : ",").append(entry.key).append("=").append(dump(entry.value));
      }
      return "{" + text + "}";
    case Kind::boolean:
      return value.boolValue() ? "true" : "false";
    case Kind::signedInteger:
      return std::string("i") + value.description();
    case Kind::unsignedInteger:
      return std::string("u") + value.description();
    case Kind::decimal:
      return std::string("d") + value.description();
    case Kind::real:
      return std::string("r") + value.description();
    case Kind::string:
      return std::string("'") + value.description() + "'";
    default:
      return value.description();
  }
}

// Records the events as one line.
class EventRecorder final : public YxJsonStreamParserDelegate {
 public:
  std::string events;

  void parserFoundObjectStart(YxJsonStreamParserBase&) override { events += "{ "; }
  void foundObjectKey(YxJsonStreamParserBase&, std::string_view key) override {
    events.append("key:").append(key).append(" ");
  }
  void parserFoundObjectEnd(YxJsonStreamParserBase& parser) override { end("}", parser); }
  void parserFoundArrayStart(YxJsonStreamParserBase&) override { events += "[ "; }
  void parserFoundArrayEnd(YxJsonStreamParserBase& parser) override { end("]", parser); }
  void foundBoolean(YxJsonStreamParserBase&, bool value) override { events += value ? "true " : "false "; }
  void parserFoundNull(YxJsonStreamParserBase&) override { events += "null "; }
  void foundNumber(YxJsonStreamParserBase&, const YxJsonNumber& number) override {
    // Only a long number has its text; what an earlier one left would dangle.
    events.append("number:").append(Value::number(number)->description()).append(number.text).append(" ");
  }
  void foundString(YxJsonStreamParserBase&, std::string_view text) override {
    events.append("string:").append(text).append(" ");
  }

 private:
  // An end is told once the parser has moved on.
  void end(const char* bracket, YxJsonStreamParserBase& parser) {
    events.append(bracket).append("<").append(parser.state()->name()).append("> ");
  }
};

}  // namespace seedmote::json::test
