// Whole answers of HTTP whose text is not what a daemon says.
#include <algorithm>
#include <iterator>

#include "tests/faults/Fault.h"

namespace seedmote::faults {
namespace {

using namespace sentences;

std::string saying(const std::string& torrents) {
  return R"({"arguments":{"torrents":)" + torrents + R"(},"result":"success"})";
}

// No JSON of a daemon's shape; `why` is what the reader says.
Fault text(std::string name, const std::string& body, std::string sentence) {
  return {.name = std::move(name),
          .reply = always(replies::json(body)),
          .list = std::move(sentence),
          .atFirst = body.starts_with('{') ? kNotAsDaemon : ""};
}

Fault unread(std::string name, const std::string& body, const std::string& why) {
  return text(std::move(name), body, unreadable(why));
}

Fault cutShort(std::string name, const std::string& body) {
  return unread(std::move(name), body, "Unexpected end of input");
}

// JSON, but no torrents in it.
Fault answered(std::string name, const std::string& body, std::string result = "success",
               const std::string& why = "it holds no torrents") {
  Fault fault = unread(std::move(name), body, why);
  fault.kind = Kind::answered;
  fault.result = std::move(result);
  return fault;
}

// A list as a daemon has none, but a list.
Fault listed(std::string name, std::function<std::string()> torrents) {
  return {.name = std::move(name),
          .kind = Kind::listed,
          .reply = [torrents = std::move(torrents)](World&) { return replies::json(saying(torrents())); },
          .atFirst = kNotAsDaemon,
          .result = "success"};
}
Fault listed(std::string name, std::string torrents) {
  return listed(std::move(name), [torrents = std::move(torrents)] { return torrents; });
}

std::string times(int count, const std::string& one) {
  std::string all;
  all.reserve(one.size() * static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) all += one;
  return all;
}

std::string wide(const std::string& letters) {  // ASCII as UTF-16
  std::string text = "\xff\xfe";
  for (const char letter : letters) text += {letter, '\0'};
  return text;
}

std::vector<Fault> notJson() {
  return {
      text("no text", "", kNotTransmission),
      text("blanks", "   \n", kNotTransmission),
      text("a number", "17", kNotTransmission),
      text("null", "null", kNotTransmission),
      text("a list", "[]", kNotTransmission),
      text("a byte order mark", "\xef\xbb\xbf" + saying("[]"), kNotTransmission),
      text("UTF-16", wide(saying("[]")), kNotTransmission),
      unread("bytes that are no UTF-8", "{\"arguments\":\"\xff\"}", "there is no text"),
      unread("a NUL", std::string("{\"a\":1,\0\"b\":2}", 14), std::string("Illegal start of token [\0]", 26)),
      unread("a NUL in a text", std::string("{\"a\":\"b\0c\"}", 11), "Unescaped control character [0x00]"),
      unread("a line feed in a text", "{\"a\":\"b\nc\"}", "Unescaped control character [0x0A]"),
      unread("more behind the end", saying("[]") + " more", "Illegal start of token [m]"),
      unread("a bracket too many", saying("[}]"), "Token 'end of object' not expected at array start"),
      unread("not a number", saying("[{\"percentDone\":NaN}]"), "Illegal start of token [N]"),
      unread("a number in base 16", saying("[{\"id\":0x7}]"), "Illegal start of token [x]"),
      unread("33 deep", saying(times(31, "[") + times(31, "]")), "Input depth exceeds max depth of 32"),
      unread("100,000 deep", saying(times(100'000, "[") + times(100'000, "]")),
             "Input depth exceeds max depth of 32"),
  };
}

// The connection is all right, the text ends too early: after each of these pieces.
std::vector<Fault> cut() {
  return {
      cutShort("cut at once", "{"),
      cutShort("cut in a key", "{\"argum"),
      cutShort("cut after a key", "{\"arguments\""),
      cutShort("cut after a colon", "{\"arguments\":"),
      cutShort("cut in a list", "{\"arguments\":{\"torrents\":["),
      cutShort("cut after a comma", "{\"arguments\":{\"torrents\":[{\"id\":1},"),
      cutShort("cut in a number", "{\"arguments\":{\"torrents\":[{\"id\":-"),
      cutShort("cut in a word", "{\"arguments\":{\"torrents\":[{\"isPrivate\":tru"),
      cutShort("cut in a text", "{\"arguments\":{\"torrents\":[{\"name\":\"a long na"),
      cutShort("cut in an escape", "{\"arguments\":{\"torrents\":[{\"name\":\"a\\"),
      cutShort("cut in a letter's number", "{\"arguments\":{\"torrents\":[{\"name\":\"\\u00"),
      unread("cut in a letter's bytes", "{\"arguments\":{\"torrents\":[{\"name\":\"\xe2\x82",
             "there is no text"),
      cutShort("cut before the last bracket", "{\"arguments\":{\"torrents\":[]},\"result\":\"success\""),
  };
}

std::vector<Fault> otherShapes() {
  const std::string kinds =
      R"({"arguments":{"torrents":{"id":7},"version":3,"rpc-version":"x","torrentCount":[1],)"
      R"("current-stats":"no"},"result":{"success":true}})";
  return {
      answered("an empty object", "{}", "(null)"),
      answered("success alone", R"({"result":"success"})"),
      answered("arguments are a list", R"({"arguments":[1,2],"result":"success"})"),
      answered("arguments are a text", R"({"arguments":"torrents","result":"success"})"),
      answered("torrents are an object", saying(R"({"id":7})")),
      answered("torrents are a number", saying("7")),
      answered("torrents are null", saying("null")),
      answered("torrents are true", saying("true")),
      answered("torrents are a text", saying(R"("seven")")),
      answered("wrong kinds everywhere", kinds, R"({"success":true})"),
      answered("the daemon's own no", R"({"arguments":{},"result":"no method name"})", "no method name",
               "no method name"),
      answered("a no of two lines", R"({"arguments":{},"result":"no\nand \u202e<b>no</b>"})",
               "no\nand \u202e<b>no</b>", "no\nand \u202e<b>no</b>"),
      answered("the same key twice",
               R"({"arguments":{"torrents":[{"id":7}]},"arguments":{},"result":"success"})"),
  };
}

std::vector<Fault> strangeLists() {
  const std::string many = R"({"id":7,)" + [] {
    std::string keys;
    for (int i = 0; i < 100'000; ++i) keys += "\"k" + std::to_string(i) + "\":0,";
    return keys;
  }() + R"("name":"many"})";
  Fault millions = listed("2,000,000 torrents of a byte", [] { return "[" + times(1'999'999, "1,") + "1]"; });
  millions.heavy = true;
  Fault name = listed("a name of 30 MB", [] { return "[{\"name\":\"" + times(30 << 20, "n") + "\"}]"; });
  name.heavy = true;
  return {
      listed("torrents of all kinds", R"([1,"a",null,true,[],{},[{"id":7}],-0.0])"),
      listed("files of all kinds", R"([{"id":7,"files":[1,null,"a",[],{"name":3,"length":"x"}]}])"),
      listed("files are no list", R"([{"id":7,"files":{"name":"a"},"status":[],"name":{}}])"),
      listed("ids that are none",
             R"([{"id":2.5},{"id":1e400},{"id":true},{"id":"7"},{"id":-1},{"id":99999999999999999999},)"
             R"({"id":null},{"id":{}},{"id":7.0},{"id":-9223372036854775809},{}])"),
      listed("the same id again", R"([{"id":7,"name":"a"},{"id":7,"name":"b"},{"id":7,"name":"c"}])"),
      listed("sizes below zero",
             R"([{"id":7,"totalSize":-1,"leftUntilDone":-9223372036854775808,"rateDownload":-5,"eta":-3}])"),
      listed("sizes beyond all numbers",
             R"([{"id":7,"totalSize":1e400,"sizeWhenDone":-1e400,"rateUpload":99999999999999999999999999,)"
             R"("eta":9223372036854775807,"status":4294967296}])"),
      listed("parts beyond the whole",
             R"([{"id":7,"percentDone":1e308},{"id":8,"percentDone":-1},{"id":9,"percentDone":-1e308},)"
             R"({"id":10,"percentDone":"x"},{"id":11,"percentDone":1e-400}])"),
      listed("names that are none",
             R"([{"id":7,"name":"\u0000\u0001\u001b[31m"},{"id":8,"name":""},{"id":9,"name":null},)"
             R"({"id":10,"name":"<b>b</b>\n\n\n\u2028\u202e"},{"id":11,"name":"%@ %s %n"}])"),
      listed("a torrent of 100,000 keys", "[" + many + "]"),
      millions,
      name,
  };
}

}  // namespace

std::vector<Fault> textFaults() {
  std::vector<Fault> all;
  for (const auto& some : {notJson(), cut(), otherShapes(), strangeLists()}) {
    std::ranges::copy(some, std::back_inserter(all));
  }
  return all;
}

}  // namespace seedmote::faults
