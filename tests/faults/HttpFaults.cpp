// Daemons and others that do not keep to HTTP, or say no in it.
#include <algorithm>
#include <iterator>

#include "tests/faults/Fault.h"
#include "tests/support/DaemonTexts.h"
#include "tests/support/Encodings.h"

namespace seedmote::faults {
namespace {

using namespace sentences;

const std::string kOk = "HTTP/1.1 200 OK\r\n";
const std::string kGood = R"({"arguments":{"torrents":[{"id":7}]},"result":"success"})";

Fault http(std::string name, Reply reply, const char* status, std::string sentence) {
  return {.name = std::move(name),
          .reply = always(std::move(reply)),
          .list = std::move(sentence),
          .status = status};
}

// `head` are lines after the first.
Fault head(std::string name, const std::string& lines, const std::string& body, std::string sentence) {
  return http(std::move(name), replies::raw(kOk + lines + "\r\n" + body), "0", std::move(sentence));
}

Fault packed(std::string name, const char* how, const std::string& body, std::string sentence) {
  return http(std::move(name), replies::answer(200, body, {{"Content-Encoding", how}}), "0",
              std::move(sentence));
}

Fault slow(std::string name, Reply reply, const char* status) {
  Fault fault = http(std::move(name), std::move(reply), status, kNoAnswer);
  fault.slow = true;
  return fault;
}

// On a connection that has brought answers before, and on a new one.
Fault unanswered(std::string name, Reply reply) {
  Fault fault = http(std::move(name), std::move(reply), "0", kBrokenOff);
  fault.orElse = kClosedUnanswered;
  return fault;
}

Fault heavy(Fault fault) {
  fault.heavy = true;
  return fault;
}

// Half of a daemon's text came.
Fault readAsNone(Fault fault) {
  fault.atFirst = kNotAsDaemon;
  fault.status = "200";
  return fault;
}

std::string manyHeaders() {
  std::string lines;
  for (int i = 0; i < 100'000; ++i) lines += "X: y\r\n";
  return lines;
}

Reply earlyAnswers() {
  const std::string one = "HTTP/1.1 100 Continue\r\n\r\n";
  std::string all;
  for (int i = 0; i < 10'000; ++i) all += one;
  return replies::slowly(replies::raw(all), std::chrono::milliseconds(1), one.size());
}

std::string bomb() {
  static const std::string bytes = support::gzip(std::string(std::size_t{300} << 20, ' '));
  return bytes;
}

std::vector<Fault> connections() {
  return {
      unanswered("resets the connection", replies::reset()),
      unanswered("closes the connection", replies::nothing()),
      slow("says nothing", replies::hang(), "0"),
      slow("drips", replies::slowly(replies::json(kGood)), "0"),
      http("garbage", replies::raw("garbage\r\n\r\n"), "0", kNotTransmission),
      http("garbage without end", replies::endless("garbage"), "0", kNotTransmission),
      http("JSON without a head", replies::raw(kGood), "0", kNotTransmission),
      http("status line alone", replies::raw(kOk), "0", kBrokenOff),
      http("half a status line", replies::raw("HTTP/1.1 2"), "0", kBrokenOff),
      http("status without a number", replies::raw("HTTP/1.1 abc\r\n\r\n"), "0", kNotTransmission),
      http("status 000", replies::raw("HTTP/1.1 000 None\r\nContent-Length: 2\r\n\r\n{}"), "0",
           kNotTransmission),
      http("status 999", replies::answer(999, "{}"), "999", kNotTransmission),
      http("HTTP of a version to come", replies::raw("HTTP/7.5 200 OK\r\n\r\n" + kGood), "0",
           kNotTransmission),
      slow("early answers without end", earlyAnswers(), "0"),
      slow("takes another protocol up",
           Reply{.bytes = "HTTP/1.1 101 Switching Protocols\r\nUpgrade: h2c\r\n\r\n"}, "0"),
  };
}

std::vector<Fault> heads() {
  return {
      head("a header of 1 MB", "X: " + std::string(1 << 20, 'y') + "\r\n", kGood,
           unreadable("A line in the head of the answer has no end.")),
      head("100,000 headers", manyHeaders(), kGood,
           unreadable("The head of the answer is larger than 262144 bytes.")),
      http("a header without end", replies::endless(kOk + "X: "), "0",
           unreadable("A line in the head of the answer has no end.")),
      head("headers without colon", "this is no header\r\nnor this\r\nContent-Length: 2\r\n", "{}",
           kNotTransmission),
      head("a NUL in a header", std::string("X: a\0b\r\n", 8), kGood, kNotTransmission),
      http("closed in a header", replies::raw(kOk + "Content-Le"), "0", kBrokenOff),
      http("closed in the body", replies::truncated("{\"arg", 1000), "0", kBrokenOff),
      http("409, closed in the body",
           replies::raw("HTTP/1.1 409 Conflict\r\nContent-Length: 581\r\n\r\n<h1>"), "0", kBrokenOff),
      readAsNone(
          head("length too short", "Content-Length: 5\r\n", kGood, unreadable("Unexpected end of input"))),
      head("length below zero", "Content-Length: -5\r\n", kGood, kNotTransmission),
      head("two lengths", "Content-Length: 5\r\nContent-Length: 500\r\n", kGood, kBrokenOff),
      head("length beyond all numbers", "Content-Length: 99999999999999999999\r\n", kGood, kUnreadable),
      head("length is a word", "Content-Length: much\r\n", kGood, kNotTransmission),
      head("chunk of no number", "Transfer-Encoding: chunked\r\n", "zz\r\n" + kGood, kNotTransmission),
      head("chunk beyond all numbers", "Transfer-Encoding: chunked\r\n", "fffffffffffffffff\r\n" + kGood,
           kNotTransmission),
      head("closed in a chunk", "Transfer-Encoding: chunked\r\n", "8\r\n{\"ar", kBrokenOff),
      heavy(http("300 MB", replies::huge(std::uint64_t{300} << 20), "0", kUnreadable)),
      heavy(http("a body without end", replies::endless(kOk + "\r\n{\"arguments\":\""), "0",
                 unreadable("The answer is larger than 268435456 bytes."))),
      heavy({.name = "a packed bomb",
             .reply =
                 [](World&) {
                   return replies::answer(200, bomb(), {{"Content-Encoding", "gzip"}});
                 },
             .list = unreadable("The answer is larger than 268435456 bytes."),
             .status = "0"}),
      packed("not packed after all", "gzip", kGood, kFailed),
      readAsNone(packed("packed and cut", "gzip", support::gzip(kGood).substr(0, 30),
                        unreadable("Unexpected end of input"))),
      packed("packed in a way of its own", "zoo", kGood, kFailed),
  };
}

std::vector<Fault> refusals() {
  return {
      http("401", replies::unauthorized(1), "401", kLoginRefused),
      http("403", replies::addressRefused(), "403", kAddressNotAllowed),
      http("403 after 100 logins", replies::lockedOut(), "403", kLockedOut),
      http("421", replies::misdirected(), "421", kHostNotAllowed),
      http("204", replies::raw("HTTP/1.1 204 No Content\r\n\r\n"), "204", kNotTransmission),
      http("304", replies::raw("HTTP/1.1 304 Not Modified\r\n\r\n"), "304", kNotTransmission),
      http("400 of a TLS server",
           replies::html(400, "<center>The plain HTTP request was sent to HTTPS port</center>"), "400",
           kNeedsTls),
      http("404", replies::html(404, "<h1>Not Found</h1>"), "404", kNotTransmission),
      http("500", replies::html(500, "no"), "500", kNotTransmission),
      {.name = "502 with JSON",
       .kind = Kind::listed,  // the client goes by the text
       .reply = always(replies::answer(502, kGood)),
       .atFirst = kNotTransmission,
       .status = "502",
       .result = "success"},
      http("a web page", replies::html(200, "<h1>Welcome</h1>"), "200", kNotTransmission),
  };
}

Fault redirected(std::string name, int status, std::function<std::string(World&)> to, const char* told) {
  return {.name = std::move(name),
          .reply = [status, to](World& world) { return replies::redirect(status, to(world)); },
          .list = kNotTransmission,
          .status = told};
}

std::vector<Fault> redirects() {
  const auto there = [](World& world) { return world.other.url("/elsewhere"); };
  const auto self = [](World& world) { return world.daemon.url(); };
  const auto circle = [](World& world) {
    world.blunt.setReply(replies::redirect(307, world.daemon.url()));
    return world.blunt.url();
  };
  return {
      redirected("redirect to another host", 302, there, "200"),
      redirected("redirect of the post", 307, there, "200"),
      redirected("redirect to itself", 307, self, "0"),
      redirected("redirects in a circle of two", 308, circle, "0"),
      redirected(
          "redirect to a file", 302, [](World&) { return std::string("file:///etc/passwd"); }, "0"),
      redirected(
          "redirect to nothing", 301, [](World&) { return std::string("http://"); }, "0"),
      redirected(
          "redirect to nowhere", 301, [](World&) { return std::string(); }, "301"),
  };
}

Fault conflict(std::string name, std::function<Reply(World&)> reply, int times) {
  return {.name = std::move(name),
          .kind = Kind::conflict,
          .reply = std::move(reply),
          .list = kNewSession,
          .status = "409",
          .times = times};
}

Fault namesNoSession(std::string name, const std::string& body) {
  return {.name = std::move(name),
          .kind = Kind::unreadable,
          .reply = always(replies::conflictWithBody(body)),
          .list = kNotTransmission};
}

std::vector<Fault> sessions() {
  const auto own = [](World& world) { return replies::conflict(world.daemon.sessionId()); };
  const auto named = [](std::string id) {
    return always(replies::conflictWithBody(support::texts::conflictBody(id)));
  };
  Fault empty = conflict("409 with no letter in it", named(""), 1);
  empty.connected = "The daemon's answer could not be used.\nPlease try again.";
  return {
      conflict("409", own, 1),
      conflict("409 six times", own, 6),
      conflict("409 with a line feed in it", named("ab\nX-Evil: 1"), 1),
      conflict("409 with a NUL in it", named(std::string("a\0b", 3)), 1),
      empty,
      heavy(conflict("409 with 10 MB in it", named(std::string(10 << 20, 'a')), 1)),
      namesNoSession("409 with no session", "no"),
      namesNoSession("409 with half a session", "<code>X-Transmission-Session-Id: abc"),
      namesNoSession("409 with its session the wrong way round", "</code>X-Transmission: abc<code>"),
      namesNoSession("409 with an empty code", "<code></code>"),
  };
}

}  // namespace

std::vector<Fault> httpFaults() {
  std::vector<Fault> all;
  for (const auto& some : {connections(), heads(), refusals(), redirects(), sessions()}) {
    std::ranges::copy(some, std::back_inserter(all));
  }
  return all;
}

}  // namespace seedmote::faults
