#include <gtest/gtest.h>

#include <chrono>
#include <functional>
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

HttpRequest post(const std::string& url) {
  return {url, "POST", {}, "{}", kLongTimeout};
}

TEST(CurlHttpCancel, EndsAnExchangeInEveryPhase) {
  FakeNames names;
  names.hang("slow.invalid");
  const DeafPort off(DeafPort::Kind::full);
  const DeafPort silent(DeafPort::Kind::connects);
  LoopbackDaemon daemon;
  struct Case {
    std::string name;
    std::string url;
    std::function<void()> underWay;  // returns once the exchange has got there
  };
  const auto askedOnce = [&] { ASSERT_TRUE(daemon.waitForRequests(1)); };
  const std::vector<Case> cases = {
      {"look-up", "http://slow.invalid/", [&] { names.waitForHanging(); }},
      {"connect", "http://127.0.0.1:" + std::to_string(off.port()), [] {}},
      {"TLS hello", "https://127.0.0.1:" + std::to_string(silent.port()), [] {}},
      {"waiting", daemon.url("/hang"), askedOnce},
      {"slow body", daemon.url("/slow"), askedOnce},
      {"endless body", daemon.url("/endless"), askedOnce},
  };
  daemon.setHandler([](const seedmote::support::RecordedRequest& request) {
    return request.path == "/hang"   ? replies::hang()
           : request.path == "/slow" ? replies::slowly(replies::json("{\"a\":1}"), milliseconds(10))
                                     : replies::endless("HTTP/1.1 200 OK\r\n\r\n");
  });
  for (const Case& one : cases) {
    daemon.forgetRequests();
    CurlHttp http(std::size_t{1} << 30);
    std::future<HttpAnswer> answer =
        std::async(std::launch::async, [&] { return http.exchange(post(one.url)); });
    one.underWay();
    const auto start = steady_clock::now();
    http.cancelAll();
    EXPECT_EQ(answer.get().error, HttpError::cancelled) << one.name;
    EXPECT_LT(steady_clock::now() - start, kAtOnce) << one.name;
  }
}

TEST(CurlHttpCancel, EndsAllAndIsForGood) {
  LoopbackDaemon daemon;
  daemon.setReply(replies::hang());
  CurlHttp http;
  std::vector<std::future<HttpAnswer>> answers;
  for (int i = 0; i < 8; ++i) {
    answers.push_back(std::async(std::launch::async, [&] { return http.exchange(post(daemon.url())); }));
  }
  ASSERT_TRUE(daemon.waitForRequests(answers.size()));
  const auto start = steady_clock::now();
  http.cancelAll();
  for (std::future<HttpAnswer>& answer : answers) {
    EXPECT_EQ(answer.get().error, HttpError::cancelled);
  }
  EXPECT_LT(steady_clock::now() - start, kAtOnce);
  const HttpAnswer later = http.exchange(post(daemon.url()));
  EXPECT_EQ(later.error, HttpError::cancelled);
  EXPECT_FALSE(later.message.empty());
  EXPECT_EQ(daemon.requests().size(), answers.size()) << "nothing more is sent";
}

// What has its answer keeps it, whenever the cancellation comes; nothing hangs.
TEST(CurlHttpCancel, RacesWithAnswers) {
  LoopbackDaemon daemon;
  for (int round = 0; round < 50; ++round) {
    CurlHttp http;
    std::future<HttpAnswer> answer =
        std::async(std::launch::async, [&] { return http.exchange(post(daemon.url())); });
    daemon.waitForRequests(static_cast<std::size_t>(round % 2));
    http.cancelAll();
    const HttpAnswer got = answer.get();
    EXPECT_TRUE(got.error == HttpError::cancelled ? !got.hasBody : got.status == 409) << got.message;
    daemon.forgetRequests();
  }
}

}  // namespace
}  // namespace seedmote::platform
