// Seedmote as it is installed, against two yardsticks, each a process of its own and started in turn: what a
// start costs until the list is shown, and what rest costs. bench/run.sh starts the X server that it needs.
//
//   whole-process starts SEEDMOTE [ROUNDS]   as a section of docs/performance.md
//   whole-process rest SEEDMOTE [SPANS]      likewise; a span is a minute
//   whole-process instructions SEEDMOTE      likewise; under callgrind
//   whole-process profile SEEDMOTE           likewise: what they are spent on
//
// "Shown" is found from outside and the same way for all: the X server keeps its picture in a file, and a
// strip of it, where the first row's texts stand, is looked at two thousand times a second, until it has
// letters and has stood still for a second and a half. Its first change is the first frame. The list is shown
// with the first picture that has half as many edges as the last one: letters have them, the shade of a
// message has not. The process's processor time is read at each change: all its threads, to the nanosecond.
// Seedmote begins to connect three seconds after its start, and looks every two seconds whether there is a
// list; what the time until then costs is part of the figure.
#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <chrono>
#include <iostream>
#include <map>
#include <memory>
#include <thread>
#include <vector>

#include "bench/Figures.h"
#include "bench/Launch.h"
#include "bench/PreparedDaemonProcess.h"
#include "bench/Profile.h"

