#include "platform/core/Log.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <functional>
#include <sstream>
#include <thread>

#include "platform/core/LogWriter.h"

namespace seedmote::platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class Pipe {
 public:
  Pipe() { EXPECT_EQ(pipe2(ends_, O_CLOEXEC), 0); }
  ~Pipe() {
    closeReader();
    closeWriter();
  }
  int writer() const { return ends_[1]; }
  void closeReader() { closeEnd(ends_[0]); }
  void closeWriter() { closeEnd(ends_[1]); }

  // Reads until every writer is closed.
  std::string readToEnd() {
    std::string text;
    char buffer[4096];
    for (ssize_t n = 0; (n = read(ends_[0], buffer, sizeof buffer)) > 0;) {
      text.append(buffer, static_cast<std::size_t>(n));
    }
    return text;
  }

 private:
  static void closeEnd(int& end) {
    if (end >= 0) close(end);
    end = -1;
  }
  int ends_[2]{-1, -1};
};

template <class... Args>
void writeTo(LogWriter& writer, std::string_view format, const Args&... args) {
  const std::array<FormatArg, sizeof...(Args)> list{FormatArg(args)...};
  writer.write(format, list.data(), list.size());
}

// What is written while `work` is done with a writer.
std::string written(LogWriter::Options options, const std::function<void(LogWriter&)>& work) {
  Pipe pipe;
  options.descriptor = pipe.writer();
  {
    LogWriter writer(options);
    work(writer);
    EXPECT_TRUE(writer.flush(seconds(10)));
  }
  pipe.closeWriter();
  return pipe.readToEnd();
}

// The lines without what stands in front of each.
std::vector<std::string> texts(const std::string& written) {
  std::vector<std::string> lines;
  std::istringstream stream(written);
  for (std::string line; std::getline(stream, line);) {
    const std::size_t end = line.find("] ");
    lines.push_back(end == std::string::npos ? "no prefix: " + line : line.substr(end + 2));
  }
  return lines;
}

TEST(LogWriter, OneLineForEachRecordWhateverItHolds) {
  const std::string lines = written({}, [](LogWriter& writer) {
    writeTo(writer, "Seedmote Start\n");
    writeTo(writer, "name = %@\n", "a\nb\r\x1b[2J\x7f\tc" + std::string("\xc2\x85 \xc2\xa9 ü"));
    writeTo(writer, "");
  });
  EXPECT_EQ(texts(lines),
            (std::vector<std::string>{"Seedmote Start",
                                      R"(name = a\nb\r\x1b[2J\x7f\tc)" + std::string(R"(\u0085 © ü)"), ""}));
  const std::string first = lines.substr(0, lines.find('\n'));
  int part[7]{};
  int process = 0;
  int thread = 0;
  EXPECT_EQ(std::sscanf(first.c_str(), "%4d-%2d-%2d %2d:%2d:%2d.%3d seedmote[%d:%d] Seedmote Start", &part[0],
                        &part[1], &part[2], &part[3], &part[4], &part[5], &part[6], &process, &thread),
            9)
      << first;
  EXPECT_EQ(first.find(" seedmote["), std::string("2026-11-21 05:52:00.123").size());
  EXPECT_EQ(process, getpid());
  EXPECT_EQ(thread, gettid());
}

TEST(LogWriter, LongRecordsAreCutBetweenCharactersAndNameTheirLength) {
  // An odd byte in front, so that the cut falls into the middle of a two-byte character.
  std::string longText = "x";
  for (int i = 0; i < 20000; ++i) longText += "ü";
  const auto write = [&](LogWriter& writer) { writeTo(writer, "%@", longText); };
  EXPECT_EQ(texts(written({.full = true}, write)).at(0), longText);
  EXPECT_EQ(texts(written({}, write)).at(0),
            longText.substr(0, LogWriter::kLargestRecord - 1) + " ... (cut; 40001 bytes in all)");
}

TEST(LogWriter, RowsAreLeftOutBeyondTheRateOfTheirFormatAndCounted) {
  static const char kCell[] = "row %d\n";
  static const char kOther[] = "height %d\n";
  for (const bool full : {false, true}) {
    int admitted = 0;
    const auto lines = texts(written({.full = full}, [&](LogWriter& writer) {
      for (int row = 0; row < 500; ++row) {
        if (!writer.admitsRow(kCell)) continue;
        ++admitted;
        writeTo(writer, kCell, row);
      }
      EXPECT_TRUE(writer.admitsRow(kOther));
    }));
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(full ? 500 : admitted + 1));
    if (full) continue;
    EXPECT_EQ(admitted, LogWriter::kRowsPerSecond);
    EXPECT_EQ(lines.back(), "300 more left out: row %d");
  }
}

TEST(LogWriter, AReaderThatDoesNotReadHoldsNobodyAndCostsRecordsThatAreCounted) {
  Pipe pipe;
  fcntl(pipe.writer(), F_SETPIPE_SZ, 4096);
  std::string all;
  constexpr int kRecords = 20000;
  {
    LogWriter writer({.descriptor = pipe.writer(), .pendingBytes = 64 * 1024});
    for (int i = 0; i < kRecords; ++i) writeTo(writer, "record %d", i);
    EXPECT_FALSE(writer.flush(milliseconds(1)));
    std::thread flusher([&] {
      EXPECT_TRUE(writer.flush(seconds(20)));
      pipe.closeWriter();
    });
    all = pipe.readToEnd();
    flusher.join();
  }
  int shown = 0;
  long dropped = 0;
  for (const std::string& line : texts(all)) {
    long count = 0;
    if (std::sscanf(line.c_str(), "%ld records dropped: ", &count) == 1) dropped += count;
    shown += line.starts_with("record ") ? 1 : 0;
  }
  EXPECT_GT(dropped, 0);
  EXPECT_EQ(shown + dropped, kRecords);
}

TEST(LogWriter, AClosedReaderOrDescriptorIsNoTrouble) {
  Pipe pipe;
  pipe.closeReader();
  LogWriter broken({.descriptor = pipe.writer()});
  LogWriter closed({.descriptor = -1});
  for (LogWriter* writer : {&broken, &closed}) {
    writeTo(*writer, "nobody reads this");
    EXPECT_TRUE(writer->flush(seconds(10)));
  }
}

TEST(Log, SinksGetRecordsWholeUntilTheyAreRemoved) {
  const std::string whole(100'000, 'x');
  {
    LogRecorder recorder;
    log("soapMessage = %@\n", whole);
    for (int row = 0; row < 1000; ++row) logRow("row\n");
    log("Username: %@", Secret{"geheim"});
    EXPECT_TRUE(recorder.contains("soapMessage = " + whole + "\n"));
    EXPECT_EQ(recorder.count("row\n"), 1000);
    EXPECT_TRUE(recorder.contains("Username: ••••••••"));
    recorder.clear();
    EXPECT_TRUE(recorder.records().empty());
  }
  log("after the sink has gone");
}

TEST(LogDeathTest, AnUncaughtExceptionIsLoggedBeforeTheEnd) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(
      {
        installLogTerminateHandler();
        log("last words");
        std::thread([] { throw std::runtime_error("no such torrent"); }).join();
      },
      "last words(.|\n)*terminated by an exception: no such torrent");
}

}  // namespace
}  // namespace seedmote::platform
