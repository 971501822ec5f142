#include "platform/core/Log.h"

#include <fcntl.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <exception>
#include <string>

#include "platform/core/LogWriter.h"

namespace seedmote::platform {
namespace {

constexpr auto kFlushPatience = std::chrono::milliseconds(500);

LogWriter::Options standardErrorOptions() {
  LogWriter::Options options;
  // When standard error is closed, its number may become that of a file of our own: never write there.
  if (fcntl(options.descriptor, F_GETFD) == -1) options.descriptor = -1;
  const char* wish = std::getenv("SEEDMOTE_LOG");
  options.full = wish != nullptr && std::string_view(wish) == "full";
  if (options.full) options.pendingBytes = std::size_t{64} << 20;
  return options;
}

// Never destroyed: whatever is destroyed at exit may still log.
LogWriter& standardError() {
  static LogWriter* const writer = [] {
    auto* made = new LogWriter(standardErrorOptions());
    std::atexit(flushLog);
    return made;
  }();
  return *writer;
}

std::atomic<bool> silent = false;

struct Sinks {
  std::mutex mutex;
  std::vector<LogSink*> list;
  std::atomic<int> count = 0;
};

Sinks& sinks() {
  static auto* const all = new Sinks;
  return *all;
}

void tellSinks(std::string_view format, const FormatArg* args, std::size_t count) {
  if (sinks().count.load(std::memory_order_acquire) == 0) return;
  const std::string text = formatText(format, args, count);
  const std::lock_guard lock(sinks().mutex);
  for (LogSink* sink : sinks().list) sink->record(text);
}

void logTermination() noexcept {
  try {
    if (const std::exception_ptr raised = std::current_exception()) std::rethrow_exception(raised);
    log("terminated");
  } catch (const std::exception& raised) {
    log("terminated by an exception: %s", raised.what());
  } catch (...) {
    log("terminated by an exception");
  }
  flushLog();
  std::abort();
}

}  // namespace

namespace detail {

void writeLog(std::string_view format, const FormatArg* args, std::size_t count) {
  tellSinks(format, args, count);
  if (!silent) standardError().write(format, args, count);
}

void writeRowLog(const char* format, const FormatArg* args, std::size_t count) {
  tellSinks(format, args, count);
  if (!silent && standardError().admitsRow(format)) standardError().write(format, args, count);
}

}  // namespace detail

void addLogSink(LogSink& sink) {
  const std::lock_guard lock(sinks().mutex);
  sinks().list.push_back(&sink);
  ++sinks().count;
}

void removeLogSink(LogSink& sink) {
  const std::lock_guard lock(sinks().mutex);
  sinks().count -= static_cast<int>(std::erase(sinks().list, &sink));
}

void flushLog() {
  standardError().flush(kFlushPatience);
}

void silenceLog() {
  silent = true;
}

void installLogTerminateHandler() {
  std::set_terminate(logTermination);
}

LogRecorder::LogRecorder() {
  addLogSink(*this);
}

LogRecorder::~LogRecorder() {
  removeLogSink(*this);
}

void LogRecorder::record(std::string_view text) {
  const std::lock_guard lock(mutex_);
  records_.emplace_back(text);
}

std::vector<std::string> LogRecorder::records() const {
  const std::lock_guard lock(mutex_);
  return records_;
}

bool LogRecorder::contains(std::string_view record) const {
  return count(record) > 0;
}

int LogRecorder::count(std::string_view record) const {
  const std::lock_guard lock(mutex_);
  return static_cast<int>(std::count(records_.begin(), records_.end(), record));
}

void LogRecorder::clear() {
  const std::lock_guard lock(mutex_);
  records_.clear();
}

}  // namespace seedmote::platform
