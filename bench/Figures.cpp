#include "bench/Figures.h"

#include <sys/utsname.h>
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <thread>
#include <utility>

namespace seedmote::bench {

namespace {

double secondsOf(clockid_t clock) {
  timespec time{};
  return clock_gettime(clock, &time) == 0
             ? static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9
             : 0;
}

// The number behind `key` in a file of /proc, whose numbers are KiB; 0 when there is none.
double mebibytes(const std::string& file, const std::string& key) {
  std::ifstream lines(file);
  std::string word;
  double kibibytes = 0;
  while (lines >> word) {
    if (word == key && lines >> kibibytes) return kibibytes / 1024;
  }
  return 0;
}

std::string processorName() {
  std::ifstream lines("/proc/cpuinfo");
  std::string line;
  while (std::getline(lines, line)) {
    if (line.rfind("model name", 0) == 0) return line.substr(line.find(':') + 2);
  }
  return "unknown processor";
}

double seconds(const std::function<void()>& work, int times) {
  const double start = threadSeconds();
  for (int i = 0; i < times; ++i) work();
  return (threadSeconds() - start) / times;
}

}  // namespace

std::string machine() {
  utsname system{};
  uname(&system);
  return processorName() + ", " + std::to_string(std::thread::hardware_concurrency()) + " at once, " +
         system.sysname + " " + system.release + "; " SEEDMOTE_COMPILER;
}

double median(std::vector<double> values) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

double threadSeconds() {
  return secondsOf(CLOCK_THREAD_CPUTIME_ID);
}

double threadWaitedSeconds() {
  std::ifstream numbers("/proc/thread-self/schedstat");
  double ran = 0, waited = 0;
  return numbers >> ran >> waited ? waited * 1e-9 : 0;
}

double processSeconds() {
  return secondsOf(CLOCK_PROCESS_CPUTIME_ID);
}

double processSeconds(pid_t process) {
  clockid_t clock{};
  return clock_getcpuclockid(process, &clock) == 0 ? secondsOf(clock) : 0;
}

Memory Memory::of(pid_t process) {
  const std::string folder = "/proc/" + std::to_string(process);
  return {mebibytes(folder + "/status", "VmRSS:"), mebibytes(folder + "/status", "RssAnon:"),
          mebibytes(folder + "/smaps_rollup", "Pss:"), mebibytes(folder + "/status", "VmHWM:")};
}

std::string format(const char* pattern, double value) {
  char text[64];
  std::snprintf(text, sizeof text, pattern, value);
  return text;
}

Section::Section(std::string title, std::string intro)
    : text_("## " + std::move(title) + "\n\n" + std::move(intro) + "\n\nMeasured on: " + machine() +
            ".\n\n| what | reach | aim | measured | |\n|---|---|---|---|---|\n") {}

Section::~Section() {
  std::printf("%s\n", text_.c_str());
}

void Section::row(const std::string& what, const std::string& reach, const std::string& aim,
                  const std::string& measured, const std::string& note) {
  const std::string row =
      "| " + what + " | " + reach + " | " + aim + " | " + measured + " | " + note + " |\n";
  std::fputs(row.c_str(), stderr);  // whoever waits for the section sees that it grows
  text_ += row;
}

Comparison compare(Rounds rounds, const std::function<void()>& ours, const std::function<void()>& yardstick) {
  ours();
  yardstick();
  std::vector<double> our, other, ratios;
  for (int i = 0; i < rounds.rounds; ++i) {
    our.push_back(seconds(ours, rounds.times));
    other.push_back(seconds(yardstick, rounds.times));
    ratios.push_back(other.back() / our.back());
  }
  return {median(our), median(other), median(ratios)};
}

}  // namespace seedmote::bench
