#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string_view>

#include "platform/core/Format.h"

namespace seedmote::platform {

// Writes records to a file descriptor, one line each, from a thread of its own, so that a slow or closed
// reader never holds whoever logs. A line: "2026-11-21 05:52:00.123 seedmote[PID:TID] text"; control
// characters in a record show as C escapes, so that no text from outside can make a line of its own.
// Thread-safe.
class LogWriter final {
 public:
  struct Options {
    int descriptor = 2;
    bool full = false;  // neither cuts records nor leaves rows out
    std::size_t pendingBytes = std::size_t{1}
                               << 20;  // what waits for the reader; more is dropped and counted
  };

  static constexpr std::size_t kLargestRecord = 16 * 1024;
  static constexpr int kRowsPerSecond = 200;  // for one row format

  explicit LogWriter(Options options);
  // Flushes for at most half a second; a thread that is stuck in a write is left behind.
  ~LogWriter();
  LogWriter(const LogWriter&) = delete;
  LogWriter& operator=(const LogWriter&) = delete;

  void write(std::string_view format, const FormatArg* args, std::size_t count);

  // False when this row's record is to be left out; it is counted, and the count written later.
  bool admitsRow(const char* format);

  // Returns once everything logged so far is written, false when that took longer than `patience`.
  bool flush(std::chrono::milliseconds patience);

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace seedmote::platform
