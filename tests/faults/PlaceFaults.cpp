// Where a request gets to when no daemon is there, or none that speaks HTTP.
#include <algorithm>
#include <iterator>

#include "tests/faults/Fault.h"

namespace seedmote::faults {
namespace {

using namespace sentences;

std::string at(const char* scheme, int port) {
  return std::string(scheme) + "://127.0.0.1:" + std::to_string(port) + "/transmission/rpc";
}

// A server that does this as soon as somebody comes.
std::function<std::string(World&)> greeted(const char* scheme, Reply greeting) {
  return [scheme, greeting = std::move(greeting)](World& world) {
    world.blunt.setGreeting(greeting);
    return at(scheme, world.blunt.port());
  };
}

std::string alert(char description) {
  return std::string("\x15\x03\x01\x00\x02\x02", 6) + description;
}

Fault place(std::string name, std::function<std::string(World&)> url, const char* sentence) {
  return {.name = std::move(name), .url = std::move(url), .list = sentence, .status = "0"};
}

Fault orElse(Fault fault, const char* sentence) {
  fault.orElse = sentence;
  return fault;
}

Fault slowPlace(std::string name, std::function<std::string(World&)> url) {
  Fault fault = place(std::move(name), std::move(url), kNoAnswer);
  fault.slow = true;
  return fault;
}

Fault insideTls(std::string name, Reply reply, const char* sentence, const char* status) {
  Fault fault = place(
      std::move(name),
      [reply = std::move(reply)](World& world) {
        world.tls.setReply(reply);
        return world.tls.url();
      },
      sentence);
  fault.status = status;
  return fault;
}

std::vector<Fault> plainPlaces() {
  return {
      place(
          "nobody listens", [](World&) { return at("http", support::closedPort()); }, kNobodyListens),
      place(
          "no such host", [](World&) { return std::string("http://nowhere.invalid/x"); }, kUnknownHost),
      slowPlace("the name service hangs", [](World&) { return std::string("http://slow.invalid/x"); }),
      place(
          "a port beyond the last", [](World&) { return std::string("http://127.0.0.1:99999/x"); },
          kBadAddress),
      slowPlace("the host is switched off", [](World& world) { return at("http", world.deaf.port()); }),
      place("resets whoever connects", greeted("http", replies::reset()), kClosedUnanswered),
      place("closes on whoever connects", greeted("http", replies::nothing()), kClosedUnanswered),
      place("a mail server", greeted("http", replies::raw("220 mail.example ESMTP\r\n")), kNotTransmission),
      slowPlace("accepts and says nothing", greeted("http", replies::hang())),
      place(
          "TLS is spoken here", [](World& world) { return at("http", world.tls.port()); }, kClosedUnanswered),
      place("TLS is spoken here, with an alert", greeted("http", replies::raw(alert(10))), kNeedsTls),
  };
}

std::vector<Fault> tlsPlaces() {
  return {
      place(
          "no TLS is spoken here", [](World& world) { return at("https", world.other.port()); }, kNoTls),
      place(
          "nobody listens for TLS", [](World&) { return at("https", support::closedPort()); },
          kNobodyListens),
      place(
          "TLS wants a certificate of the client", [](World& world) { return world.strict.url(); },
          kTlsTrouble),
      place("TLS hello closed", greeted("https", replies::nothing()), kTlsTrouble),
      orElse(place("TLS hello reset", greeted("https", replies::reset()), kTlsTrouble), kBrokenOff),
      place("TLS hello answered with garbage",
            greeted("https", replies::raw("\x01\x02garbage, and some more")), kNoTls),
      place("TLS hello refused", greeted("https", replies::raw(alert(40))), kTlsTrouble),
      place("TLS too old for both", greeted("https", replies::raw(alert(70))), kTlsTrouble),
      place("TLS for another name", greeted("https", replies::raw(alert(112))), kTlsTrouble),
      slowPlace("TLS hello never answered", greeted("https", replies::hang())),
      insideTls("TLS closed without an answer", replies::nothing(), kBrokenOff, "0"),
      insideTls("TLS closed in an answer", replies::truncated("{\"argu", 4000), kBrokenOff, "0"),
      insideTls("TLS with a web server", replies::html(200, "<h1>Hello</h1>"), kNotTransmission, "200"),
  };
}

}  // namespace

std::vector<Fault> placeFaults() {
  std::vector<Fault> all = plainPlaces();
  std::ranges::copy(tlsPlaces(), std::back_inserter(all));
  return all;
}

const std::vector<Fault>& faultTable() {
  static const std::vector<Fault> table = [] {
    std::vector<Fault> all = placeFaults();
    std::ranges::copy(httpFaults(), std::back_inserter(all));
    std::ranges::copy(textFaults(), std::back_inserter(all));
    return all;
  }();
  return table;
}

}  // namespace seedmote::faults
