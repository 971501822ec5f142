// Any value: what is written can be read, gives the same value, and is written alike again.
#include <string>
#include <utility>
#include <vector>

#include "fuzz/Source.h"
#include "fuzz/Target.h"
#include "json/YxJsonParser.h"
#include "json/YxJsonWriter.h"

namespace seedmote::fuzz {
namespace {

using json::Kind;
using json::Value;
using json::ValueRef;

constexpr int kDeepest = 40;  // beyond what is allowed

Value container(Source& source, int depth);

Value scalar(Source& source) {
  switch (source.byte() % 7) {
    case 0:
      return Value::null();
    case 1:
      return Value::boolean(source.byte() % 2 == 0);
    case 2:
      return Value::integer(source.integer());
    case 3:
      return Value::unsignedInteger(static_cast<std::uint64_t>(source.integer()));
    case 4:
      return Value::real(source.real());
    case 5:
      return Value::decimal(source.text());
    default:
      return Value::string(source.text());
  }
}

Value value(Source& source, int depth) {
  return depth < kDeepest && source.byte() % 3 == 0 ? container(source, depth) : scalar(source);
}

Value container(Source& source, int depth) {
  const std::uint8_t choice = source.byte();
  std::vector<Value> elements;
  std::vector<std::pair<std::string, Value>> entries;
  for (int count = choice / 4 % 8; count > 0 && !source.isEmpty(); --count) {
    if (choice % 4 > 1) {
      entries.emplace_back(source.text(), value(source, depth + 1));
    } else {
      elements.push_back(value(source, depth + 1));
    }
  }
  if (choice % 4 == 3) return Value::foreign("Proxy", [made = Value::dictionary(entries)] { return made; });
  return choice % 4 == 2 ? Value::dictionary(entries) : Value::array(elements);
}

// Short decimals have an exponent of 16 bits when they are read.
bool isFarOut(const std::string& number) {
  const std::size_t exponent = number.find('E');
  return exponent != std::string::npos && number.size() - exponent > 5;
}

void compare(ValueRef written, ValueRef read);

void compareEntries(ValueRef written, ValueRef read) {
  check(read.kind() == Kind::dictionary && read.count() == written.count(), "a dictionary comes back");
  for (const json::Entry entry : written.entries()) compare(entry.value, read[entry.key]);
}

void compareElements(ValueRef written, ValueRef read) {
  check(read.kind() == Kind::array && read.count() == written.count(), "an array comes back");
  for (std::size_t i = 0; i < written.count(); ++i) compare(written.at(i), read.at(i));
}

void compare(ValueRef written, ValueRef read) {
  switch (written.kind()) {
    case Kind::dictionary:
      return compareEntries(written, read);
    case Kind::array:
      return compareElements(written, read);
    case Kind::foreign: {
      const Value proxy = written.proxyForJson();
      return compare(proxy, read);
    }
    case Kind::real:
      return check(written.doubleValue() == read.doubleValue(), "a double comes back");
    default:
      if (isFarOut(written.description())) return;
      check(read.kind() == Kind::string || written.kind() != Kind::string, "a text comes back as one");
      checkEqual(written.description(), read.description(), "a value comes back");
  }
}

void writeAndRead(Source source) {
  const std::uint8_t options = source.byte();
  json::YxJsonWriter writer;
  writer.setSortKeys(options % 2 == 1);
  writer.setHumanReadable(options % 4 > 1);
  const Value given = container(source, 0);
  const std::optional<std::string> text = writer.stringWithObject(given);
  if (!text) return check(!writer.error().empty(), "a failure has its message");
  json::YxJsonParser parser;
  const Value read = parser.objectWithString(*text);
  checkEqual(parser.error(), "", "what was written is read");
  compare(given, read);
  const std::string again = writer.stringWithObject(read).value_or(writer.error());
  const std::string third = writer.stringWithObject(parser.objectWithString(again)).value_or(writer.error());
  checkEqual(again, third, "what was read is written alike");
}

}  // namespace
}  // namespace seedmote::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  seedmote::fuzz::writeAndRead(seedmote::fuzz::Source(seedmote::fuzz::textOf(data, size)));
  return 0;
}