namespace seedmote::bench {

namespace {

constexpr int kSizes[] = {1, 10'000, 50'000, 100'000};
constexpr std::chrono::seconds kSettle{15};
constexpr std::chrono::seconds kSpan{60};

using Figure = double (*)(const StartFigures&);

std::vector<double> all(const std::vector<StartFigures>& runs, Figure figure) {
  std::vector<double> values;
  for (const StartFigures& run : runs) values.push_back(figure(run));
  return values;
}

double medianOf(const std::vector<StartFigures>& runs, Figure figure) {
  return median(all(runs, figure));
}

QString program(const char* name) {
  return QCoreApplication::applicationDirPath() + QLatin1Char('/') + QString::fromLatin1(name);
}

struct Pair {
  std::vector<StartFigures> ours, bare;
};

struct Limits {
  const char* reach = "";
  const char* aim = "";
};

class Starts {
 public:
  explicit Starts(QString seedmote) : seedmote_(std::move(seedmote)) {
    for (const int size : kSizes) daemons_[size] = std::make_unique<PreparedDaemonProcess>(size);
  }

  void measure(int rounds) {
    round();  // fills caches
    pairs_.clear();
    texts_.clear();
    for (int i = 0; i < rounds; ++i) {
      std::cerr << "round " << i + 1 << " of " << rounds << std::endl;
      round();
    }
  }

  void print() {
    Section section("Start",
                    "Seedmote against **bare** (a window, one request by libcurl, RapidJSON, Qt Quick's "
                    "list view, no log) and **text** (a window with a few texts), in turn. Processor "
                    "time of the process with all its threads, log to a file, software renderer, Xvfb. "
                    "Medians of " +
                        std::to_string(texts_.size()) + " rounds.");
    row(section, "start to first frame, CPU, against text", {"1.5 x", "1.3 x"}, 1e3, "ms",
        medianOf(pairs_[1].ours, firstFrame), medianOf(texts_, firstFrame));
    row(section, "the same, with 1 torrent until shown, against bare", {}, 1e3, "ms",
        medianOf(pairs_[1].ours, shown), medianOf(pairs_[1].bare, shown));
    row(section, "start until shown, CPU, 10,000 less 1 torrent", {"3 x", "2 x"}, 1e3, "ms",
        difference(&Pair::ours), difference(&Pair::bare));
    printShown(section, 10'000, {"2.5 x", "1.5 x"});
    printShown(section, 50'000, {"2.5 x", "1.5 x"});
    printShown(section, 100'000, {});
    printMemory(section, 1, {});
    printMemory(section, 10'000, {"1.3 x", "1.2 x"});
    printMemory(section, 50'000, {"1.5 x", "1.4 x"});
    printMemory(section, 100'000, {});
  }

 private:
  static double firstFrame(const StartFigures& run) { return run.firstFrame; }
  static double shown(const StartFigures& run) { return run.shown; }
  static double quiet(const StartFigures& run) { return run.quiet; }
  static double wall(const StartFigures& run) { return run.wall; }
  static double resident(const StartFigures& run) { return run.memory.resident; }
  static double anonymous(const StartFigures& run) { return run.memory.anonymous; }
  static double proportional(const StartFigures& run) { return run.memory.proportional; }
  static double peak(const StartFigures& run) { return run.memory.peak; }

  void round() {
    texts_.push_back(Launch(stage_, program("text")).watch());
    for (const int size : kSizes) {
      const PreparedDaemonProcess& daemon = *daemons_[size];
      stage_.storeSettings(seedmote_, daemon.port());
      pairs_[size].ours.push_back(Launch(stage_, seedmote_).watch());
      pairs_[size].bare.push_back(Launch(stage_, program("bare"), {daemon.url()}).watch());
    }
  }

  double difference(std::vector<StartFigures> Pair::*runs) {
    const std::vector<double> many = all(pairs_[10'000].*runs, shown), one = all(pairs_[1].*runs, shown);
    std::vector<double> values;
    for (std::size_t i = 0; i < one.size(); ++i) values.push_back(many[i] - one[i]);
    return median(values);
  }

  static void row(Section& section, const std::string& what, Limits limits, double scale, const char* unit,
                  double ours, double yardstick, const std::string& note = "") {
    section.row(what, limits.reach, limits.aim, format("%.2f x", ours / yardstick),
                format("%.0f ", ours * scale) + unit + format(" against %.0f", yardstick * scale) + note);
  }

  void printShown(Section& section, int size, Limits limits) {
    const Pair& pair = pairs_[size];
    row(section, "start until shown, CPU, " + std::to_string(size), limits, 1e3, "ms",
        medianOf(pair.ours, shown), medianOf(pair.bare, shown),
        format("; when it has come to rest %.0f", medianOf(pair.ours, quiet) * 1e3) +
            format(" against %.0f", medianOf(pair.bare, quiet) * 1e3) +
            format("; shown after %.2f s", medianOf(pair.ours, wall)));
  }

  void printMemory(Section& section, int size, Limits limits) {
    const Pair& pair = pairs_[size];
    const auto both = [&](const char* name, Figure figure) {
      return std::string("; ") + name + format(" %.0f", medianOf(pair.ours, figure)) +
             format(" against %.0f", medianOf(pair.bare, figure));
    };
    row(section, "resident memory then, " + std::to_string(size), limits, 1, "MiB",
        medianOf(pair.ours, resident), medianOf(pair.bare, resident),
        both("its own", anonymous) + both("proportional", proportional) + both("peak", peak));
  }

  QString seedmote_;
  Stage stage_;
  std::map<int, std::unique_ptr<PreparedDaemonProcess>> daemons_;
  std::map<int, Pair> pairs_;
  std::vector<StartFigures> texts_;
};

void measureRest(const QString& seedmote, int spans) {
  const Stage stage;
  const PreparedDaemonProcess daemon(10'000);
  stage.storeSettings(seedmote, daemon.port());
  Launch launch(stage, seedmote);
  launch.watch();
  std::this_thread::sleep_for(kSettle);
  std::vector<double> shares;
  for (int i = 0; i < spans; ++i) {
    const double before = processSeconds(launch.process());
    std::this_thread::sleep_for(kSpan);
    const double used = processSeconds(launch.process()) - before;
    shares.push_back(used / std::chrono::duration<double>(kSpan).count() * 100);
    std::cerr << "span " << i + 1 << " of " << spans << format(": %.4f %%", shares.back()) << std::endl;
  }
  Section section("Rest",
                  "Seedmote with 10,000 torrents, nothing selected, from 15 seconds after the list was "
                  "shown on: the share of a processor over a minute, the median of " +
                      std::to_string(spans) + " minutes.");
  section.row("at rest with 10,000", ".05 %", ".03 %", format("%.3f %%", median(shares)));
}

// All that a run of the program executes, its end among it, in millions.
double instructions(const Stage& stage, const QString& program, const QStringList& arguments = {}) {
  const QStringList counter{QStringLiteral("--tool=callgrind"),
                            QStringLiteral("--callgrind-out-file=/dev/null"), program};
  Launch(stage, QStringLiteral("valgrind"), counter + arguments).watch();
  QFile log(stage.logFile());
  if (!log.open(QIODevice::ReadOnly)) throw std::runtime_error("the counter's log cannot be read");
  const QString text = QString::fromUtf8(log.readAll());
  const QRegularExpression count(QStringLiteral(R"(Collected : (\d+))"));
  QRegularExpressionMatch last;  // those before are of processes that it forked
  if (text.lastIndexOf(count, -1, &last) < 0) throw std::runtime_error("the counter counted nothing");
  return last.captured(1).toDouble() * 1e-6;
}

void measureInstructions(const QString& seedmote) {
  const Stage stage;
  Section section("Instructions of a start",
                  "Millions of instructions from the start to the end of the process, "
                  "which is told to end when the list was shown and the message has "
                  "gone; by callgrind, once.");
  for (const int size : {1, 10'000, 50'000}) {
    const PreparedDaemonProcess daemon(size);
    stage.storeSettings(seedmote, daemon.port());
    const double ours = instructions(stage, seedmote);
    const double bare = instructions(stage, program("bare"), {daemon.url()});
    section.row(std::to_string(size) + " torrents, against bare", "", "", format("%.2f x", ours / bare),
                format("%.0f million", ours) + format(" against %.0f", bare));
  }
}

void measureProfile(const QString& seedmote) {
  const struct {
    const char* what;
    const char* function;
  } rows[] = {
      {"linking libraries, at the start and later", "_dl_relocate_object"},
      {"making the layouts' objects", "QQmlComponent::createWithInitialProperties"},
      {"finding the layouts' types, on a thread of their own", "QQmlTypeLoader::setCachedUnit"},
      {"finding fonts", "QFontDatabasePrivate::load"},
      {"painting", "QSGRenderer::renderScene"},
      {"requests, loading libcurl among them", "seedmote::platform::CurlHttp::exchange"},
      {"reading the answers", "seedmote::json::JSONValue"},
      {"the layout pass", "seedmote::platform::TableView::measureRows"},
      {"bringing rows to the screen", "seedmote::platform::TableRows::showLiveRows"},
  };
  const Stage stage;
  const PreparedDaemonProcess daemon(10'000);
  stage.storeSettings(seedmote, daemon.port());
  const QString file = stage.logFile() + QStringLiteral(".callgrind");
  Launch(stage, QStringLiteral("valgrind"),
         {QStringLiteral("--tool=callgrind"), QStringLiteral("--callgrind-out-file=") + file, seedmote})
      .watch();
  const Profile profile(file);
  Section section(
      "What a start is spent on",
      "Millions of instructions from the start to the end of the process with 10,000 torrents, by "
      "callgrind, once. Some are in two rows: fonts are found while objects are made.");
  for (const auto& row : rows) {
    const double millions = profile.of(row.function);
    section.row(row.what, "", "", format("%.1f %%", millions / profile.total() * 100),
                format("%.0f million", millions));
  }
  section.row("all", "", "", "100 %", format("%.0f million", profile.total()));
}

int run(const QStringList& arguments) {
  if (arguments.size() < 3) {
    std::cerr << "whole-process starts|rest|instructions|profile SEEDMOTE [HOW-OFTEN]\n";
    return 2;
  }
  const bool isRest = arguments[1] == QStringLiteral("rest");
  const int times = arguments.size() > 3 ? arguments[3].toInt() : isRest ? 5 : 7;
  if (isRest) {
    measureRest(arguments[2], times);
    return 0;
  }
  if (arguments[1] == QStringLiteral("instructions")) {
    measureInstructions(arguments[2]);
    return 0;
  }
  if (arguments[1] == QStringLiteral("profile")) {
    measureProfile(arguments[2]);
    return 0;
  }
  Starts starts(arguments[2]);
  starts.measure(times);
  starts.print();
  return 0;
}

}  // namespace

}  // namespace seedmote::bench

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  try {
    return seedmote::bench::run(QCoreApplication::arguments());
  } catch (const std::exception& problem) {
    std::cerr << "whole-process: " << problem.what() << '\n';
    return 1;
  }
}
