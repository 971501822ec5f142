#include "tests/soak/Ledger.h"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace seedmote::soak {

namespace {

constexpr double kMiB = 1024.0 * 1024.0;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr double kMemoryFactor = 1000;
#else
constexpr double kMemoryFactor = 1;
#endif

double entriesIn(const char* folder) {
  const std::filesystem::directory_iterator entries(folder);
  return static_cast<double>(std::distance(begin(entries), end(entries)));
}

double growth(const std::vector<Holding>& all, double Holding::*what) {
  const double span = all.back().seconds - all.front().seconds;
  std::vector<double> slopes;
  for (std::size_t one = 0; one < all.size(); ++one) {
    for (std::size_t other = one + 1; other < all.size(); ++other) {
      slopes.push_back((all[other].*what - all[one].*what) / (all[other].seconds - all[one].seconds));
    }
  }
  std::nth_element(slopes.begin(), slopes.begin() + slopes.size() / 2, slopes.end());
  return slopes[slopes.size() / 2] * span;
}

void print(const char* mark, const Holding& holding, const std::string& torrents) {
  std::printf("%-7s %7.0f %8.1f %8.2f %6.0f %8.0f %9s\n", mark, holding.seconds, holding.resident,
              holding.heap, holding.files, holding.threads, torrents.c_str());
  std::fflush(stdout);
}

}  // namespace

Holding Holding::now(double seconds) {
  Holding holding;
  holding.seconds = seconds;
  double whole = 0;
  std::ifstream("/proc/self/statm") >> whole >> holding.resident;
  holding.resident *= static_cast<double>(sysconf(_SC_PAGESIZE)) / kMiB;
  const struct mallinfo2 heap = mallinfo2();
  holding.heap = static_cast<double>(heap.uordblks + heap.hblkhd) / kMiB;
  holding.files = entriesIn("/proc/self/fd");
  holding.threads = entriesIn("/proc/self/task");
  return holding;
}

void Ledger::sample(const Holding& holding, std::size_t torrents) {
  print("sample", holding, std::to_string(torrents));
}

void Ledger::census(const Holding& holding) {
  print("census", holding, "");
  censuses_.push_back(holding);
}

std::vector<std::string> Ledger::judge() const {
  if (censuses_.size() < 2) {
    return {"there are too few censuses to be judged"};
  }
  const bool isShort = censuses_.size() < kFewest;
  const std::vector<Holding> judged(censuses_.begin() + (isShort ? 0 : censuses_.size() / 3),
                                    censuses_.end());
  const struct {
    const char* name;
    double Holding::*what;
    double most;
  } measures[] = {{"resident MiB", &Holding::resident, kMostResident * kMemoryFactor},
                  {"heap MiB", &Holding::heap, kMostHeap * kMemoryFactor},
                  {"files", &Holding::files, kMostFiles},
                  {"threads", &Holding::threads, kMostThreads}};
  std::vector<std::string> faults;
  for (const auto& [name, what, most] : measures) {
    const double grown = isShort ? judged.back().*what - judged.front().*what : growth(judged, what);
    const double limit = isShort ? most * kPatience : most;
    std::printf("%-14s grew by %6.2f in %.0f s, at most %.0f\n", name, grown,
                judged.back().seconds - judged.front().seconds, limit);
    if (grown > limit) {
      faults.push_back(std::string(name) + " grew");
    }
  }
  return faults;
}

}  // namespace seedmote::soak
