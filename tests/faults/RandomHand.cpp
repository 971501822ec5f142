#include "tests/faults/RandomHand.h"

#include <qpa/qwindowsysteminterface.h>

namespace seedmote::faults {
namespace {

using Queue = QWindowSystemInterface;
using Later = Queue::AsynchronousDelivery;

struct Pressed {
  Qt::Key key;
  Qt::KeyboardModifiers modifiers;
};

constexpr Pressed kKeys[] = {
    {Qt::Key_F5, {}},
    {Qt::Key_S, Qt::ControlModifier},
    {Qt::Key_P, Qt::ControlModifier},
    {Qt::Key_Delete, {}},
    {Qt::Key_Delete, {}},
    {Qt::Key_V, Qt::ControlModifier},
    {Qt::Key_Comma, Qt::ControlModifier},
    {Qt::Key_Escape, {}},
    {Qt::Key_F1, {}},
    {Qt::Key_Up, {}},
    {Qt::Key_Down, {}},
    {Qt::Key_Home, {}},
    {Qt::Key_End, {}},
    {Qt::Key_PageDown, {}},
    {Qt::Key_Return, {}},
    {Qt::Key_Return, {}},
    {Qt::Key_Space, {}},
    {Qt::Key_Tab, {}},
    {Qt::Key_Tab, Qt::ShiftModifier},
};

}  // namespace

void RandomHand::act() {
  switch (number(15)) {
    case 0:
    case 1:
    case 2:
    case 3:
      return touch();
    case 4:
      return swipe();
    case 5:
      return pull();
    case 6:
    case 7:
    case 8:
    case 9:
    case 10:
      return key();
    case 11:
      return type();
    case 12:
      return resize();
    case 13:
      return number(3) == 0 ? shell_.handOver() : touch();
    default:
      return letTimePass();
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

QPointF RandomHand::somewhere() {
  return {static_cast<double>(number(shell_.window().width())),
          static_cast<double>(number(shell_.window().height()))};
}

void RandomHand::touch() {
  const QPointF place = somewhere();
  drag(place, place);
}

void RandomHand::swipe() {
  const QPointF from = somewhere();
  drag(from, from + QPointF(number(1) == 0 ? 150 : -150, number(10)));
}

void RandomHand::pull() {
  shell_.ui.pasteboard.text = "magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567";
  const QPointF from(somewhere().x(), 40);
  drag(from, from + QPointF(number(10), 300));
}

void RandomHand::key() {
  constexpr int kFilters = 7;
  if (number(5) == 0) {
    return send(static_cast<Qt::Key>(Qt::Key_1 + number(kFilters - 1)), Qt::ControlModifier);
  }
  const Pressed& pressed = kKeys[number(static_cast<int>(std::size(kKeys)) - 1)];
  send(pressed.key, pressed.modifiers);
}

// Into a setting's field, if one has the focus.
void RandomHand::type() {
  const auto letter = static_cast<char>('0' + number('z' - '0'));
  send(static_cast<Qt::Key>(QChar::fromLatin1(letter).toUpper().unicode()), {},
       QString(QChar::fromLatin1(letter)));
}

void RandomHand::resize() {
  shell_.window().resize(shell_.window().minimumSize() + QSize(number(900), number(600)));
}

void RandomHand::letTimePass() {
  shell_.services->clock.advanceSeconds(number(120) / 10.0);
}

// In steps as a hand makes them.
void RandomHand::drag(QPointF from, QPointF to) {
  constexpr int kSteps = 6;
  constexpr ulong kStep = 8;
  pointer(QEvent::MouseButtonPress, from);
  for (int step = 1; step <= kSteps && from != to; ++step) {
    moment_ += kStep;
    pointer(QEvent::MouseMove, from + (to - from) * step / kSteps);
  }
  moment_ += kStep;
  pointer(QEvent::MouseButtonRelease, to);
  moment_ += 1000;  // no double click
}

// A finger on a phone, else a mouse.
void RandomHand::pointer(QEvent::Type type, QPointF place) {
  QQuickView& window = shell_.window();
  const QPointF global = window.mapToGlobal(place);
  if (shell_.services->device.userInterfaceIdiom() == platform::Idiom::tablet) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    Queue::handleMouseEvent<Later>(&window, moment_, place, global, held, button, type);
    return;
  }
  static QPointingDevice* const finger = QTest::createTouchDevice();
  Queue::TouchPoint point;
  point.id = 1;
  point.area = QRectF(global - QPointF(1, 1), QSizeF(2, 2));
  point.state = type == QEvent::MouseButtonPress ? QEventPoint::Pressed
                : type == QEvent::MouseMove      ? QEventPoint::Updated
                                                 : QEventPoint::Released;
  Queue::handleTouchEvent<Later>(&window, moment_, finger, {point});
}

void RandomHand::send(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
  QQuickView& window = shell_.window();
  Queue::handleKeyEvent<Later>(&window, QEvent::KeyPress, key, modifiers, text);
  Queue::handleKeyEvent<Later>(&window, QEvent::KeyRelease, key, modifiers, text);
}

}  // namespace seedmote::faults
