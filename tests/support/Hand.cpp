#include "tests/support/Hand.h"

#include <qpa/qwindowsysteminterface.h>

#include <QPointingDevice>
#include <QtTest/QTest>
#include <algorithm>
#include <iterator>

namespace seedmote::support {

namespace {

using Queue = QWindowSystemInterface;
using Later = Queue::AsynchronousDelivery;
constexpr int kFrame = 16;  // milliseconds
constexpr int kNoDoubleClick = 1000;

const QKeyCombination kKeys[] = {Qt::Key_F5,
                                 Qt::CTRL | Qt::Key_S,
                                 Qt::CTRL | Qt::Key_P,
                                 Qt::Key_Delete,
                                 Qt::Key_Delete,
                                 Qt::CTRL | Qt::Key_V,
                                 Qt::CTRL | Qt::Key_Comma,
                                 Qt::Key_Escape,
                                 Qt::Key_F1,
                                 Qt::Key_Up,
                                 Qt::Key_Down,
                                 Qt::Key_Home,
                                 Qt::Key_End,
                                 Qt::Key_PageDown,
                                 Qt::Key_Return,
                                 Qt::Key_Return,
                                 Qt::Key_Space,
                                 Qt::Key_Tab,
                                 Qt::SHIFT | Qt::Key_Tab};
constexpr int kFilters = 7;

void touch(QWindow& window, ulong moment, QPoint place, QEvent::Type type) {
  static QPointingDevice* const finger = QTest::createTouchDevice();
  const bool ends = type == QEvent::MouseButtonRelease;
  Queue::TouchPoint point;
  point.id = 1;
  point.area = QRectF(window.mapToGlobal(place) - QPoint(4, 4), QSizeF(8, 8));
  point.pressure = ends ? 0 : 1;
  point.state = type == QEvent::MouseButtonPress ? QEventPoint::Pressed
                : ends                           ? QEventPoint::Released
                                                 : QEventPoint::Updated;
  Queue::handleTouchEvent<Later>(&window, moment, finger, {point});
}

void click(QWindow& window, ulong moment, QPoint place, QEvent::Type type) {
  const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
  const auto changed = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
  Queue::handleMouseEvent<Later>(&window, moment, place, window.mapToGlobal(place), held, changed, type);
}

}  // namespace

void Hand::hold(QPoint place, QEvent::Type type) {
  onMain([&](QWindow& window) { (touches_ ? touch : click)(window, moment_, place, type); });
  rest(kFrame);
}

void Hand::drag(const std::vector<QPoint>& path, int steps) {
  hold(path.front(), QEvent::MouseButtonPress);
  for (std::size_t part = 1; part < path.size(); ++part) {
    const QPoint way = path[part] - path[part - 1];
    for (int step = 1; step <= steps; ++step) hold(path[part - 1] + way * step / steps, QEvent::MouseMove);
  }
  hold(path.back(), QEvent::MouseButtonRelease);
  moment_ += kNoDoubleClick;
}

void Hand::wheel(QPoint place, int turns) {
  onMain([&](QWindow& window) {
    Queue::handleWheelEvent(&window, place, window.mapToGlobal(place), QPoint(), QPoint(0, 120 * turns));
  });
}

void Hand::press(int key, Qt::KeyboardModifiers modifiers, const QString& text) {
  onMain([&](QWindow& window) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      Queue::handleKeyEvent<Later>(&window, type, key, modifiers, text);
    }
  });
}

void Hand::type(const QString& text) {
  press(Qt::Key_A, Qt::ControlModifier);
  for (const QChar letter : text) press(letter.toUpper().unicode(), Qt::NoModifier, letter);
}

void Hand::closeWindow() {
  onMain([](QWindow& window) { Queue::handleCloseEvent<Later>(&window); });
}

std::vector<Hand::Target> Hand::targets() {
  std::vector<Target> found;
  onMain([&](QWindow& window) {
    std::vector<QAccessibleInterface*> all{QAccessible::queryAccessibleInterface(&window)};
    for (std::size_t at = 0; at < all.size(); ++at) {
      QAccessibleInterface* const one = all[at];
      if (one == nullptr) continue;
      for (int child = 0; child < one->childCount(); ++child) all.push_back(one->child(child));
      const QAccessible::Role role = one->role();
      const bool isField = role == QAccessible::EditableText;
      if (!isField && role != QAccessible::Button && role != QAccessible::ListItem) continue;
      const QString name = one->text(QAccessible::Name);
      const QString said = isField && name.isEmpty() ? one->text(QAccessible::Description) : name;
      if (!one->state().invisible) found.push_back({said, role, window.mapFromGlobal(one->rect().center())});
    }
  });
  return found;
}

std::vector<Hand::Target> Hand::targets(const QString& name) {
  std::vector<Target> named = targets();
  std::erase_if(named, [&name](const Target& target) { return target.name != name; });
  return named;
}

QPoint Hand::anyPlace() {
  QSize size(1, 1);
  onMain([&size](QWindow& window) { size = window.size(); });
  return {any(0, size.width()), any(0, size.height())};
}

QString Hand::anyLink() {
  const QString number = QString::number(random_(), 16);
  return QStringLiteral("magnet:?xt=urn:btih:%1&dn=copied%20%2")
      .arg(number, 40, QLatin1Char('0'))
      .arg(number);
}

void Hand::swipe() {
  const QPoint from = anyPlace();
  drag(from, from + QPoint(any(0, 1) == 0 ? 160 : -160, any(-10, 10)), 8);
}

void Hand::pull() {
  const QPoint from(anyPlace().x(), any(40, 60));
  drag(from, from + QPoint(any(0, 10), 300), 12);
}

void Hand::pressAnyKey() {
  const int key = any(0, 5) == 0 ? -1 : any(0, static_cast<int>(std::size(kKeys)) - 1);
  if (key < 0) return press(Qt::Key_1 + any(0, kFilters - 1), Qt::ControlModifier);
  press(kKeys[key].key(), kKeys[key].keyboardModifiers());
}

void Hand::resize() {
  const QSize more(any(0, 900), any(0, 600));
  onMain([&more](QWindow& window) { window.resize(window.minimumSize() + more); });
}

}  // namespace seedmote::support
