#pragma once

#include <string>
#include <vector>

namespace seedmote::soak {

// What the process holds at one moment.
struct Holding {
  double seconds = 0;   // since the start
  double resident = 0;  // MiB
  double heap = 0;      // MiB in use
  double files = 0;     // descriptors
  double threads = 0;

  static Holding now(double seconds);
};

// What the process held over time, and whether that is flat. Only censuses are judged: samples taken in one
// and the same state of the program and the daemon, after the allocator gave back what it does not use.
//
// A first third of the censuses is left out as warming up. Over the others the middle one of all slopes
// between two of them (which no single outlier moves) times their span is the growth, and the constants say
// how much that may be. With less than kFewest censuses the last is held against the first, with more
// patience. What a sanitizer keeps of what was freed is no growth: its builds are judged by files and threads
// alone.
class Ledger final {
 public:
  static constexpr std::size_t kFewest = 8;
  static constexpr double kMostResident = 8;  // MiB
  static constexpr double kMostHeap = 2;      // MiB
  static constexpr double kMostFiles = 4;     // a kept connection more has three
  static constexpr double kMostThreads = 1;
  static constexpr double kPatience = 4;  // times as much, in a short run

  void sample(const Holding& holding, std::size_t torrents);
  void census(const Holding& holding);

  // One line for each that grew; empty when all is flat. Prints what it finds.
  std::vector<std::string> judge() const;

 private:
  std::vector<Holding> censuses_;
};

}  // namespace seedmote::soak
