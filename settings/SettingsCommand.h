#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/RVSettingsStore.h"

namespace seedmote {

// The command line's way to change settings: "KEY=VALUE", stored as the settings screen would. Keys are
// those of the stored settings: the editable rows of the settings screen, "ServerChanged", "SavedVersion",
// "FirstRun", and "Refresh" (seconds between background updates of the list; empty or 0 for none). The value
// "-" is a line read from `input`.
class SettingsCommand {
 public:
  static constexpr int kStored = 0;
  static constexpr int kNotStored = 1;  // the values are good, but the file could not be written
  static constexpr int kWrongUse = 2;   // an unknown key or a bad value: nothing was stored

  // What is wrong is written to `errors`, a line for each; a password never.
  SettingsCommand(RVSettingsStore& store, std::istream& input, std::ostream& errors);

  // Checks all, then loads the defaults and stores all, in order. Returns the program's exit code.
  int run(const std::vector<std::string>& assignments);

 private:
  struct Assignment {
    std::string key;
    std::string value;
  };

  std::optional<Assignment> check(std::string_view assignment);
  std::string readValue(std::string_view given, std::string& trouble);
  void apply(const Assignment& assignment);

  RVSettingsStore& store_;
  std::istream& input_;
  std::ostream& errors_;
};

}  // namespace seedmote
