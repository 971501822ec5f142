#pragma once

#include "tests/faults/TriedShell.h"
#include "tests/support/Hand.h"

namespace seedmote::faults {

// Does to the program what a person, a window system and time might do, at random, at any moment.
class RandomHand final : public support::Hand {
 public:
  // A finger on a phone, else a mouse.
  RandomHand(TriedShell& shell, bool touches, std::uint64_t seed)
      : Hand([&shell]() -> QWindow& { return shell.window(); }, touches, seed), shell_(shell) {}

  void act();
  // Acts so often, a moment between two of them.
  void act(int times);

 private:
  void type();

  TriedShell& shell_;
};

}  // namespace seedmote::faults
