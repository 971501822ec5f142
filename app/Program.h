#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/CommandLine.h"
#include "app/Restart.h"
#include "platform/ui/HandedOver.h"

namespace seedmote {

class Intake;

// The program as a whole: what main() runs.
class Program final {
 public:
  static constexpr int kWrongUse = 2;

  // The exit code.
  int run(int argc, char** argv);

 private:
  int storeSettings(int argc, char** argv);
  static std::vector<platform::Refusal> keep(const std::vector<std::string>& uris);
  std::optional<int> handOver(const std::vector<std::string>& uris) const;
  int showWindow(int argc, char** argv);
  int runWindow(Intake& intake, const std::vector<platform::Refusal>& refusals);
  // A picture is of a window of its own, which takes nothing from others and sends them nothing.
  bool isAlone() const { return line_.snapshot.has_value(); }

  CommandLine line_;
  std::optional<Restart> restart_;
};

}  // namespace seedmote
