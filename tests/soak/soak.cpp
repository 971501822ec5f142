// The program in one process, with its real layouts, clock, threads and sockets, before the real daemon;
// somebody does whatever comes to mind, and things happen to the daemon. Every now and then all holds still,
// the list must be the daemon's, and what the process holds is written down. At the end that must be flat
// (Ledger.h says what that is).
//
//   soak [--seconds N] [--seed N] [--phone] [--stay] [--only WAY] [--log FILE]
//
// With --stay one and the same program stays open all the time: nobody closes it, and the password stays.
// With --only that somebody does one thing again and again ("row", "settings", "swipe"; see Person.cpp),
// nothing happens to the daemon, and censuses are frequent: where the whole is not flat, this says what
// gathers. Without a display it wants QT_QPA_PLATFORM=offscreen and QT_QUICK_BACKEND=software. The program's
// log goes to FILE, else nowhere. Exits 1 when anything was wrong.
#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>

#include "client/RVTrans.h"
#include "json/Log.h"
#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "tests/soak/Ledger.h"
#include "tests/soak/QuietPoint.h"

namespace seedmote::soak {
namespace {

struct Options {
  double seconds = 3600;
  unsigned seed = 0;
  bool phone = false;
  bool stay = false;
  std::string only;
};

class Soak final {
 public:
  Soak(const Options& options, DaemonKeeper& keeper, std::string folder)
      : options_(options),
        keeper_(keeper),
        random_(options.seed),
        person_(loop_, keeper, options.phone, options.seed, std::move(folder)),
        quiet_(loop_, keeper, person_) {
    if (options.stay) person_.stay();
    if (!options.only.empty() && !person_.doOnly(options.only)) fail("nobody knows the way " + options.only);
  }

  // Main thread. Whether all was well.
  bool run();

 private:
  static constexpr double kSampleSeconds = 10;
  static constexpr int kCensusTorrents = 40;

