// The JSON room against RapidJSON (with encoding validation), measured in turn in one process.
//
//   json-bench                   all of it, as a section of docs/performance.md
//   json-bench machine           what it is measured on
//   json-bench WORK WHAT TIMES   nothing but so many times some work, for a counter of instructions.
//                                WORK: read, write, yardstick-read or yardstick-write; WHAT: the number of
//                                torrents of a list, or "detail"
#include <malloc.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "bench/Figures.h"
#include "bench/TorrentList.h"
#include "json/JSONRepresentation.h"
#include "json/JSONValue.h"
#include "json/YxJsonStreamParser.h"
#include "json/YxJsonStreamParserAccumulator.h"
#include "json/YxJsonStreamParserAdapter.h"

namespace seedmote::bench {

namespace {

using namespace json;

constexpr int kFiles = 2000;

void check(bool good) {
  if (good) return;
  std::fprintf(stderr, "a result is wrong\n");
  std::exit(1);
}

Value readOurs(const std::string& text) {
  Value value = JSONValue(text);
  check(static_cast<bool>(value));
  return value;
}

std::unique_ptr<rapidjson::Document> readYardstick(const std::string& text) {
  auto document = std::make_unique<rapidjson::Document>();
  document->Parse<rapidjson::kParseValidateEncodingFlag>(text.data(), text.size());
  check(!document->HasParseError());
  return document;
}

void writeYardstick(const rapidjson::Document& document) {
  rapidjson::StringBuffer buffer;
  rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
  check(document.Accept(writer));
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

std::string times(const Comparison& measured) {
  const auto time = [](double seconds) {
    return seconds < 1e-4 ? format("%.2f µs", seconds * 1e6) : format("%.2f ms", seconds * 1e3);
  };
  return time(measured.ours) + " against " + time(measured.yardstick);
}

std::string rate(const Comparison& measured, std::size_t bytes) {
  return times(measured) + format(", %.0f MB/s", static_cast<double>(bytes) / measured.ours / 1e6);
}

void measureReading(Section& section, const std::string& what, const std::string& text, Rounds rounds,
                    const char* reach, const char* aim) {
  const Comparison measured = compare(
      rounds, [&] { readOurs(text); }, [&] { readYardstick(text); });
  section.row("read " + what, reach, aim, format("%.2f x", measured.ratio), rate(measured, text.size()));
}

void measurePieces(Section& section) {
  const std::string text = torrentList(10'000);
  for (const std::size_t size : {1024, 65536}) {
    const Comparison measured = compare(
        {101}, [&] { readInPieces(text, size); }, [&] { readOurs(text); });
    section.row(
        "read 10,000 torrents in pieces of " + std::to_string(size / 1024) + " KiB, time against whole",
        "1.3 x", "", format("%.2f x", 1 / measured.ratio), times(measured));
  }
}

void measureWriting(Section& section, const std::string& what, const std::string& text, Rounds rounds) {
  const Value value = readOurs(text);
  const std::unique_ptr<rapidjson::Document> document = readYardstick(text);
  const Comparison measured = compare(
      rounds, [&] { check(JSONRepresentation(value)->size() > text.size() / 2); },
      [&] { writeYardstick(*document); });
  section.row("write " + what, "1.0 x", "1.3 x", format("%.2f x", measured.ratio),
              rate(measured, text.size()));
}

// What `read` leaves resident, in MiB; in a process of its own, whose heap nothing else has used.
template <class Read>
double kept(const std::string& text, Read read) {
  int ends[2];
  check(pipe(ends) == 0);
  const pid_t child = fork();
  check(child >= 0);
  if (child == 0) {
    malloc_trim(0);
    const double base = Memory::of(getpid()).resident;
    const auto tree = read(text);
    const double mebibytes = Memory::of(getpid()).resident - base;
    check(write(ends[1], &mebibytes, sizeof mebibytes) == sizeof mebibytes);
    _exit(0);
  }
  close(ends[1]);
  double mebibytes = 0;
  check(::read(ends[0], &mebibytes, sizeof mebibytes) == sizeof mebibytes);
  close(ends[0]);
  waitpid(child, nullptr, 0);
  return mebibytes;
}

void measureKept(Section& section, const std::string& what, const std::string& text, const char* reach,
                 const char* aim) {
  section.row("tree of " + what + ", kept, MiB", reach, aim, format("%.1f", kept(text, readOurs)),
              format("RapidJSON's %.1f", kept(text, readYardstick)) +
                  format(", the text %.1f", static_cast<double>(text.size()) / 1048576));
}

void measureAll() {
  Section section("JSON",
                  "Times for each time of RapidJSON's, which validates encodings as well: above 1, ours "
                  "is faster. A text is read to a tree that owns all of it, which is freed. Medians of "
                  "the ratios of rounds in turn; the thread's processor time.");
  const std::string list = torrentList(10'000);
  const std::string detail = torrentDetail(kFiles);
  measureReading(section, "10 torrents", torrentList(10), {201, 200}, "", "");
  measureReading(section, "10,000 torrents", list, {101}, "1.6 x", "2 x");
  measureReading(section, "a detail answer of 2,000 files", detail, {201, 3}, "1.6 x", "2 x");
  measureReading(section, "100,000 torrents", torrentList(100'000), {21}, "0.9 x", "1.2 x");
  measurePieces(section);
  measureWriting(section, "10,000 torrents", list, {101});
  measureWriting(section, "one text of 30 MB", longText(), {11});
  measureKept(section, "100,000 torrents", torrentList(100'000), "40", "30");
  measureKept(section, "a detail answer of 2,000 files", detail, "", "");
}

// The same text whatever the work, so that two counts with other TIMES differ by the work alone.
int repeat(const std::string& work, const std::string& what, int count) {
  const std::string text = what == "detail" ? torrentDetail(kFiles) : torrentList(std::atoi(what.c_str()));
  const Value value = readOurs(text);
  const std::unique_ptr<rapidjson::Document> document = readYardstick(text);
  std::printf("%zu\n", text.size());
  for (int i = 0; i < count; ++i) {
    if (work == "read") readOurs(text);
    if (work == "yardstick-read") readYardstick(text);
    if (work == "write") check(JSONRepresentation(value).has_value());
    if (work == "yardstick-write") writeYardstick(*document);
  }
  return 0;
}

}  // namespace

}  // namespace seedmote::bench

int main(int argc, char** argv) {
  if (argc == 4) return seedmote::bench::repeat(argv[1], argv[2], std::atoi(argv[3]));
  if (argc == 2) {
    std::puts(seedmote::bench::machine().c_str());
    return 0;
  }
  seedmote::bench::measureAll();
  return 0;
}
