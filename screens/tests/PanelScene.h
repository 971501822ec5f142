#pragma once

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest/QTest>
#include <string>

#include "platform/ui/LayoutLoader.h"

namespace seedmote {

// A window with one layout on the colour of the screens.
struct PanelScene {
  void show(const char* layout, QObject& controller, const QSizeF& points) {
    window.setColor(QColor(240, 250, 254));
    window.resize(points.toSize());
    window.contentItem()->setTransformOrigin(QQuickItem::TopLeft);
    platform::LayoutLoader(engine).load(QString::fromLatin1(layout), controller, window.contentItem());
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  // With a folder in SEEDMOTE_PICTURES pictures at scales 1 and 2 are kept there for a look.
  void keepPicture(const std::string& name, const QSizeF& points) {
    const QString folder = qEnvironmentVariable("SEEDMOTE_PICTURES");
    for (const int scale : {2, 1}) {
      window.contentItem()->setScale(scale);
      window.resize(points.toSize() * scale);
      QTest::qWait(50);
      if (!folder.isEmpty()) {
        const QString file = QStringLiteral("%1/%2@%3.png").arg(folder, QString::fromStdString(name));
        window.grabWindow().save(file.arg(scale));
      }
    }
  }

  QQmlEngine engine;
  QQuickWindow window;
};

}  // namespace seedmote