  void live();
  void actUntil(double second);
  void meddle();
  void look(const char* when);
  void takeCensus();
  void fail(const std::string& what);
  double seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  }
  double any(double from, double to) { return std::uniform_real_distribution(from, to)(random_); }

  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  const Options options_;
  DaemonKeeper& keeper_;
  std::mt19937 random_;
  MainLoop loop_;
  Person person_;
  QuietPoint quiet_;
  Ledger ledger_;
  std::atomic<bool> over_{false};
  int faults_ = 0;
  int meddlings_ = 0;
  double nextSample_ = 0;
  double nextMeddling_ = 0;
  double slowestEnd_ = 0;  // seconds
};

void Soak::fail(const std::string& what) {
  std::printf("FAILED at %.0f s: %s\n", seconds(), what.c_str());
  std::fflush(stdout);
  ++faults_;
}

bool Soak::run() {
  std::printf("seed %u, %.0f s, %s\n%-7s %7s %8s %8s %6s %8s %9s\n", options_.seed, options_.seconds,
              options_.phone ? "phone" : "tablet", "", "seconds", "resident", "heap", "files", "threads",
              "torrents");
  std::thread life([this] { live(); });
  int starts = 0;
  for (; !over_; ++starts) {
    std::optional<Shell> shell(
        std::in_place, options_.phone ? platform::Idiom::phone : platform::Idiom::tablet, !options_.stay);
    loop_.attach(&*shell);
    shell->run();
    loop_.attach(nullptr);
    const double end = seconds();
    shell.reset();
    RVTrans::drop();
    slowestEnd_ = std::max(slowestEnd_, seconds() - end);
  }
  life.join();
  std::printf(
      "%d acts, %d of the daemon, %d starts of the program, %d refreshes; longest wait for the main "
      "thread %d ms, for the end of the program %.0f ms\n",
      person_.acts(), meddlings_, starts, quiet_.refreshes(), loop_.longest(), slowestEnd_ * 1000);
  for (const std::string& fault : ledger_.judge()) fail(fault);
  return faults_ == 0;
}

// The person's thread. A census about once a minute, at least three in all.
void Soak::live() {
  const double period = std::min(60.0, options_.seconds / (options_.only.empty() ? 2 : 10));
  takeCensus();
  while (seconds() < options_.seconds) {
    actUntil(std::min(seconds() + period, options_.seconds));
    look("after whatever happened");
    takeCensus();
  }
  over_ = true;
  loop_.post([] { platform::services().main.quit(); });
}

void Soak::actUntil(double second) {
  nextMeddling_ = seconds();
  while (seconds() < second) {
    if (options_.only.empty() && seconds() >= nextMeddling_ && !keeper_.isBusy()) meddle();
    person_.act();
    if (seconds() >= nextSample_) {
      nextSample_ = seconds() + kSampleSeconds;
      std::size_t torrents = 0;
      const bool runs = loop_.run([&torrents](Shell&) {
        torrents = RVTrans::isConnected() ? RVTrans::getTorrentList()->count() : 0;
      });
      if (runs) ledger_.sample(Holding::now(seconds()), torrents);
    }
  }
}

// What can happen to a daemon.
void Soak::meddle() {
  ++meddlings_;
  const double hurry = std::min(1.0, options_.seconds / 300);
  nextMeddling_ = seconds() + any(2, 25) * std::max(0.15, hurry);
  const double what = any(0, 1);
  if (what < 0.4) {
    keeper_.restart();
  } else if (what < 0.55) {
    keeper_.stopFor(any(0.5, 20 * hurry));
  } else if (what < 0.6 && !options_.stay) {
    keeper_.changePassword();
  } else {
    keeper_.fill(static_cast<int>(any(0, 1) < 0.5 ? any(1, 60) : any(100, 1400 * hurry + 100)));
  }
}

void Soak::look(const char* when) {
  const std::string wrong = quiet_.find();
  if (!wrong.empty()) fail(std::string(when) + ": " + wrong);
}

// Always in a window of one size: what is painted into lies on the heap as well.
void Soak::takeCensus() {
  keeper_.bringTo(kCensusTorrents);
  loop_.run([this](Shell& shell) {
    shell.delegate().window().resize(options_.phone ? QSize(667, 375) : QSize(1024, 768));
  });
  look("at a census");
  std::this_thread::sleep_for(std::chrono::milliseconds(500));  // for what ends by itself
  loop_.run([this](Shell& shell) {
    shell.delegate().window().engine()->collectGarbage();
    malloc_trim(0);
    ledger_.census(Holding::now(seconds()));
  });
}

Options parse(const QCoreApplication& application) {
  QCommandLineParser parser;
  const QCommandLineOption length(QStringLiteral("seconds"), {}, QStringLiteral("N"), QStringLiteral("3600"));
  const QCommandLineOption seed(QStringLiteral("seed"), {}, QStringLiteral("N"));
  const QCommandLineOption phone(QStringLiteral("phone"));
  const QCommandLineOption log(QStringLiteral("log"), {}, QStringLiteral("FILE"),
                               QStringLiteral("/dev/null"));
  const QCommandLineOption stay(QStringLiteral("stay"));
  const QCommandLineOption only(QStringLiteral("only"), {}, QStringLiteral("WAY"));
  parser.addOptions({length, seed, phone, stay, only, log});
  parser.process(application);
  const int file =
      open(parser.value(log).toUtf8().constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  dup2(file, STDERR_FILENO);
  close(file);
  const unsigned chosen = parser.isSet(seed) ? parser.value(seed).toUInt() : std::random_device()();
  return {parser.value(length).toDouble(), chosen, parser.isSet(phone),
          parser.isSet(stay) || parser.isSet(only), parser.value(only).toStdString()};
}

int soak(int argc, char** argv) {
  if (!support::RealDaemon::absence().empty()) {
    std::printf("left out: %s\n", support::RealDaemon::absence().c_str());
    return std::getenv("CI") != nullptr ? 1 : 0;
  }
  const QTemporaryDir folder;
  for (const char* home : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"}) {
    qputenv(home, folder.path().toUtf8());
  }
  json::setLogFunction([](std::string_view text) { platform::log("%@", text); });
  platform::MainThread::prepareProcess();
  const QGuiApplication application(argc, argv);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  const Options options = parse(application);
  DaemonKeeper keeper;
  Shell::install(keeper.port(), DaemonKeeper::kUser, keeper.password());
  return Soak(options, keeper, folder.path().toStdString()).run() ? 0 : 1;
}

}  // namespace
}  // namespace seedmote::soak

int main(int argc, char** argv) {
  return seedmote::soak::soak(argc, argv);
}
