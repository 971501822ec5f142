#pragma once

#include <array>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core/Format.h"

namespace seedmote::platform {

// Receives every record whole, as it was logged (a line feed at its end included), on the thread that
// logs. A sink must not log.
class LogSink {
 public:
  virtual ~LogSink() = default;
  virtual void record(std::string_view text) = 0;
};

// Sinks may be added and removed on any thread; a sink that was removed is called no more.
void addLogSink(LogSink& sink);
void removeLogSink(LogSink& sink);

// Writes what is buffered to standard error; gives up after half a second when nobody reads it. Any thread.
// Called by itself at exit.
void flushLog();

// Standard error gets no records from now on; sinks still do. For a command that prints nothing.
void silenceLog();

// Has an exception that nobody catches logged, and the log flushed, before the program aborts.
void installLogTerminateHandler();

// A test's sink: keeps the records while it lives. Thread-safe.
class LogRecorder final : public LogSink {
 public:
  LogRecorder();
  ~LogRecorder() override;
  void record(std::string_view text) override;
  std::vector<std::string> records() const;
  bool contains(std::string_view record) const;  // one record equals this
  int count(std::string_view record) const;
  void clear();

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> records_;
};

namespace detail {
void writeLog(std::string_view format, const FormatArg* args, std::size_t count);
void writeRowLog(const char* format, const FormatArg* args, std::size_t count);
}  // namespace detail

// Writes one record. C formats and %@ (see Format.h). Any thread, well under a microsecond.
template <class... Args>
void log(std::string_view format, const Args&... args) {
  const std::array<FormatArg, sizeof...(Args)> list{FormatArg(args)...};
  detail::writeLog(format, list.data(), list.size());
}

// A record that is written once for each row of a table: standard error gets it at a limited rate, with
// the number left out named afterwards. `format` must be a literal: its address names the line.
template <class... Args>
void logRow(const char* format, const Args&... args) {
  const std::array<FormatArg, sizeof...(Args)> list{FormatArg(args)...};
  detail::writeRowLog(format, list.data(), list.size());
}

}  // namespace seedmote::platform
