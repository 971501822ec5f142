#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/CommandLine.h"
#include "app/Restart.h"

namespace seedmote {

// The program as a whole: what main() runs.
class Program final {
 public:
  static constexpr int kWrongUse = 2;

  // The exit code.
  int run(int argc, char** argv);

 private:
  int storeSettings(int argc, char** argv);
  std::optional<int> handOver(const std::vector<std::string>& uris) const;
  int showWindow(int argc, char** argv);

  CommandLine line_;
  std::optional<Restart> restart_;
};

}  // namespace seedmote
