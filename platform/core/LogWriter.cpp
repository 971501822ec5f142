#include "platform/core/LogWriter.h"

#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <condition_variable>
#include <cstdint>
#include <limits>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace seedmote::platform {
namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr auto kRowWindow = std::chrono::seconds(1);
// After a write the writer gathers for this long, so that a burst of records wakes it once, not each time.
constexpr auto kGather = std::chrono::milliseconds(20);
constexpr std::size_t kLongestEscape = 6;

// Without a destructor, so that a thread may log to its very end.
struct ThreadId {
  std::array<char, 16> digits{};
  std::size_t length = 0;
};

std::string_view threadId() {
  thread_local ThreadId id;
  if (id.length == 0) {
    const auto end = std::to_chars(id.digits.data(), id.digits.data() + id.digits.size(), gettid()).ptr;
    id.length = static_cast<std::size_t>(end - id.digits.data());
  }
  return {id.digits.data(), id.length};
}

// "2026-11-21 05:52:00." of a second, made once for each second.
class TimeText {
 public:
  void append(std::string& out) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    if (now.tv_sec != second_ || length_ == 0) {
      second_ = now.tv_sec;
      tm local{};
      localtime_r(&second_, &local);
      length_ = strftime(text_.data(), text_.size(), "%Y-%m-%d %H:%M:%S.", &local);
    }
    out.append(text_.data(), length_);
    const auto milliseconds = static_cast<int>(now.tv_nsec / 1'000'000);
    out.push_back(static_cast<char>('0' + milliseconds / 100));
    out.push_back(static_cast<char>('0' + milliseconds / 10 % 10));
    out.push_back(static_cast<char>('0' + milliseconds % 10));
  }

 private:
  time_t second_ = 0;
  std::array<char, 48> text_{};
  std::size_t length_ = 0;
};

void appendEscape(std::string& out, unsigned char c) {
  constexpr std::string_view kNamed = "abtnvfr";  // \a is 7, \r is 13
  constexpr std::string_view kHex = "0123456789abcdef";
  out.push_back('\\');
  if (c >= '\a' && c <= '\r') {
    out.push_back(kNamed[static_cast<std::size_t>(c - '\a')]);
    return;
  }
  out.append(c >= 0x80 ? "u00" : "x");
  out.push_back(kHex[c >> 4]);
  out.push_back(kHex[c & 15]);
}

void appendEscaped(std::string& out, std::string_view text) {
  std::size_t plain = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    // The second set of control characters is two bytes long; terminals heed it too.
    const bool second = c == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    if (c >= 0x20 && c != 0x7F && !second) continue;
    out.append(text.substr(plain, i - plain));
    appendEscape(out, second ? static_cast<unsigned char>(text[++i]) : c);
    plain = i + 1;
  }
  out.append(text.substr(plain));
}

// Backs off from the middle of a character.
std::string_view cutAt(std::string_view text, std::size_t length) {
  while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
  return text.substr(0, length);
}

void writeOut(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno == EAGAIN) {
      pollfd ready{descriptor, POLLOUT, 0};
      ::poll(&ready, 1, -1);
    } else if (errno != EINTR) {
      return;  // closed, or its reader has gone: there is nobody to tell
    }
  }
}

}  // namespace

struct LogWriter::State {
  struct RowSite {
    const char* format;
    SteadyClock::time_point windowEnd;
    int inWindow = 0;
    std::uint64_t leftOut = 0;
  };

  explicit State(Options given) : options(given), process(std::to_string(getpid())) {
    // So that hardly anything is allocated under the lock, which the terminate handler needs too.
    const std::size_t reserve = options.pendingBytes + kLongestEscape * kLargestRecord + 1024;
    pending.reserve(reserve);
    taken.reserve(reserve);
    record.reserve(kLargestRecord + 1);
    sites.reserve(64);
  }

  void append(std::string_view format, const FormatArg* args, std::size_t count);
  void appendNote(std::string_view format, std::initializer_list<FormatArg> args);
  void appendLine(std::string_view text, std::size_t length);
  bool noteLeftOut(SteadyClock::time_point now, bool all);
  SteadyClock::time_point earliestWindowEnd() const;
  void awaitWork(std::unique_lock<std::mutex>& lock);
  void loop();

  const Options options;
  const std::string process;
  std::mutex mutex;
  std::condition_variable work;
  std::condition_variable drained;
  TimeText timeText;
  std::string pending;
  std::string taken;   // the writer thread's own while it writes
  std::string record;  // the one that is being formatted
  std::vector<RowSite> sites;
  std::uint64_t dropped = 0;
  std::uint64_t flushesAsked = 0;
  std::uint64_t flushesDone = 0;
  bool asleep = false;
  bool rowsLeftOut = false;
  bool ending = false;
};

