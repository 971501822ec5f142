#include <gmock/gmock.h>

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

using testing::ElementsAre;

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
    EXPECT_NE(scene, nullptr) << component.errorString().toStdString();
    scene->setParentItem(window.contentItem());
    show({1024, 768});
    scene->forceActiveFocus();
  }
  void show(QSize size) {
    window.resize(size);
    scene->setSize(size);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  void ask(const char* message) {
    alerts.show(
        {"Add torrent", message, {"Cancel", "OK"}, [this](int button) { pressed.push_back(button); }});
  }
  QQuickItem* button(const char* title) { return find(scene.get(), QLatin1String(title)); }
  static QQuickItem* find(QQuickItem* item, QLatin1String title) {
    const QAccessibleInterface* found = QAccessible::queryAccessibleInterface(item);
    if (found != nullptr && found->role() == QAccessible::Button && found->text(QAccessible::Name) == title) {
      return item;
    }
    for (QQuickItem* child : item->childItems()) {
      if (QQuickItem* inChild = find(child, title)) {
        return inChild;
      }
    }
    return nullptr;
  }
  void keepPicture(const char* name) {
    const QString folder = qEnvironmentVariable("SEEDMOTE_PICTURES");
    if (!folder.isEmpty()) {
      QTest::qWait(200);  // it fades in
      window.grabWindow().save(folder + QLatin1Char('/') + QLatin1String(name));
    }
  }

  support::TestServices services;
  Alerts alerts;
  QQmlEngine engine;
  QQuickWindow window;
  std::unique_ptr<QQuickItem> scene;
  std::vector<int> pressed;
};

TEST_F(AlertPanelTest, TakesAllKeysAndTouches) {
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter}) {
    ask("a");
    for (const Qt::Key other : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_A, key}) {
      QTest::keyClick(&window, other);
    }
    services.settle();
  }
  ask("b");
  for (const QPoint place : {QPoint(5, 5), QPoint(512, 340)}) {
    QTest::mouseClick(&window, Qt::LeftButton, {}, place);
    QWheelEvent wheel(place, place, {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&window, &wheel);
  }
  EXPECT_EQ(scene->property("reached").toInt(), 0);
  QTest::mouseClick(&window, Qt::LeftButton, {}, button("OK")->mapToScene({10, 10}).toPoint());
  services.settle();
  ask("c");
  QAccessible::queryAccessibleInterface(button("Cancel"))
      ->actionInterface()
      ->doAction(QAccessibleActionInterface::pressAction());
  services.settle();
  EXPECT_THAT(pressed, ElementsAre(0, 1, 1, 1, 0));
  QTest::keyClick(&window, Qt::Key_Return);
  QTest::mouseClick(&window, Qt::LeftButton, {}, {5, 5});
  EXPECT_EQ(scene->property("reached").toInt(), 2) << "it has gone";
}

TEST_F(AlertPanelTest, ALongLinkStaysInASmallCard) {
  ask("Do you want to add a torrent?\nhttp://example.org/a.torrent");
  keepPicture("alert-short.png");
  alerts.press(0);
  services.settle();
  ask(("Do you want to add a torrent?\nmagnet:?xt=" + std::string(100000, 'x')).c_str());
  for (const QSize size : {QSize(1024, 461), QSize(500, 375)}) {
    show(size);
    keepPicture(size.width() == 500 ? "alert-phone.png" : "alert-tablet.png");
    for (const char* title : {"Cancel", "OK"}) {
      const QQuickItem* found = button(title);
      ASSERT_NE(found, nullptr);
      EXPECT_GE(found->height(), 44);
      EXPECT_TRUE(QRectF(QPointF(), size).contains(found->mapRectToScene(found->boundingRect())));
      EXPECT_LE(found->mapToScene({0, 0}).y(), size.height() / 2.0 + 187);
    }
  }
}

}  // namespace
}  // namespace seedmote::platform
