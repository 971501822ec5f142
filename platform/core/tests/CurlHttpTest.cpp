#include "platform/core/CurlHttp.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <thread>

#include "tests/support/DaemonTexts.h"
#include "tests/support/LoopbackDaemon.h"

namespace seedmote::platform {
namespace {

using seedmote::support::LoopbackDaemon;
using seedmote::support::RecordedRequest;
using seedmote::support::Reply;
namespace replies = seedmote::support::replies;
namespace texts = seedmote::support::texts;

HttpRequest post(const std::string& url, std::string body = "{}", std::vector<HttpHeader> headers = {}) {
  return {url, "POST", std::move(headers), std::move(body), 20};
}

HttpRequest get(const std::string& url) {
  return {url, "GET", {}, {}, 20};
}

TEST(CurlHttp, SendsExactlyTheseBytes) {
  LoopbackDaemon daemon;
  CurlHttp http;
  setenv("http_proxy", "http://127.0.0.1:9/", 1);
  const std::string body = "{\n \"method\" : \"session-stats\" ,\n\xC3\xA4}";
  http.exchange(post(daemon.url(), body,
                     {{"X-Transmission-Session-Id", ""}, {"Authorization", "Basic dTpw"}, {"X-Blank", " "}}));
  unsetenv("http_proxy");
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

TEST(CurlHttp, SendsBodiesOfAnySizeAndContentWithoutDelay) {
  LoopbackDaemon daemon;
  daemon.setReply(replies::answer(200, "ok"));
  CurlHttp http;
  // Beyond a mebibyte curl would wait a second for a "100 Continue".
  for (const std::string& body : {std::string(), std::string("\0\xFF\r\n\0", 5), std::string(3 << 20, '%')}) {
    EXPECT_EQ(http.exchange(post(daemon.url(), body)).status, 200);
    const RecordedRequest request = daemon.requests().back();
    EXPECT_TRUE(request.body == body) << body.size();
    EXPECT_FALSE(request.header("Expect")) << body.size();
  }
}

TEST(CurlHttp, RefusesHeadersThatWouldBeOthers) {
  LoopbackDaemon daemon;
  CurlHttp http;
  const std::vector<HttpHeader> bad = {{"X-Id", "a\r\nX-More: b"},
                                       {"X-Id", "a\n"},
                                       {"X-Id", "\ra"},
                                       {"X-Id", std::string(1, '\0')},
                                       {"X-Id\nB", "c"},
                                       {"X:Id", "d"},
                                       {"", "e"},
                                       {"X Id", "f"},
                                       {"X-Id;", ""}};
  for (const HttpHeader& header : bad) {
    const HttpAnswer answer = http.exchange(post(daemon.url(), "{}", {{"X-Good", "1"}, header}));
    EXPECT_EQ(answer.error, HttpError::badHeader) << header.name << ": " << header.value;
    EXPECT_EQ(answer.status, 0);
    EXPECT_FALSE(answer.message.empty());
  }
  EXPECT_EQ(daemon.connections(), 0);
}

TEST(CurlHttp, AnswersKeepTheirStatusAndBytes) {
  const std::string bytes("\0\xFF\xFE\r\n\0 \xED\xA0\x80", 10);
  struct Case {
    Reply reply;
    int status;
    std::string body;
  };
  const std::vector<Case> cases = {
      {replies::unauthorized(3), 401, texts::unauthorizedBody(3)},
      {replies::answer(500, "broken"), 500, "broken"},
      {replies::answer(200, ""), 200, ""},
      {replies::answer(200, bytes), 200, bytes},
      {replies::gzippedJson(bytes), 200, bytes},
      {replies::slowly(replies::json("{\"a\":1}"), std::chrono::milliseconds(0)), 200, "{\"a\":1}"},
      {replies::raw("HTTP/1.0 200 OK\r\n\r\nuntil the end"), 200, "until the end"},
      {replies::raw("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\n1"), 200, "1"},
      {replies::raw("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nab\r\n1\r\nc\r\n0\r\n\r\n"),
       200, "abc"},
      {replies::answer(302, "no target"), 302, "no target"},
  };
  LoopbackDaemon daemon;
  for (const Case& one : cases) {
    CurlHttp http;  // some of these close their connection without saying so
    daemon.setReply(one.reply);
    const HttpAnswer answer = http.exchange(post(daemon.url()));
    EXPECT_EQ(answer.status, one.status);
    EXPECT_TRUE(answer.hasBody) << one.body;
    EXPECT_EQ(answer.body, one.body);
    EXPECT_EQ(answer.error, HttpError::none) << answer.message;
    EXPECT_TRUE(answer.message.empty()) << answer.message;
  }
}

// A kept connection that died while idle is replaced; no request is lost, and none is sent twice.
TEST(CurlHttp, KeepsAConnectionAndReplacesOneThatDiedIdle) {
  for (const bool tls : {false, true}) {
    LoopbackDaemon daemon({.tls = tls});
    CurlHttp http;
    for (int i = 0; i < 2; ++i) {
      const HttpAnswer first = http.exchange(post(daemon.url()));
      ASSERT_EQ(first.status, 409) << "also with an expired certificate of another name: " << first.message;
    }
    EXPECT_EQ(daemon.connections(), 1);
    daemon.dropConnections();
    const HttpAnswer answer = http.exchange(post(daemon.url()));
    EXPECT_EQ(answer.status, 409) << answer.message;
    EXPECT_EQ(daemon.requests().size(), 3u);
    EXPECT_EQ(daemon.connections(), 2);
  }
}

// The server has read the request and may have carried it out: adding a torrent twice, or starting what was
// just stopped, is worse than an error.
TEST(CurlHttp, NeverSendsAPostTwice) {
  for (const Reply& silence : {replies::nothing(), replies::reset()}) {
    LoopbackDaemon daemon;
    CurlHttp http;
    ASSERT_EQ(http.exchange(post(daemon.url())).status, 409);  // the connection is a kept one now
    daemon.enqueue(silence);
    const HttpAnswer answer = http.exchange(post(daemon.url(), std::string(1 << 20, 'x')));
    EXPECT_EQ(answer.error, HttpError::closed) << answer.message;
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(daemon.requests().size(), 2u);

    ASSERT_EQ(http.exchange(get(daemon.url())).status, 409);
    daemon.enqueue(silence);
    EXPECT_EQ(http.exchange(get(daemon.url())).status, 409) << "a GET asks again";
    EXPECT_EQ(daemon.requests().size(), 5u);
  }
}

TEST(CurlHttp, FollowsRedirectsAndKeepsSecretsAtHome) {
  struct Case {
    int status;
    std::string host;
    bool tlsTarget;
    std::string method;
    bool withLogin;
  };
  const std::vector<Case> cases = {
      {301, "127.0.0.1", true, "GET", true},   {302, "127.0.0.1", true, "GET", true},
      {303, "127.0.0.1", true, "GET", true},   {307, "127.0.0.1", true, "POST", true},
      {308, "127.0.0.1", true, "POST", true},  {307, "127.0.0.1", false, "POST", false},
      {307, "localhost", true, "POST", false}, {301, "localhost", false, "GET", false},
  };
  CurlHttp http;
  for (const Case& one : cases) {
    LoopbackDaemon from;
    LoopbackDaemon to({.tls = one.tlsTarget});
    to.setReply(replies::answer(200, "there"));
    const std::string target =
        (one.tlsTarget ? "https://" : "http://") + one.host + ":" + std::to_string(to.port()) + "/elsewhere";
    from.setReply(replies::redirect(one.status, target));
    const HttpAnswer answer = http.exchange(
        post(from.url(), "body", {{"Authorization", "Basic dTpw"}, {"X-Transmission-Session-Id", "id"}}));
    EXPECT_EQ(answer.body, "there") << target << answer.message;
    ASSERT_EQ(to.requests().size(), 1u);
    const RecordedRequest arrived = to.requests()[0];
    EXPECT_EQ(arrived.path, "/elsewhere");
    EXPECT_EQ(arrived.method, one.method) << one.status;
    EXPECT_EQ(arrived.body, one.method == "POST" ? "body" : "");
    EXPECT_EQ(arrived.header("Authorization").has_value(), one.withLogin) << one.status << target;
    EXPECT_EQ(arrived.header("X-Transmission-Session-Id"), "id") << one.status << target;
  }
}

TEST(CurlHttp, FollowsSixteenRedirectsAndNotOneMore) {
  for (const int redirects : {16, 17}) {
    LoopbackDaemon daemon;
    CurlHttp http;
    for (int i = 0; i < redirects; ++i) {
      daemon.enqueue(replies::redirect(302, "/" + std::to_string(i)));
    }
    daemon.setReply(replies::answer(200, "arrived"));
    const HttpAnswer answer = http.exchange(get(daemon.url()));
    EXPECT_EQ(answer.error, redirects == 16 ? HttpError::none : HttpError::tooManyRedirects);
    EXPECT_EQ(daemon.requests().size(), 17u);
  }
}

TEST(CurlHttp, ServesManyThreads) {
  constexpr int kThreads = 8;
  constexpr int kRounds = 25;
  LoopbackDaemon daemon;
  daemon.setHandler([](const RecordedRequest& request) { return replies::answer(200, request.body); });
  CurlHttp http;
  std::atomic<int> right{0};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      for (int round = 0; round < kRounds; ++round) {
        const std::string body =
            std::to_string(thread) + ":" + std::string(static_cast<std::size_t>(round) * 997, 'b');
        right += http.exchange(post(daemon.url(), body)).body == body;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(right, kThreads * kRounds);
  EXPECT_EQ(daemon.requests().size(), std::size_t{kThreads * kRounds});
  const int before = daemon.connections();
  for (int i = 0; i < 5; ++i) {
    http.exchange(post(daemon.url()));
  }
  EXPECT_EQ(daemon.connections(), before) << "one thread goes on with a connection that is there";
}

// A time-out that is none, endless or tiny neither hangs nor fails of itself.
TEST(CurlHttp, TakesAnyTimeout) {
  LoopbackDaemon daemon;
  CurlHttp http;
  for (const double seconds : {0.0, -1.0, std::nan(""), HUGE_VAL, 1e300, 30.5}) {
    HttpRequest request = post(daemon.url());
    request.timeoutSeconds = seconds;
    EXPECT_EQ(http.exchange(request).status, 409) << seconds;
  }
  daemon.setReply(replies::slowly(replies::json("{}")));
  HttpRequest hasty = post(daemon.url());
  hasty.timeoutSeconds = 1e-9;
  EXPECT_EQ(http.exchange(hasty).error, HttpError::timedOut);
  hasty.timeoutSeconds = 0.05;
  EXPECT_EQ(http.exchange(hasty).error, HttpError::timedOut) << "bytes that trickle in do not prolong it";
}

}  // namespace
}  // namespace seedmote::platform
