#include <gtest/gtest.h>

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest/QTest>
#include <memory>

#include "platform/ui/Alerts.h"
#include "tests/support/TestServices.h"

namespace seedmote::platform {
namespace {

// An alert panel over something that is touched and typed at.
class AlertPanelTest : public testing::Test {
 protected:
  AlertPanelTest() {
    QAccessible::setActive(true);
    QQmlComponent component(&engine);
    component.setData(R"(
      import QtQuick
      import Seedmote.Platform
      Item {
        required property Alerts alerts
        property int reached
        focus: true
        Keys.onPressed: ++reached
        MouseArea { anchors.fill: parent; onPressed: ++parent.reached; onWheel: ++parent.reached }
        AlertPanel { anchors.fill: parent; alerts: parent.alerts }
      })",
                      {});
    scene.reset(qobject_cast<QQuickItem*>(
        component.createWithInitialProperties({{QStringLiteral("alerts"), QVariant::fromValue(&alerts)}})));
    scene->setParentItem(window.contentItem());
    window.resize(500, 375);
    scene->setSize({500, 375});
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    scene->forceActiveFocus();
  }
  void ask(const std::string& message) {
    alerts.show({"Add torrent", message, {"Cancel", "OK"}, [this](int button) { pressed = button; }});
  }
  static QQuickItem* button(QQuickItem* item, QLatin1String title) {
    const QAccessibleInterface* found = QAccessible::queryAccessibleInterface(item);
    if (found != nullptr && found->role() == QAccessible::Button && found->text(QAccessible::Name) == title) {
      return item;
    }
    for (QQuickItem* child : item->childItems()) {
      if (QQuickItem* inChild = button(child, title)) {
        return inChild;
      }
    }
    return nullptr;
  }

  support::TestServices services;
  Alerts alerts;
  QQmlEngine engine;
  QQuickWindow window;
  std::unique_ptr<QQuickItem> scene;
  int pressed = -1;
};

TEST_F(AlertPanelTest, TakesAllKeysAndTouches) {
  for (const auto& [key, expected] : {std::pair(Qt::Key_Escape, 0), {Qt::Key_Return, 1}}) {
    ask("a");
    QTest::keyClick(&window, Qt::Key_Down);
    QTest::keyClick(&window, key);
    services.settle();
    EXPECT_EQ(pressed, expected);
  }
  ask("the button that Tab has gone to");
  QTest::keyClick(&window, Qt::Key_Tab);
  QTest::keyClick(&window, Qt::Key_Return);
  services.settle();
  EXPECT_EQ(pressed, 0);
  ask("b");
  QTest::mouseClick(&window, Qt::LeftButton, {}, {5, 5});
  QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&window, &wheel);
  EXPECT_EQ(scene->property("reached").toInt(), 0);
}

TEST_F(AlertPanelTest, ALongLinkStaysInASmallCard) {
  ask("Do you want to add a torrent?\nmagnet:?xt=" + std::string(100000, 'x'));
  window.grabWindow();  // items are laid out with the next frame
  QQuickItem* cancel = button(scene.get(), QLatin1String("Cancel"));
  EXPECT_GE(cancel->height(), 44);
  EXPECT_LT(cancel->mapToScene({0, cancel->height()}).y(), 375);
  QTest::mouseClick(&window, Qt::LeftButton, {}, cancel->mapToScene({10, 10}).toPoint());
  services.settle();
  EXPECT_EQ(pressed, 0);
}

}  // namespace
}  // namespace seedmote::platform
