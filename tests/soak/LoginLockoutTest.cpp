// A hundred refused logins lock everybody out of a daemon. The whole program, with every timer that asks the
// daemon by itself, runs for hours of driven clock before one that refuses its login at random times: between
// two acts of a person no more than three in a row are refused. SEEDMOTE_HOURS in the environment says how
// long, SEEDMOTE_SEED what happens.
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <utility>

#include "app/InboxCourier.h"
#include "app/tests/AppFixture.h"
#include "tests/support/LoopbackDaemon.h"
#include "tests/support/TinyTorrent.h"

namespace seedmote::soak {
namespace {

using support::LoopbackDaemon;
using support::RecordedRequest;
using support::Reply;

constexpr int kMostRefused = 3;

double hours() {
  const char* const text = std::getenv("SEEDMOTE_HOURS");
  return text != nullptr ? std::atof(text) : 3;
}

class LoginLockoutTest : public AppFixture {
 protected:
  LoginLockoutTest() {
    platform::silenceLog();
    QObject::connect(&hand_, &QTimer::timeout, &hand_, [this] {
      // The pause after a file: the main thread waits for the clock.
      if (services && services->main.isWaiting() && isAsleep()) services->clock.advanceSeconds(1);
    });
    hand_.start(1);
  }
  ~LoginLockoutTest() override {
    if (services) services->finishThreads();
    courier.reset();
  }
  // Every timer that asks by itself is alive: the statistics, the session watcher, the refresher, the inbox.
  void start(int port) {
    install(platform::Idiom::tablet);
    confirmSettings(port);
    store.timeoutChanged({"5"});
    store.usernameChanged({"user"});
    store.passwordChanged({"right"});
    open();
    delegate->refreshEvery(3);
    courier = std::make_unique<InboxCourier>(inbox, *delegate);
    pass(10);
  }
  void pass(double seconds) {
    for (double second = 0; second < seconds; ++second) {
      advance(1);
      for (int turn = 0; turn < 400 && !services->threads.join(std::chrono::milliseconds(1)); ++turn) {
        services->settle();
      }
      if (ui.alerts.isShown()) ui.alerts.press(0);
      lines.clear();
    }
  }
  void handOver(int number) {
    const std::string path = folder.filePath(QStringLiteral("some.torrent")).toStdString();
    std::ofstream(path) << support::makeTinyTorrent("handed " + std::to_string(number), number).metainfo;
    inbox.take({path});
  }

  QTimer hand_;
  QTemporaryDir folder;
  platform::Inbox inbox{folder.filePath(QStringLiteral("inbox")).toStdString(), [] {}};
  std::unique_ptr<InboxCourier> courier;
};

TEST_F(LoginLockoutTest, TimersAreRefusedThreeTimesBetweenTwoActsAtMost) {
  const unsigned seed = std::getenv("SEEDMOTE_SEED") != nullptr
                            ? static_cast<unsigned>(std::atoi(std::getenv("SEEDMOTE_SEED")))
                            : std::random_device()() % 100000;
  std::mt19937 random(seed);
  const auto any = [&random](int from, int to) { return std::uniform_int_distribution(from, to)(random); };
  LoopbackDaemon daemon;
  std::atomic<int> inARow{0};
  std::atomic<int> refused{0};
  daemon.model().setCredentials("user:right");
  daemon.setHandler([&](const RecordedRequest& request) {
    Reply reply = daemon.model().reply(request);
    const bool isRefused = reply.bytes.starts_with("HTTP/1.1 401");
    inARow = isRefused ? inARow + 1 : 0;
    refused += isRefused ? 1 : 0;
    return reply;
  });
  start(daemon.port());
  daemon.model().setCredentials("user:another");
  const double end = hours() * 3600;
  int worst = 0;
  bool listens = true;
  for (double second = 0; second < end;) {
    const int happening = any(0, 9);
    if (happening <= 1) daemon.model().setCredentials(happening == 0 ? "user:another" : "user:right");
    if (happening == 2) daemon.changeSessionId();
    if (happening == 3) daemon.dropConnections();
    if (happening == 4 && std::exchange(listens, !listens)) daemon.stopListening();
    if (happening == 4 && listens) daemon.listenAgain();
    if (happening == 5) bar().doRefresh();
    if (happening == 6) store.passwordChanged({any(0, 1) == 0 ? "right" : "another"});
    if (happening == 7) handOver(any(1, 1000));
    pass(12);  // what the act itself sends, the inbox's delivery included
    inARow = 0;
    services->http.userActed();
    const int length = any(10, 300);
    pass(length);
    second += 12 + length;
    worst = std::max<int>(worst, inARow);
    ASSERT_LE(worst, kMostRefused) << "SEEDMOTE_SEED=" << seed << " at " << second << " s";
  }
  std::printf("seed %u: %d logins refused in %.1f hours, at most %d in a row\n", seed, refused.load(),
              hours(), worst);
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace seedmote::soak
