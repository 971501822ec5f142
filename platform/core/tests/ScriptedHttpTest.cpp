#include "platform/core/ScriptedHttp.h"

#include <gtest/gtest.h>

#include <future>

namespace seedmote::platform {
namespace {

HttpRequest request(const std::string& url) {
  return {url, "POST", {}, "{}", 1};
}

TEST(ScriptedHttp, AnswersFromTheQueueThenFromTheHandler) {
  ScriptedHttp http;
  EXPECT_EQ(http.exchange(request("none")).error, HttpError::other);
  http.setHandler([](const HttpRequest& asked) { return ScriptedHttp::answer(200, asked.url); });
  http.enqueue(ScriptedHttp::answer(409, "first"));
  http.enqueue(ScriptedHttp::failure(HttpError::refused));
  EXPECT_EQ(http.exchange(request("a")).body, "first");
  EXPECT_EQ(http.exchange(request("b")).error, HttpError::refused);
  EXPECT_EQ(http.exchange(request("c")).body, "c");
  ASSERT_EQ(http.requests().size(), 4u);
  EXPECT_EQ(http.requests().back().url, "c");
}

TEST(ScriptedHttp, HoldsUntilReleasedOrCancelled) {
  ScriptedHttp http;
  http.hold();
  http.enqueue(ScriptedHttp::answer(200, "released"));
  const auto ask = [&] { return http.exchange(request("held")); };
  std::future<HttpAnswer> first = std::async(std::launch::async, ask);
  ASSERT_TRUE(http.waitForRequests(1, std::chrono::seconds(20)));
  http.release();
  EXPECT_EQ(first.get().body, "released");
  http.hold();
  std::future<HttpAnswer> second = std::async(std::launch::async, ask);
  ASSERT_TRUE(http.waitForRequests(2, std::chrono::seconds(20)));
  http.cancelAll();
  EXPECT_EQ(second.get().error, HttpError::cancelled);
  EXPECT_EQ(ask().error, HttpError::cancelled);
  EXPECT_EQ(http.requests().size(), 2u);
}

}  // namespace
}  // namespace seedmote::platform
