#include "tests/support/DaemonModel.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/LoopbackDaemon.h"
#include "tests/support/RawClient.h"
#include "tests/support/RealDaemon.h"

namespace seedmote::support {
namespace {

std::string replaced(std::string text, const std::string& what, const std::string& by) {
  if (what.empty()) {
    return text;
  }
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
    text.replace(at, what.size(), by);
  }
  return text;
}

// The text between `before` and `after`; empty when it is not there.
std::string between(const std::string& text, const std::string& before, const std::string& after) {
  const std::size_t start = text.find(before);
  const std::size_t from = start + before.size();
  return start == std::string::npos ? "" : text.substr(from, text.find(after, from) - from);
}

// Without what differs from daemon to daemon and from second to second.
std::string comparable(const std::string& answer, const std::string& sessionId) {
  std::string text = replaced(replaced(answer, sessionId, "ID"), between(answer, "Date: ", "\r"), "DATE");
  for (char digit = '1'; digit <= '9'; ++digit) {
    text = replaced(text, std::string("\"secondsActive\":") + digit + ",", "\"secondsActive\":0,");
  }
  return text;
}

struct Question {
  std::string head;
  std::string body;
};

std::string ask(int port, const Question& question, const std::string& sessionId) {
  return rawExchange(port, replaced(question.head, "SESSION", sessionId) +
                               "Host: 127.0.0.1\r\nContent-Length: " + std::to_string(question.body.size()) +
                               "\r\n\r\n" + question.body);
}

std::string sessionIdOf(int port) {
  const std::string answer =
      ask(port, {"POST /transmission/rpc HTTP/1.1\r\nAuthorization: Basic dTpw\r\n", ""}, "");
  return between(answer, "X-Transmission-Session-Id: ", "\r");
}

// The rest of the tests trusts the model: here it is held against the daemon, byte by byte.
TEST(DaemonModel, WritesWhatTheRealDaemonWrites) {
  SEEDMOTE_NEEDS_REAL_DAEMON();
  RealDaemon real({.credentials = "u:p"});
  LoopbackDaemon twin;
  twin.model().setCredentials("u:p");
  const std::string rpc = "POST /transmission/rpc HTTP/1.1\r\nAuthorization: Basic dTpw\r\n";
  const std::string known = rpc + "X-Transmission-Session-Id: SESSION\r\n";
  const std::vector<Question> questions = {
      {"POST /transmission/rpc HTTP/1.1\r\n", "{}"},
      {"POST /transmission/rpc HTTP/1.1\r\nAuthorization: Basic d3Jvbmc6\r\n", "{}"},
      {rpc, "{}"},
      {rpc + "X-Transmission-Session-Id:\r\n", "{}"},
      {known, ""},
      {known, "{}"},
      {known, R"({"method":"nope"})"},
      {known, R"({"method":"session-stats"})"},
      {known, "{\n \"method\" : \"torrent-get\" ,\n\"arguments\" : {\"fields\":[\"id\"]} \n}"},
      {known, R"({"method":"torrent-get","arguments":{"fields":["id"],"ids":-1}})"},
      {known, R"({"method":"torrent-start","arguments":{"ids":7}})"},
      {"GET /transmission/rpc HTTP/1.1\r\nAuthorization: Basic dTpw\r\nX-Transmission-Session-Id: "
       "SESSION\r\n",
       ""},
      {"POST / HTTP/1.1\r\nAuthorization: Basic dTpw\r\n", ""},
  };
  const std::string realId = sessionIdOf(real.port());
  const std::string twinId = sessionIdOf(twin.port());
  ASSERT_EQ(realId.size(), 48u) << realId;
  ASSERT_EQ(twinId.size(), 48u) << twinId;
  for (const Question& question : questions) {
    EXPECT_EQ(comparable(ask(twin.port(), question, twinId), twinId),
              comparable(ask(real.port(), question, realId), realId))
        << question.head << question.body;
  }
}

}  // namespace
}  // namespace seedmote::support
