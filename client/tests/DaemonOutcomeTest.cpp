#include "client/DaemonOutcome.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/core/ScriptedHttp.h"

namespace seedmote {
namespace {

using platform::HttpAnswer;
using platform::HttpError;
using platform::ScriptedHttp;

HttpAnswer badRequest(const std::string& reason) {
  return ScriptedHttp::answer(400, "<html><body><h1>Bad Request</h1>" + reason + "</body></html>");
}

TEST(DaemonOutcomeTest, TellsApartWhatEncryptionHasToDoWithIt) {
  struct Case {
    const char* what;
    HttpAnswer answer;
    DaemonCondition condition;
  };
  const Case cases[] = {
      {"nginx", badRequest("<center>The plain HTTP request was sent to HTTPS port</center>"),
       DaemonCondition::needsTls},
      {"Apache",
       badRequest("<p>Reason: You're speaking plain HTTP to an SSL-enabled server port.<br />\n Instead use "
                  "the HTTPS scheme to access this URL, please.<br />"),
       DaemonCondition::needsTls},
      {"Go", ScriptedHttp::answer(400, "Client sent an HTTP request to an HTTPS server.\n"),
       DaemonCondition::needsTls},
      {"another bad request", badRequest("No Host header."), DaemonCondition::notTransmission},
      {"the sentence in another page", ScriptedHttp::answer(404, "sent an HTTP request to an HTTPS server"),
       DaemonCondition::notTransmission},
      {"TLS alert", ScriptedHttp::failure(HttpError::needsTls), DaemonCondition::needsTls},
      {"not a byte", ScriptedHttp::failure(HttpError::silent), DaemonCondition::closedUnanswered},
      {"half an answer", ScriptedHttp::failure(HttpError::closed), DaemonCondition::brokenOff},
      {"plain answer to a TLS hello", ScriptedHttp::failure(HttpError::noTls), DaemonCondition::noTls},
      {"no certificate of ours", ScriptedHttp::failure(HttpError::tls), DaemonCondition::tlsTrouble},
      {"port 99999", ScriptedHttp::failure(HttpError::badUrl), DaemonCondition::badAddress},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(judgeAnswer(c.answer).condition, c.condition) << c.what;
  }
}

}  // namespace
}  // namespace seedmote
