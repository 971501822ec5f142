// Measures the JSON room against a yardstick. Each round runs both in turn, so that both see the same
// machine; the numbers are medians. A ratio above 1 means that the JSON room is faster.
//
//   json-bench              all measurements
//   json-bench read N       only reads a list of N torrents a few times, for an instruction counter
//   json-bench write N      only writes it, likewise
//   json-bench memory N     what a list of N torrents keeps resident
#include <malloc.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "json/JSONRepresentation.h"
#include "json/JSONValue.h"
#include "json/YxJsonStreamParser.h"
#include "json/YxJsonStreamParserAccumulator.h"
#include "json/YxJsonStreamParserAdapter.h"

namespace {

using namespace seedmote::json;

// The daemon's answer to a list query: ten fields a torrent, names of about 38 letters.
std::string torrentList(int count) {
  std::mt19937 random(38);
  const auto pick = [&](std::int64_t limit) {
    return std::to_string(std::uniform_int_distribution<std::int64_t>(0, limit)(random));
  };
  std::string text = R"({"arguments":{"torrents":[)";
  for (int id = 1; id <= count; ++id) {
    std::string name = "some-linux-distribution-";
    while (name.size() < 34 + random() % 9) name += static_cast<char>('a' + random() % 26);
    char done[16];
    std::snprintf(done, sizeof(done), "0.%04d", static_cast<int>(random() % 10000));
    const bool complete = random() % 2 == 0;
    if (id != 1) text += ',';
    text += R"({"id":)" + std::to_string(id) + R"(,"isFinished":)" + (random() % 8 == 0 ? "true" : "false");
    text += R"(,"leftUntilDone":)" + (complete ? "0" : pick(4'000'000'000)) + R"(,"name":")" + name;
    text += R"(","percentDone":)" + std::string(complete ? "1" : done) + R"(,"rateDownload":)";
    text +=
        (complete ? "0" : pick(2'000'000)) + R"(,"rateUpload":)" + pick(500'000) + R"(,"status":)" + pick(6);
    text += R"(,"totalSize":)" + pick(40'000'000'000) + R"(,"uploadedEver":)" + pick(90'000'000'000) + "}";
  }
  return text + R"(]},"result":"success"})" + "\n";
}

// Processor time, not wall time: other programs on the machine then disturb less.
double now() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double seconds(const std::function<void()>& work, int times) {
  const double start = now();
  for (int i = 0; i < times; ++i) work();
  return (now() - start) / times;
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void compare(const char* what, std::size_t bytes, int rounds, const std::function<void()>& ours,
             const std::function<void()>& yardstick) {
  const int times = bytes < 100'000 ? 200 : 1;
  seconds(ours, times);
  seconds(yardstick, times);
  std::vector<double> our, other, ratios;
  for (int i = 0; i < rounds; ++i) {
    our.push_back(seconds(ours, times));
    other.push_back(seconds(yardstick, times));
    ratios.push_back(other.back() / our.back());
  }
  const auto rate = [&](double time) { return static_cast<double>(bytes) / time / 1e6; };
  std::printf("%-38s %9.3f ms %7.0f MB/s   yardstick %9.3f ms %7.0f MB/s   ratio %5.2f\n", what,
              median(our) * 1e3, rate(median(our)), median(other) * 1e3, rate(median(other)), median(ratios));
  std::fflush(stdout);
}

void check(bool good) {
  if (good) return;
  std::fprintf(stderr, "a result is wrong\n");
  std::exit(1);
}

void readOurs(const std::string& text) {
  check(static_cast<bool>(JSONValue(text)));
}

void readInPieces(std::string_view text, std::size_t size) {
  YxJsonStreamParserAccumulator accumulator;
  YxJsonStreamParserAdapter adapter;
  adapter.setDelegate(&accumulator);
  YxJsonStreamParser<YxJsonStreamParserAdapter> parser;
  parser.setDelegate(&adapter);
  auto status = YxJsonStreamParserStatus::YxJsonStreamParserWaitingForData;
  for (std::size_t at = 0; at < text.size(); at += size) status = parser.parse(text.substr(at, size));
  check(status == YxJsonStreamParserStatus::YxJsonStreamParserComplete);
}

void readYardstick(const std::string& text) {
  rapidjson::Document document;
  document.Parse<rapidjson::kParseValidateEncodingFlag>(text.data(), text.size());
  check(!document.HasParseError());
}

void measureReading(int torrents, int rounds) {
  const std::string text = torrentList(torrents);
  compare(("read " + std::to_string(torrents) + " torrents").c_str(), text.size(), rounds,
          [&] { readOurs(text); }, [&] { readYardstick(text); });
}

void measurePieces(int torrents, int rounds) {
  const std::string text = torrentList(torrents);
  for (const std::size_t size : {1024, 65536}) {
    compare(("  pieces of " + std::to_string(size) + " against whole").c_str(), text.size(), rounds,
            [&] { readInPieces(text, size); }, [&] { readInPieces(text, text.size()); });
  }
}

void measureWriting(const char* what, const std::string& text, int rounds) {
  const Value value = JSONValue(text);
  rapidjson::Document document;
  document.Parse<rapidjson::kParseValidateEncodingFlag>(text.data(), text.size());
  compare(
      what, text.size(), rounds, [&] { check(JSONRepresentation(value)->size() > text.size() / 2); },
      [&] {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        check(document.Accept(writer));
      });
}

// One text of 30 MB, like a large torrent file on its way to the daemon.
std::string longText() {
  std::string text(30'000'000, 'A');
  std::mt19937 random(1);
  constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (char& letter : text) letter = letters[random() % letters.size()];
  return R"({"method":"torrent-add","arguments":{"metainfo":")" + text + "\"}}";
}

double residentMiB() {
  std::ifstream status("/proc/self/statm");
  long total = 0, resident = 0;
  status >> total >> resident;
  return static_cast<double>(resident) * 4096 / 1048576;
}

template <class Read>
void measureMemory(const char* what, const std::string& text, Read read) {
  malloc_trim(0);
  const double base = residentMiB();
  const auto kept = read(text);
  malloc_trim(0);
  std::printf("%-38s keeps %6.1f MiB (text %.1f MiB)\n", what, residentMiB() - base,
              static_cast<double>(text.size()) / 1048576);
}

void measureKeptTrees(int torrents) {
  const std::string text = torrentList(torrents);
  measureMemory("tree, first read", text, [](const std::string& from) { return JSONValue(from); });
  measureMemory("yardstick", text, [](const std::string& from) {
    auto document = std::make_unique<rapidjson::Document>();
    document->Parse<rapidjson::kParseValidateEncodingFlag>(from.data(), from.size());
    return document;
  });
}

}  // namespace

int main(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  const int torrents = argc > 2 ? std::atoi(argv[2]) : 10'000;
  if (what == "read") {
    const std::string text = torrentList(torrents);
    std::printf("%zu bytes, 10 times\n", text.size());
    for (int i = 0; i < 10; ++i) readOurs(text);
    return 0;
  }
  if (what == "write") {
    const Value value = JSONValue(torrentList(torrents));
    for (int i = 0; i < 300; ++i) check(JSONRepresentation(value).has_value());
    return 0;
  }
  if (what == "memory") {
    measureKeptTrees(torrents);
    return 0;
  }
  measureReading(10, 201);
  measureReading(10'000, 101);
  measurePieces(10'000, 101);
  measureReading(100'000, 21);
  measureWriting("write 10000 torrents", torrentList(10'000), 101);
  measureWriting("write one text of 30 MB", longText(), 11);
  return 0;
}