void LogWriter::State::appendLine(std::string_view text, std::size_t length) {
  const bool cut = length > kLargestRecord && !options.full;
  if (cut) text = cutAt(text, kLargestRecord);
  if (!cut && text.ends_with('\n')) text.remove_suffix(1);
  timeText.append(pending);
  pending.append(" seedmote[").append(process).append(":").append(threadId()).append("] ");
  appendEscaped(pending, text);
  if (cut) {
    std::array<char, 24> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), length).ptr;
    pending.append(" ... (cut; ").append(digits.data(), end).append(" bytes in all)");
  }
  pending.push_back('\n');
}

void LogWriter::State::append(std::string_view format, const FormatArg* args, std::size_t count) {
  const std::size_t limit = options.full ? std::numeric_limits<std::size_t>::max() : kLargestRecord + 1;
  record.clear();
  const std::size_t length = appendFormat(record, limit, format, args, count);
  appendLine(record, length);
}

void LogWriter::State::appendNote(std::string_view format, std::initializer_list<FormatArg> args) {
  append(format, args.begin(), args.size());
}

// Names the rows left out in windows that are over, or in all; true when some are still to be named.
bool LogWriter::State::noteLeftOut(SteadyClock::time_point now, bool all) {
  bool remain = false;
  for (RowSite& site : sites) {
    if (site.leftOut == 0) continue;
    if (!all && now < site.windowEnd) {
      remain = true;
      continue;
    }
    appendNote("%lu more left out: %@", {site.leftOut, site.format});
    site.leftOut = 0;
  }
  return remain;
}

SteadyClock::time_point LogWriter::State::earliestWindowEnd() const {
  auto earliest = SteadyClock::time_point::max();
  for (const RowSite& site : sites) {
    if (site.leftOut > 0) earliest = std::min(earliest, site.windowEnd);
  }
  return earliest;
}

// Without work there is no time-out, hence no wake-up at rest.
void LogWriter::State::awaitWork(std::unique_lock<std::mutex>& lock) {
  asleep = true;
  const auto hasWork = [this] {
    return !pending.empty() || dropped > 0 || flushesAsked != flushesDone || ending;
  };
  while (!hasWork()) {
    if (!rowsLeftOut) {
      work.wait(lock);
    } else if (work.wait_until(lock, earliestWindowEnd()) == std::cv_status::timeout) {
      break;
    }
  }
  asleep = false;
}

void LogWriter::State::loop() {
  std::unique_lock lock(mutex);
  for (;;) {
    awaitWork(lock);
    const std::uint64_t flushes = flushesAsked;
    if (rowsLeftOut) rowsLeftOut = noteLeftOut(SteadyClock::now(), flushes != flushesDone || ending);
    if (dropped > 0) {
      appendNote("%lu records dropped: standard error is not read fast enough", {dropped});
      dropped = 0;
    }
    std::swap(pending, taken);
    lock.unlock();
    writeOut(options.descriptor, taken);
    lock.lock();
    taken.clear();
    flushesDone = flushes;
    drained.notify_all();
    if (ending && pending.empty()) return;
    work.wait_for(lock, kGather, [this] {
      return flushesAsked != flushesDone || ending || pending.size() > options.pendingBytes / 2;
    });
  }
}

LogWriter::LogWriter(Options options) : state_(std::make_shared<State>(options)) {
  // A signal is for the rest of the program, and a reader that has gone is no reason to end it.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  std::thread([state = state_] { state->loop(); }).detach();
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

LogWriter::~LogWriter() {
  flush(std::chrono::milliseconds(500));
  const std::lock_guard lock(state_->mutex);
  state_->ending = true;
  state_->work.notify_one();
}

void LogWriter::write(std::string_view format, const FormatArg* args, std::size_t count) {
  bool wake = false;
  {
    const std::lock_guard lock(state_->mutex);
    if (state_->pending.size() >= state_->options.pendingBytes) {
      ++state_->dropped;
      return;
    }
    state_->append(format, args, count);
    wake = state_->asleep || state_->pending.size() > state_->options.pendingBytes / 2;
    state_->asleep = false;
  }
  if (wake) state_->work.notify_one();
}

bool LogWriter::admitsRow(const char* format) {
  if (state_->options.full) return true;
  const auto now = SteadyClock::now();
  const std::lock_guard lock(state_->mutex);
  auto& sites = state_->sites;
  auto site =
      std::find_if(sites.begin(), sites.end(), [format](const auto& s) { return s.format == format; });
  if (site == sites.end()) site = sites.insert(site, {format, now + kRowWindow, 0, 0});
  if (now >= site->windowEnd) {
    if (site->leftOut > 0) state_->appendNote("%lu more left out: %@", {site->leftOut, format});
    *site = {format, now + kRowWindow, 0, 0};
  }
  if (++site->inWindow <= kRowsPerSecond) return true;
  ++site->leftOut;
  if (!state_->rowsLeftOut) {
    state_->rowsLeftOut = true;
    state_->work.notify_one();
  }
  return false;
}

bool LogWriter::flush(std::chrono::milliseconds patience) {
  std::unique_lock lock(state_->mutex);
  const std::uint64_t mine = ++state_->flushesAsked;
  state_->work.notify_one();
  return state_->drained.wait_for(lock, patience, [this, mine] { return state_->flushesDone >= mine; });
}

}  // namespace seedmote::platform
