#pragma once

#include <QQuickWindow>
#include <QtTest/QTest>

#include "tests/support/Hand.h"

namespace seedmote::support {

// What it did has come to the window when it goes on; that takes real time, else a drag would have no speed.
class SlowHand final : public Hand {
 public:
  using Hand::Hand;

 private:
  void rest(int milliseconds) override {
    Hand::rest(milliseconds);
    QTest::qWait(5);
    onMain(
        [](QWindow& window) { static_cast<QQuickWindow&>(window).grabWindow(); });  // moves come with frames
  }
};

}  // namespace seedmote::support
