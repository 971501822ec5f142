#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace seedmote::bench {

double median(std::vector<double> values);

// Processor time in seconds, exact to the nanosecond. Of this thread; of this process with all its threads.
double threadSeconds();
double processSeconds();
// What this thread has waited for a processor that others had, in seconds; 0 where the kernel does not say.
double threadWaitedSeconds();
// Of another process with all its threads, ended ones included; 0 when it is gone.
double processSeconds(pid_t process);

// What the kernel says of a process's memory, in MiB.
struct Memory {
  double resident = 0;
  double anonymous = 0;     // what it made itself, without its programs' pages
  double proportional = 0;  // pages that others use as well count by their share
  double peak = 0;          // the most that was ever resident
  static Memory of(pid_t process);
};

std::string format(const char* pattern, double value);  // a printf pattern for one double

// The processor, the system, the compiler and its options, in a line.
std::string machine();

// A section of the page of measurements, in Markdown, on standard output when it is whole.
class Section {
 public:
  Section(std::string title, std::string intro);
  ~Section();
  Section(const Section&) = delete;
  Section& operator=(const Section&) = delete;

  // "" stands for nothing asked.
  void row(const std::string& what, const std::string& reach, const std::string& aim,
           const std::string& measured, const std::string& note = "");

 private:
  std::string text_;
};

// Two pieces of work, measured in turn so that both see the same machine. Medians.
struct Comparison {
  double ours = 0;       // seconds
  double yardstick = 0;  // seconds
  double ratio = 0;      // the yardstick's time for each second of ours: above 1, ours is faster
};
struct Rounds {
  int rounds = 0;
  int times = 1;  // of each work in a round
};
Comparison compare(Rounds rounds, const std::function<void()>& ours, const std::function<void()>& yardstick);

}  // namespace seedmote::bench
