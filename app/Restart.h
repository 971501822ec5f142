#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/WindowPlace.h"

class QWindow;

namespace seedmote {

// The program started anew by itself, in its own process, with its window where it was. It is asked for while
// the program runs, and carried out when all that ran has ended. Main thread.
class Restart final {
 public:
  static constexpr int kFailed = 1;

  // What the program was started with, its name first.
  explicit Restart(std::vector<std::string> commandLine);

  // Notes where the window stands, and ends the program.
  void ask(const QWindow& window);

  // Does not come back when it was asked for and succeeds. `code` when it was not asked for, else kFailed.
  int carryOut(int code) const;

  // The options of the new start: those that say how the program looks and behaves. What was to be done once
  // is not done again.
  static std::vector<std::string> keptOptions(const std::vector<std::string>& arguments);

 private:
  std::vector<std::string> commandLine_;
  std::optional<WindowPlace> window_;  // absent until it is asked for
};

}  // namespace seedmote
