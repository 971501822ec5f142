#include "tests/soak/Hand.h"

#include <qpa/qwindowsysteminterface.h>

#include <QPointingDevice>
#include <QtTest/QTest>
#include <chrono>
#include <thread>

namespace seedmote::soak {

namespace {

using Queue = QWindowSystemInterface;
constexpr auto kFrame = std::chrono::milliseconds(16);

void touch(QWindow& window, QPoint place, QEvent::Type type) {
  static QPointingDevice* const finger = QTest::createTouchDevice();
  const bool ends = type == QEvent::MouseButtonRelease;
  Queue::TouchPoint point;
  point.id = 1;
  point.area = QRectF(window.mapToGlobal(place) - QPoint(4, 4), QSizeF(8, 8));
  point.pressure = ends ? 0 : 1;
  point.state = type == QEvent::MouseButtonPress ? QEventPoint::Pressed
                : ends                           ? QEventPoint::Released
                                                 : QEventPoint::Updated;
  Queue::handleTouchEvent<Queue::AsynchronousDelivery>(&window, finger, {point});
}

void click(QWindow& window, QPoint place, QEvent::Type type) {
  const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
  const auto changed = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
  Queue::handleMouseEvent<Queue::AsynchronousDelivery>(&window, place, window.mapToGlobal(place), held,
                                                       changed, type);
}

}  // namespace

void Hand::hold(QPoint place, QEvent::Type type) const {
  loop_.run([touches = touches_, place, type](Shell& shell) {
    touches ? touch(shell.delegate().window(), place, type) : click(shell.delegate().window(), place, type);
  });
  std::this_thread::sleep_for(kFrame);
}

void Hand::drag(QPoint from, QPoint to, int steps) const {
  hold(from, QEvent::MouseButtonPress);
  for (int step = 1; step <= steps; ++step) {
    hold(from + (to - from) * step / steps, QEvent::MouseMove);
  }
  hold(to, QEvent::MouseButtonRelease);
}

void Hand::wheel(QPoint place, int turns) const {
  loop_.run([place, turns](Shell& shell) {
    QWindow& window = shell.delegate().window();
    Queue::handleWheelEvent(&window, place, window.mapToGlobal(place), QPoint(), QPoint(0, 120 * turns));
  });
}

void Hand::press(int key, Qt::KeyboardModifiers modifiers, const QString& text) const {
  loop_.run([=](Shell& shell) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      Queue::handleKeyEvent<Queue::AsynchronousDelivery>(&shell.delegate().window(), type, key, modifiers,
                                                         text);
    }
  });
}

void Hand::type(const QString& text) const {
  press(Qt::Key_A, Qt::ControlModifier);
  for (const QChar letter : text) {
    press(letter.toUpper().unicode(), Qt::NoModifier, letter);
  }
}

void Hand::closeWindow() const {
  loop_.run(
      [](Shell& shell) { Queue::handleCloseEvent<Queue::AsynchronousDelivery>(&shell.delegate().window()); });
}

}  // namespace seedmote::soak
