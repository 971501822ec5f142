#pragma once

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest/QTest>

#include "ListFixture.h"
#include "platform/ui/LayoutLoader.h"

namespace seedmote {

// The torrent list in a window of its own.
class ListWindow : public ListFixture {
 protected:
  explicit ListWindow(platform::Idiom idiom) : ListFixture(idiom), idiom_(idiom) {}

  // The window with the daemon's torrents in it.
  void showAll() {
    show();
    showWindow();
  }
  void showWindow() {
    const QSize size = idiom_ == platform::Idiom::tablet ? QSize(660, 600) : QSize(419, 355);
    window.resize(size);
    controller->view()->setFrame({QPointF(), size});
    list = loader.load(platform::LayoutLoader::layoutName("RVTorrentListController", idiom_), *controller,
                       window.contentItem());
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    settle();
  }

  // The colour of the window at a place of an item.
  QColor colorAt(QQuickItem* item, QPointF place) {
    return window.grabWindow().pixelColor(item->mapToScene(place).toPoint());
  }

  platform::Idiom idiom_;
  QQmlEngine engine;
  platform::LayoutLoader loader{engine};
  QQuickWindow window;
  QQuickItem* list = nullptr;
};

}  // namespace seedmote
