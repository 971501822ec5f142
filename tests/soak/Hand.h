#pragma once

#include <QEvent>
#include <QPoint>
#include <QString>

#include "tests/soak/MainLoop.h"

namespace seedmote::soak {

// A person's finger, mouse and keyboard: what they do goes into the window system's queue, so that it arrives
// whatever the program is at. It takes its time. On the person's thread.
class Hand final {
 public:
  Hand(MainLoop& loop, bool touches) : loop_(loop), touches_(touches) {}

  void tap(QPoint place) const { drag(place, place, 0); }
  // In so many steps, one a frame; what is let go after few goes on moving.
  void drag(QPoint from, QPoint to, int steps) const;
  void wheel(QPoint place, int turns) const;
  void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) const;
  // Into the field that has the keys, in place of what is there.
  void type(const QString& text) const;
  void closeWindow() const;

 private:
  void hold(QPoint place, QEvent::Type type) const;

  MainLoop& loop_;
  bool touches_;
};

}  // namespace seedmote::soak
