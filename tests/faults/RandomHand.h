#pragma once

#include <QPointF>
#include <QPointingDevice>
#include <random>

#include "tests/faults/TriedShell.h"

namespace seedmote::faults {

// Does to the program what a person, a window system and time might do, at random, at any moment: what it
// touches waits in the window system's queue as ever.
class RandomHand {
 public:
  RandomHand(TriedShell& shell, std::uint64_t seed) : shell_(shell), numbers_(seed) {}

  void act();
  // Acts so often, a moment between two of them.
  void act(int times);
  // From 0 to `most`.
  int number(int most) { return std::uniform_int_distribution(0, most)(numbers_); }

 private:
  QPointF somewhere();
  void touch();
  void swipe();
  void pull();
  void key();
  void type();
  void resize();
  void letTimePass();
  void drag(QPointF from, QPointF to);
  void pointer(QEvent::Type type, QPointF place);
  void send(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text = {});

  TriedShell& shell_;
  std::mt19937_64 numbers_;
  ulong moment_ = 1;  // milliseconds, as the window system counts them
};

}  // namespace seedmote::faults
