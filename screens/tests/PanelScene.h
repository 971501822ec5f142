#pragma once

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest/QTest>

#include "platform/ui/LayoutLoader.h"

namespace seedmote {

// A window with one layout on the colour of the screens.
struct PanelScene {
  void show(const char* layout, QObject& controller, const QSizeF& points) {
    window.setColor(QColor(240, 250, 254));
    window.resize(points.toSize());
    platform::LayoutLoader(engine).load(QString::fromLatin1(layout), controller, window.contentItem());
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  QQmlEngine engine;
  QQuickWindow window;
};

}  // namespace seedmote
