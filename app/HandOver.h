#pragma once

#include <string>
#include <vector>

namespace seedmote {

// Gives what this start of the program was asked to the Seedmote that runs in the session already. Needs no
// application object.
class HandOver final {
 public:
  enum class Outcome {
    nobodyRuns,
    taken,
    refused,
    noAnswer,
  };
  struct Result {
    Outcome outcome = Outcome::nobodyRuns;
    std::string trouble;  // why it was refused
  };

  static constexpr int kPatience = 5000;  // milliseconds

  // `uris` are opened there; without any its window is brought to the front. Blocks, for kPatience at most.
  static Result give(const std::vector<std::string>& uris);

  // A file or a link as it stands on the command line. A path becomes a "file://" URI, by this program's
  // working folder; a link stays as it is.
  static std::string uriOf(const std::string& given);
};

}  // namespace seedmote
