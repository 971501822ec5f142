#include "tests/faults/RandomHand.h"

namespace seedmote::faults {

void RandomHand::act() {
  switch (any(0, 15)) {
    case 0:
      return swipe();
    case 1:
      shell_.ui.pasteboard.text = anyLink().toStdString();
      return pull();
    case 2:
    case 3:
    case 4:
    case 5:
    case 6:
      return pressAnyKey();
    case 7:
      return type();
    case 8:
      return resize();
    case 9:
      return any(0, 3) == 0 ? shell_.handOver() : tap(anyPlace());
    case 10:
    case 11:
      return shell_.services->clock.advanceSeconds(any(0, 120) / 10.0);
    default:
      return tap(anyPlace());
  }
}

void RandomHand::act(int times) {
  int left = times;
  QTimer turn;
  QObject::connect(&turn, &QTimer::timeout, &turn, [&] {
    if (left > 0 && !shell_.services->main.isQuitting()) act();
    --left;
  });
  turn.start(1);
  shell_.services->spinUntil([&] { return left <= 0 && !shell_.services->main.isWaiting(); });
}

// Into a setting's field, if one has the focus.
void RandomHand::type() {
  const QChar letter(any('0', 'z'));
  press(letter.toUpper().unicode(), {}, letter);
}

}  // namespace seedmote::faults
