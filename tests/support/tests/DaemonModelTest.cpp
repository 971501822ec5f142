#include "tests/support/DaemonModel.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "tests/support/DaemonTexts.h"
#include "tests/support/LoopbackDaemon.h"
#include "tests/support/RawClient.h"
#include "tests/support/RealDaemon.h"

namespace seedmote::support {
namespace {

// Without what differs from daemon to daemon and from second to second.
std::string comparable(std::string answer) {
  for (const char* varying : {"[0-9A-Za-z]{48}", "Date: [^\r]*", "\"secondsActive\":[0-9]"}) {
    answer = std::regex_replace(answer, std::regex(varying), "...");
  }
  return answer;
}

struct Question {
  std::string head;
  std::string body;
};

std::string ask(int port, const Question& question, const std::string& session = {}) {
  return rawExchange(port, std::regex_replace(question.head, std::regex("SESSION"), session) +
                               "Host: 127.0.0.1\r\nContent-Length: " + std::to_string(question.body.size()) +
                               "\r\n\r\n" + question.body);
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
      {known, R"({"method":"session-stats"})"},
      {known, "{\n \"method\" : \"torrent-get\" ,\n\"arguments\" : {\"fields\":[\"id\"]} \n}"},
      {known, R"({"method":"torrent-get","arguments":{"fields":["id"],"ids":-1}})"},
      {known, R"({"method":"torrent-start","arguments":{"ids":7}})"},
  };
  const std::string realSession = texts::sessionIdIn(ask(real.port(), {rpc, ""}));
  const std::string twinSession = texts::sessionIdIn(ask(twin.port(), {rpc, ""}));
  ASSERT_EQ(realSession.size(), 48u) << realSession;
  for (const Question& question : questions) {
    EXPECT_EQ(comparable(ask(twin.port(), question, twinSession)),
              comparable(ask(real.port(), question, realSession)))
        << question.head << question.body;
  }
}

}  // namespace
}  // namespace seedmote::support
