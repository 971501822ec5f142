#include "platform/core/LoginGuard.h"

#include <gtest/gtest.h>

#include <future>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/core/ScriptedHttp.h"

namespace seedmote::platform {
namespace {

using std::chrono::minutes;

HttpRequest requestOf(Origin origin, double timeout = 20) {
  HttpRequest request{"http://127.0.0.1/", "POST", {}, "{}", timeout};
  request.origin = origin;
  return request;
}

// What the server does in one word of a story (below).
HttpAnswer answerOf(const std::string& what) {
  if (what == "none") {
    return ScriptedHttp::failure(HttpError::timedOut);
  }
  HttpAnswer answer = what.ends_with("...") ? ScriptedHttp::failure(HttpError::closed)
                                            : ScriptedHttp::answer(0, "from the server");
  answer.status = std::stoi(what);
  return answer;
}

class LoginGuardTest : public testing::Test {
 protected:
  // "t401" is a timer's request that is sent and answered 401, "u200" one of the user's, "tnone" one without
  // an answer, "t401..." one whose answer breaks off; "t!" is answered by the guard; "act" is the user's.
  std::string tell(const std::string& word) {
    if (word == "act") {
      guard.userActed();
      return word;
    }
    http.setHandler([&](const auto&) { return word == "t!" ? HttpAnswer() : answerOf(word.substr(1)); });
    const std::size_t before = http.requests().size();
    const HttpAnswer answer = guard.exchange(requestOf(word[0] == 'u' ? Origin::user : Origin::timer));
    if (http.requests().size() > before) {
      return word == "t!" ? "t was sent" : word;
    }
    const bool saysWhy = answer.body.starts_with("<h1>401: Unauthorized</h1><p>Not sent");
    return answer.status == 401 && answer.hasBody && saysWhy ? "t!" : "t went nowhere";
  }
  std::future<HttpAnswer> askMeanwhile(Origin origin, double timeout = 20) {
    return std::async(std::launch::async, [=, this] { return guard.exchange(requestOf(origin, timeout)); });
  }
  // Three requests of timers that stay under way until http.release().
  std::vector<std::future<HttpAnswer>> sendThree() {
    http.hold();
    std::vector<std::future<HttpAnswer>> three;
    for (int i = 0; i < 3; ++i) {
      three.push_back(askMeanwhile(Origin::timer));
    }
    EXPECT_TRUE(http.waitForRequests(3, minutes(1)));
    return three;
  }
  void alwaysAnswer(int status) {
    http.setHandler([status](const auto&) { return ScriptedHttp::answer(status, "from the server"); });
  }

  ScriptedHttp http;
  LoginGuard guard{http};
};

TEST_F(LoginGuardTest, AfterThreeRefusalsInARowTimersAskNoMoreUntilTheUserActs) {
  const char* stories[] = {
      "t401 t401 t401 t! t! t!",
      "t401 t401 t401 t! act t401 t401 t401 t!",
      "t401 t401 t401 t! u401 t401 t401 t!",
      "t401 t401 t401 t! u200 t200 t401 t401 t401 t!",
      "u401 u401 u401 u401 u401 t401 t401 t!",
      "t401 t401 t409 t401 t401 t200 t401 t401 t403 t401 t401 t401 t!",
      "t401 tnone t401 tnone tnone t401 t!",
      "t401 t401 t200... t401 t!",
      "t401... t401... t401... t!",
      "t401 act t401 t401 act t401 t401 t401 t!",
  };
  for (const std::string story : stories) {
    guard.userActed();
    std::string happened;
    std::istringstream words(story);
    for (std::string word; words >> word;) {
      happened += (happened.empty() ? "" : " ") + tell(word);
    }
    EXPECT_EQ(happened, story);
  }
}

TEST_F(LoginGuardTest, AFourthRequestWaitsForTheThreeThatCouldBeRefused) {
  alwaysAnswer(401);
  auto three = sendThree();
  auto fourth = askMeanwhile(Origin::timer);
  EXPECT_EQ(guard.exchange(requestOf(Origin::timer, 0.02)).error, HttpError::timedOut);
  EXPECT_EQ(http.requests().size(), 3U);
  http.release();
  EXPECT_EQ(fourth.get().status, 401);
  EXPECT_EQ(http.requests().size(), 3U);
  EXPECT_EQ(three.front().get().body, "from the server");
}

TEST_F(LoginGuardTest, OthersGoOnceNothingIsWrong) {
  alwaysAnswer(200);
  const auto three = sendThree();
  std::vector<std::future<HttpAnswer>> others;
  for (int i = 0; i < 20; ++i) {
    others.push_back(askMeanwhile(Origin::timer));
  }
  http.release();
  for (auto& other : others) {
    EXPECT_EQ(other.get().body, "from the server");
  }
  const double timeout = http.requests().back().timeoutSeconds;
  EXPECT_TRUE(timeout > 0 && timeout <= 20) << timeout;
}

TEST_F(LoginGuardTest, TheUsersActLetsOthersGoAndForgetsWhatWasSentBefore) {
  alwaysAnswer(401);
  auto three = sendThree();
  auto fourth = askMeanwhile(Origin::timer);
  guard.userActed();  // a better password
  ASSERT_TRUE(http.waitForRequests(4, minutes(1)));
  auto users = askMeanwhile(Origin::user);
  ASSERT_TRUE(http.waitForRequests(5, minutes(1)));
  http.release();
  for (auto& old : three) {
    old.wait();
  }
  fourth.wait();
  users.wait();
  for (const char* word : {"t401", "t401", "t!"}) {
    EXPECT_EQ(tell(word), word) << "the user's refusal alone counts";
  }
}

TEST_F(LoginGuardTest, QuittingEndsTheWait) {
  const auto three = sendThree();
  auto fourth = askMeanwhile(Origin::timer);
  auto fifth = askMeanwhile(Origin::timer);
  guard.cancelAll();
  EXPECT_EQ(fourth.get().error, HttpError::cancelled);
  EXPECT_EQ(fifth.get().error, HttpError::cancelled);
  EXPECT_EQ(http.requests().size(), 3U);
}

TEST_F(LoginGuardTest, ManyThreadsTogetherAreRefusedThreeTimesForEachAct) {
  alwaysAnswer(401);
  constexpr int kThreads = 8;
  constexpr int kActs = 50;
  std::vector<std::thread> timers;
  for (int i = 0; i < kThreads; ++i) {
    timers.emplace_back([&] {
      for (int turn = 0; turn < 200; ++turn) {
        EXPECT_EQ(guard.exchange(requestOf(Origin::timer)).status, 401);
      }
    });
  }
  for (int act = 0; act < kActs; ++act) {
    if (act % 2 == 0) {
      guard.userActed();
    } else {
      EXPECT_EQ(guard.exchange(requestOf(Origin::user)).body, "from the server");
    }
    std::this_thread::yield();
  }
  for (std::thread& timer : timers) {
    timer.join();
  }
  EXPECT_LE(http.requests().size(), 3U * (kActs + 1));
}

}  // namespace
}  // namespace seedmote::platform
