#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest/QTest>

#include "TableFixture.h"
#include "platform/ui/LayoutLoader.h"

namespace seedmote::platform {
namespace {

enum class Hand { mouse, finger };

// A long table that knows swipes, in a window.
class GestureTest : public TableFixture, public testing::WithParamInterface<Hand> {
 protected:
  GestureTest() {
    for (const SwipeDirection direction : {SwipeDirection::left, SwipeDirection::right}) {
      controller.gestures.addSwipe(direction, [this](SwipeDirection made) {
        controller.notes.emplace_back(made == SwipeDirection::left ? "left" : "right");
      });
    }
    controller.rows = 40;
    controller.view.setFrame({0, 0, 400, 300});
    window.resize(600, 300);
    item = LayoutLoader(engine).load(QStringLiteral("GestureScene_iPad"), controller, window.contentItem());
    table.reload();
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    settle();
  }

  void touch(const std::vector<QPoint>& way) {
    for (std::size_t at = 0; at < way.size(); ++at) {
      at == 0 ? press(way[at]) : move(way[at]);
      if (!byMouse()) {
        QTest::qWait(20);  // a finger's moves between two frames become one
      }
    }
    release(way.back());
    settle();
  }
  // From a place to another, in steps as a hand makes them.
  std::vector<std::string> drag(QPoint from, QPoint by) {
    controller.notes.clear();
    std::vector<QPoint> way;
    for (int step = 0; step <= 5; ++step) {
      way.push_back(from + by * step / 5);
    }
    touch(way);
    return controller.notes;
  }

  QQmlEngine engine;
  QQuickWindow window;
  QQuickItem* item = nullptr;

 private:
  static bool byMouse() { return GetParam() == Hand::mouse; }
  void press(QPoint place) {
    byMouse() ? QTest::mousePress(&window, Qt::LeftButton, {}, place)
              : void(QTest::touchEvent(&window, finger()).press(0, place));
  }
  void move(QPoint place) {
    byMouse() ? QTest::mouseMove(&window, place) : void(QTest::touchEvent(&window, finger()).move(0, place));
  }
  void release(QPoint place) {
    byMouse() ? QTest::mouseRelease(&window, Qt::LeftButton, {}, place)
              : void(QTest::touchEvent(&window, finger()).release(0, place));
  }
  static QPointingDevice* finger() {
    static QPointingDevice* device = QTest::createTouchDevice();
    return device;
  }
};

TEST_P(GestureTest, ATouchIsASwipeADragOrATap) {
  using Notes = std::vector<std::string>;
  EXPECT_EQ(drag({200, 150}, {80, 3}), Notes{"right"});
  EXPECT_EQ(drag({200, 150}, {-80, -12}), Notes{"left"});
  EXPECT_EQ(drag({200, 150}, {20, 0}), Notes{}) << "too short, and no tap any more";
  EXPECT_EQ(drag({200, 150}, {0, 0}), Notes{"select 3"});
  EXPECT_EQ(table.contentOffset(), 0);
  EXPECT_THAT(drag({200, 250}, {30, -150}), testing::Not(testing::Contains("right")));
  EXPECT_GT(table.contentOffset(), 50);
  const double before = table.contentOffset();
  QTest::qWait(5);
  controller.notes.clear();
  touch({{200, 200}, {200, 180}, {150, 175}, {60, 175}});
  EXPECT_THAT(controller.notes, testing::Not(testing::Contains("left"))) << "it began as a drag";
  EXPECT_GT(table.contentOffset(), before - 1);
}

TEST_P(GestureTest, ATapGestureTakesTheTapFromTheRows) {
  controller.gestures.addTap([this] {
    controller.notes.emplace_back("tap");
    controller.gestures.removeTap();
  });
  EXPECT_EQ(drag({200, 150}, {0, 2}), std::vector<std::string>{"tap"});
  EXPECT_EQ(static_cast<FakeCell*>(table.visibleCell(3))->touches,
            (std::vector<std::string>{"began", "cancelled"}));
  EXPECT_EQ(drag({200, 150}, {0, 2}), std::vector<std::string>{"select 3"});
}

TEST_P(GestureTest, AViewMovesWhereItsGeometryGoes) {
  ViewGeometry::animate(0.3, [this] { controller.view.setTranslation({100, 0}); });
  EXPECT_EQ(controller.view.shownFrame().x(), 100);
  EXPECT_LT(item->x(), 100) << "it is on its way";
  EXPECT_TRUE(QTest::qWaitFor([this] { return item->x() == 100; }));
  EXPECT_EQ(drag({250, 150}, {80, 3}), std::vector<std::string>{"right"});
  controller.view.setTranslation({0, 0});
  EXPECT_EQ(item->x(), 0) << "at once";
}

INSTANTIATE_TEST_SUITE_P(, GestureTest, testing::Values(Hand::mouse, Hand::finger),
                         [](const auto& hand) { return hand.param == Hand::mouse ? "Mouse" : "Finger"; });

}  // namespace
}  // namespace seedmote::platform
