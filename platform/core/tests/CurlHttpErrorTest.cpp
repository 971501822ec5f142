#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <string>
#include <vector>

#include "platform/core/CurlHttp.h"
#include "tests/support/DeafPort.h"
#include "tests/support/FakeNames.h"
#include "tests/support/LoopbackDaemon.h"

namespace seedmote::platform {
namespace {

using seedmote::support::DeafPort;
using seedmote::support::FakeNames;
using seedmote::support::LoopbackDaemon;
using std::chrono::milliseconds;
using std::chrono::steady_clock;
namespace replies = seedmote::support::replies;

// Long enough for a loaded machine, far from any time-out that could end the exchange instead.
constexpr auto kAtOnce = milliseconds(100);
constexpr double kLongTimeout = 600;

HttpRequest post(const std::string& url, double timeout = 20) {
  return {url, "POST", {}, "{}", timeout};
}

std::string onPort(const std::string& scheme, int port) {
  return scheme + "://127.0.0.1:" + std::to_string(port) + "/transmission/rpc";
}

// A failure keeps the status that came, never a part of the body, and always says something.
void expectFailure(const HttpAnswer& answer, HttpError error, int status, const std::string& name) {
  EXPECT_EQ(answer.error, error) << name << ": " << answer.message;
  EXPECT_EQ(answer.status, status) << name;
  EXPECT_FALSE(answer.hasBody) << name;
  EXPECT_TRUE(answer.body.empty()) << name;
  EXPECT_FALSE(answer.message.empty()) << name;
}

TEST(CurlHttpError, WhatIsNoAddressAsksNobody) {
  CurlHttp http;
  for (const std::string& url :
       {std::string(), std::string("127.0.0.1:9091/transmission/rpc"), std::string("http://:9091/x"),
        std::string("ftp://127.0.0.1/x"), std::string("file:///etc/hostname"),
        std::string("http://127.0.0.1\0.example/", 26), "http://" + std::string(9'000'000, 'a') + "/x"}) {
    expectFailure(http.exchange(post(url)), HttpError::badUrl, 0, url.substr(0, 50));
  }
}

TEST(CurlHttpCancel, EndsExchangesInEveryPhaseAtOnceAndForGood) {
  FakeNames names;
  const DeafPort off;
  const support::FileDescriptor silent = support::listenOnLoopback(0, 16);
  LoopbackDaemon daemon;
  daemon.setHandler([](const support::RecordedRequest& request) {
    return request.path == "/hang"   ? replies::hang()
           : request.path == "/slow" ? replies::slowly(replies::json("{\"a\":1}"), milliseconds(10))
                                     : replies::endless("HTTP/1.1 200 OK\r\n\r\n");
  });
  CurlHttp http(std::size_t{1} << 30);
  std::vector<std::future<HttpAnswer>> answers;
  for (const std::string& url :
       {std::string("http://slow.invalid/"), onPort("http", off.port()), onPort("https", portOf(silent)),
        daemon.url("/hang"), daemon.url("/slow"), daemon.url("/endless")}) {
    answers.push_back(
        std::async(std::launch::async, [&http, url] { return http.exchange(post(url, kLongTimeout)); }));
  }
  names.waitForHanging();
  ASSERT_TRUE(daemon.waitForRequests(3));
  const auto start = steady_clock::now();
  http.cancelAll();
  for (std::future<HttpAnswer>& answer : answers) {
    EXPECT_EQ(answer.get().error, HttpError::cancelled);
  }
  EXPECT_LT(steady_clock::now() - start, kAtOnce);
  expectFailure(http.exchange(post(daemon.url())), HttpError::cancelled, 0, "later");
  EXPECT_EQ(daemon.requests().size(), 3u) << "nothing more is sent";
}

// What has its answer keeps it, whenever the cancellation comes; nothing hangs.
TEST(CurlHttpCancel, RacesWithAnswers) {
  LoopbackDaemon daemon;
  for (int round = 0; round < 50; ++round) {
    CurlHttp http;
    std::future<HttpAnswer> answer =
        std::async(std::launch::async, [&] { return http.exchange(post(daemon.url(), kLongTimeout)); });
    daemon.waitForRequests(static_cast<std::size_t>(round % 2));
    http.cancelAll();
    const HttpAnswer got = answer.get();
    EXPECT_TRUE(got.error == HttpError::cancelled ? !got.hasBody : got.status == 409) << got.message;
    daemon.forgetRequests();
  }
}

}  // namespace
}  // namespace seedmote::platform
