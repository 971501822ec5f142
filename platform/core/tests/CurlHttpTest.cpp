#include "platform/core/CurlHttp.h"

#include <gtest/gtest.h>

#include "tests/support/DaemonTexts.h"
#include "tests/support/LoopbackDaemon.h"

namespace seedmote::platform {
namespace {

using seedmote::support::LoopbackDaemon;
namespace texts = seedmote::support::texts;

HttpRequest post(const std::string& url, std::string body, std::vector<HttpHeader> headers = {}) {
  return {url, "POST", std::move(headers), std::move(body), 20};
}

TEST(CurlHttp, SendsExactlyTheseBytes) {
  LoopbackDaemon daemon;
  CurlHttp http;
  const std::string body = "{\n \"method\" : \"session-stats\" ,\n\xC3\xA4}";
  http.exchange(post(daemon.url(), body,
                     {{"X-Transmission-Session-Id", ""}, {"Authorization", "Basic dTpw"}, {"X-Blank", " "}}));
  ASSERT_EQ(daemon.requests().size(), 1u);
  EXPECT_EQ(daemon.requests()[0].raw, "POST /transmission/rpc HTTP/1.1\r\nHost: " + daemon.address() +
                                          "\r\nUser-Agent: Seedmote\r\nAccept: */*\r\n"
                                          "Accept-Encoding: deflate, gzip, br, zstd\r\n"
                                          "X-Transmission-Session-Id:\r\n"
                                          "Authorization: Basic dTpw\r\n"
                                          "X-Blank:\r\n"
                                          "Content-Length: " +
                                          std::to_string(body.size()) +
                                          "\r\nContent-Type: application/x-www-form-urlencoded\r\n\r\n" +
                                          body);
}

TEST(CurlHttp, LearnsTheSessionIdAndReadsAPackedAnswer) {
  LoopbackDaemon daemon;
  CurlHttp http;
  const std::string body = "{\"method\":\"session-stats\"}";
  const HttpAnswer refused = http.exchange(post(daemon.url(), body, {{"X-Transmission-Session-Id", ""}}));
  EXPECT_EQ(refused.status, 409);
  EXPECT_EQ(refused.body, texts::conflictBody(daemon.sessionId()));
  EXPECT_EQ(refused.body.size(), 581u);
  const HttpAnswer answer =
      http.exchange(post(daemon.url(), body, {{"X-Transmission-Session-Id", daemon.sessionId()}}));
  EXPECT_EQ(answer.status, 200);
  EXPECT_TRUE(answer.hasBody);
  EXPECT_EQ(answer.body, texts::kStats);
  EXPECT_EQ(daemon.connections(), 1);
}

}  // namespace
}  // namespace seedmote::platform
