// The list's layout pass, without a window: every row's texts and height, with the log lines that it writes.
// The log goes to standard error as always; send that to a file.
//
//   layout-bench              as a section of docs/performance.md
//   layout-bench ROWS TIMES   nothing but so many passes, for a counter of instructions or a profiler
#include <QGuiApplication>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>

#include "bench/Figures.h"
#include "bench/TorrentList.h"
#include "client/RVTrans.h"
#include "json/JSONValue.h"
#include "screens/RVTorrentListController.h"
#include "tests/support/DaemonModel.h"
#include "tests/support/DaemonTexts.h"
#include "tests/support/TestServices.h"
#include "tests/support/TestUiServices.h"

namespace seedmote::bench {

namespace {

using platform::ScriptedHttp;
namespace texts = support::texts;

// The log lets two hundred rows of each line through in a second.
constexpr std::chrono::milliseconds kLogHasRoom{1100};

// A list before a daemon of so many torrents.
class List final {
 public:
  explicit List(int torrents) : answer_(torrentList(torrents)) {
    for (const auto& [key, value] : {std::pair("IP Address", "127.0.0.1"), std::pair("Port", "9091"),
                                     std::pair("Username", ""), std::pair("Timeout", "30")}) {
      services_.setSetting(key, value);
    }
    services_.defaults.setObject("FirstRun", "3");
    services_.scripted.setHandler([this](const platform::HttpRequest& request) { return reply(request); });
    controller_.viewDidLoad();
    controller_.table()->setViewport(0, 700);
    RVTrans::init();
    services_.finishThreads();
  }
  ~List() {
    services_.main.quit();
    services_.threads.join(std::chrono::minutes(1));
    RVTrans::drop();
  }
  List(const List&) = delete;
  List& operator=(const List&) = delete;

  const std::string& answer() const { return answer_; }
  void pass() {
    controller_.refreshAll();
    controller_.table()->layoutIfNeeded();
  }

 private:
  platform::HttpAnswer reply(const platform::HttpRequest& request) const {
    const auto asks = [&](const char* what) { return request.body.find(what) != std::string::npos; };
    if (request.headers.at(0).value != "abc") {
      return ScriptedHttp::answer(409, texts::conflictBody("abc"));
    }
    return ScriptedHttp::answer(200, asks("torrent-get")   ? answer_
                                     : asks("session-get") ? std::string(texts::kSession)
                                                           : std::string(texts::kStats));
  }

  const std::string answer_;
  support::TestServices services_;
  support::TestUiServices ui_;
  RVTorrentListController controller_;
};

// Of all threads: the log is written by one of its own.
double passSeconds(List& list, int times) {
  const double before = processSeconds();
  for (int i = 0; i < times; ++i) list.pass();
  return (processSeconds() - before) / times;
}

double medianOf(int rounds, const std::function<double()>& measure) {
  std::vector<double> values;
  for (int i = 0; i < rounds; ++i) values.push_back(measure());
  return median(values);
}

double rowNanoseconds(int rows, int rounds, int times) {
  List list(rows);
  list.pass();
  return medianOf(rounds, [&] { return passSeconds(list, times); }) / rows * 1e9;
}

void measurePerRow(Section& section) {
  std::vector<double> few, many, ratios;
  for (int round = 0; round < 5; ++round) {
    few.push_back(rowNanoseconds(1000, 11, 20));
    many.push_back(rowNanoseconds(100'000, 3, 1));
    ratios.push_back(many.back() / few.back());
  }
  section.row("layout pass, time a row, 100,000 rows against 1,000", "1.3", "1.1",
              format("%.2f", median(ratios)),
              format("%.0f ns", median(many)) + format(" against %.0f ns", median(few)));
}

void measureAgainstReading(Section& section) {
  List list(10'000);
  std::vector<double> passes, threads, readings, ratios;
  for (int round = 0; round < 11; ++round) {
    std::this_thread::sleep_for(kLogHasRoom);
    const double before = threadSeconds();
    passes.push_back(passSeconds(list, 1));
    threads.push_back(threadSeconds() - before);
    const double start = processSeconds();
    static_cast<void>(json::JSONValue(list.answer()));
    readings.push_back(processSeconds() - start);
    ratios.push_back(passes.back() / readings.back());
  }
  section.row("layout pass of 10,000 rows with its log lines, against reading their answer", "6 x", "3 x",
              format("%.2f x", median(ratios)),
              format("%.2f ms", median(passes) * 1e3) +
                  format(" (%.2f of them on the main thread)", median(threads) * 1e3) +
                  format(" against %.2f ms", median(readings) * 1e3));
}

int run(int argc, char** argv) {
  if (argc == 3) {
    List list(std::atoi(argv[1]));
    for (int i = 0; i < std::atoi(argv[2]); ++i) list.pass();
    return 0;
  }
  Section section("Layout",
                  "The list's layout pass, which makes every row's texts and asks for its height. "
                  "Processor time of all threads, the log's own among them; log to a file. Medians.");
  measurePerRow(section);
  measureAgainstReading(section);
  return 0;
}

}  // namespace

}  // namespace seedmote::bench

int main(int argc, char** argv) {
  seedmote::platform::MainThread::prepareProcess();
  const QGuiApplication application(argc, argv);
  return seedmote::bench::run(argc, argv);
}
