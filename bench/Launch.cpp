#include "bench/Launch.h"

#include <QDir>
#include <QElapsedTimer>
#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

namespace seedmote::bench {

namespace {

constexpr std::chrono::microseconds kLookEvery{500};
constexpr double kStandsStill = 1.5;  // seconds
constexpr double kPatience = 90;
constexpr int kSomeText = 100;  // edges
constexpr int kPatienceMs = 30'000;

QString screenFile() {
  return qEnvironmentVariable("SEEDMOTE_BENCH_SCREEN");
}

void checkThat(bool good, const QString& what) {
  if (!good) throw std::runtime_error(what.toStdString());
}

double secondsSince(const QElapsedTimer& timer) {
  return static_cast<double>(timer.nsecsElapsed()) * 1e-9;
}

}  // namespace

Stage::Stage() : screen_(screenFile().toStdString()) {
  for (const char* kept : {"PATH", "DISPLAY"}) {
    environment_.insert(QString::fromLatin1(kept), qEnvironmentVariable(kept));
  }
  for (const char* folder :
       {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
    environment_.insert(QString::fromLatin1(folder), home_.path());
  }
  environment_.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
  environment_.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
  environment_.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
  environment_.insert(QStringLiteral("SEEDMOTE_ALONE"), QStringLiteral("1"));
}

void Stage::storeSettings(const QString& seedmote, int port) const {
  QStringList arguments;
  for (const QString& setting :
       {QStringLiteral("IP Address=127.0.0.1"), QStringLiteral("Port=%1").arg(port),
        QStringLiteral("Username="), QStringLiteral("Password="), QStringLiteral("FirstRun=3"),
        QStringLiteral("SavedVersion=" SEEDMOTE_VERSION)}) {
    arguments << QStringLiteral("--set") << setting;
  }
  QProcess process;
  process.setProcessEnvironment(environment_);
  process.start(seedmote, arguments);
  checkThat(process.waitForFinished(kPatienceMs) && process.exitCode() == 0,
            QStringLiteral("the settings are refused: ") + QString::fromUtf8(process.readAllStandardError()));
}

Launch::Launch(const Stage& stage, const QString& program, const QStringList& arguments) : stage_(stage) {
  QElapsedTimer timer;
  timer.start();
  while (!isBlack(stage_.screen().strip())) {
    checkThat(secondsSince(timer) < kPatience, QStringLiteral("the window of before does not go"));
    std::this_thread::sleep_for(kLookEvery);
  }
  process_.setProcessEnvironment(stage_.environment());
  process_.setStandardErrorFile(stage_.logFile());
  process_.setStandardOutputFile(QProcess::nullDevice());
  process_.start(program, arguments);
  checkThat(process_.waitForStarted(), program + QStringLiteral(" does not start"));
}

Launch::~Launch() {
  process_.terminate();
  if (!process_.waitForFinished(kPatienceMs)) process_.kill();
  process_.waitForFinished();
}

StartFigures Launch::watch() {
  struct Change {
    double cpu, wall;
    int edges;
  };
  std::vector<Change> changes;
  QElapsedTimer sinceStart, sinceChange;
  sinceStart.start();
  sinceChange.start();
  std::vector<std::uint32_t> before = stage_.screen().strip();
  while (changes.empty() || changes.back().edges < kSomeText || secondsSince(sinceChange) < kStandsStill) {
    std::this_thread::sleep_for(kLookEvery);
    std::vector<std::uint32_t> now = stage_.screen().strip();
    if (now != before) {
      changes.push_back({processSeconds(process()), secondsSince(sinceStart), edges(now)});
      before = std::move(now);
      sinceChange.start();
    }
    checkThat(secondsSince(sinceStart) < kPatience, QStringLiteral("nothing is shown"));
  }
  const auto shown = std::find_if(changes.begin(), changes.end(), [&](const Change& change) {
    return change.edges * 2 > changes.back().edges;
  });
  return {changes.front().cpu, shown->cpu, processSeconds(process()), shown->wall, Memory::of(process())};
}

}  // namespace seedmote::bench
