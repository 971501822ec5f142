#include "ListWindow.h"
#include "tests/support/SlowHand.h"

namespace seedmote {
namespace {

// On a tablet, with the mouse and with a finger.
class TorrentListGesturesTest : public ListWindow, public testing::WithParamInterface<bool> {
 protected:
  TorrentListGesturesTest() : ListWindow(platform::Idiom::tablet) {
    controller->view()->setTranslation({50, 0});
    showAll();
    window.resize(1024, window.height());
  }
  double slid() { return controller->view()->translation().x(); }

  void gesture(const std::vector<QPoint>& path, int steps = 10) {
    hand_.drag(path, steps);
    settle();
  }

  support::SlowHand hand_{[this]() -> QWindow& { return window; }, GetParam()};
};

INSTANTIATE_TEST_SUITE_P(ByMouseAndFinger, TorrentListGesturesTest, testing::Bool());

TEST_P(TorrentListGesturesTest, SwipesSlideTheListAndNothingElseDoes) {
  struct Case {
    QPoint way;
    double slid;
    const char* log;
  };
  for (const Case& wanted :
       {Case{{120, 0}, 200, "right"}, Case{{40, 300}, 200, "Start dragging\n"},
        Case{{-120, 20}, 50, "Remove a gesture\n"}, Case{{-80, 70}, 50, "left"},
        Case{{-80, 0}, 50, "Removing a null gesture\n"}, Case{{20, 0}, 50, "touch cancel"},
        Case{{100, 120}, 50, "touch cancel"}, Case{{100, 60}, 200, "right"}}) {
    lines.clear();
    gesture({{400, 200}, QPoint(400, 200) + wanted.way});
    EXPECT_EQ(slid(), wanted.slid) << wanted.way.x() << ' ' << wanted.way.y();
    EXPECT_TRUE(lines.contains(wanted.log)) << wanted.log;
    table().setContentOffset(0, false);
  }
  lines.clear();
  gesture({{400, 200}, {400, 140}, {250, 140}});
  EXPECT_EQ(lines.count("left"), 0) << "it began as a drag";
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1);
}

TEST_P(TorrentListGesturesTest, ATapSlidesTheListHomeAndOnlyThenSelects) {
  gesture({{400, 200}, {500, 200}});
  gesture({{400, 40}, {401, 40}}, 40);  // while the list goes a good way below
  EXPECT_EQ(slid(), 50);
  EXPECT_EQ(lines.count("single tap\n"), 1);
  EXPECT_EQ(lines.count("left"), 0);
  EXPECT_EQ(lines.count("touch end"), 0);
  for (const std::int64_t selected : {11, -1, 11}) {
    gesture({{400, 40}, {400, 40}});
    EXPECT_EQ(RVTrans::getTorrentSelection(), selected) << "however quickly one tap follows the other";
  }
}

class PhoneGesturesTest : public ListWindow {
 protected:
  PhoneGesturesTest() : ListWindow(platform::Idiom::phone) {}
};

TEST_F(PhoneGesturesTest, TheListSlidesHomeOnceAfterTheStart) {
  controller->view()->setTranslation({200, 0});
  controller->viewDidLoad();
  showWindow();
  EXPECT_EQ(list->x(), 200);
  tick();
  EXPECT_EQ(controller->view()->translation().x(), 0);
  EXPECT_EQ(controller->view()->animationMilliseconds(), 1000);
  EXPECT_GT(list->x(), 0) << "it is on its way";
  EXPECT_TRUE(QTest::qWaitFor([this] { return list->x() == 0; }));
  controller->handleSwipeFrom(platform::SwipeDirection::right);
  tick();
  EXPECT_EQ(controller->view()->translation().x(), 200);
}

TEST_F(PhoneGesturesTest, WheelAndKeysScrollButNeverPull) {
  for (int id = 20; id < 30; ++id) {
    torrents += R"(,{"id":)" + std::to_string(id) + "}";
  }
  showAll();
  const auto wheel = [&](int pixels, Qt::ScrollPhase phase) {
    QWheelEvent event({100, 100}, {100, 100}, {0, pixels}, {0, 2 * pixels}, Qt::NoButton, Qt::NoModifier,
                      phase, false, Qt::MouseEventSynthesizedBySystem);
    QCoreApplication::sendEvent(&window, &event);
    settle();
  };
  wheel(0, Qt::ScrollBegin);
  wheel(-70, Qt::ScrollUpdate);
  EXPECT_EQ(table().contentOffset(), 70);
  for (int i = 0; i < 5; ++i) {
    wheel(60, Qt::ScrollUpdate);
    EXPECT_GE(table().contentOffset(), 0);
  }
  wheel(0, Qt::ScrollEnd);
  for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_End, Qt::Key_Home, Qt::Key_Up}) {
    QTest::keyClick(&window, key);
    const double end = table().contentHeight() - 355;
    const double offset = key == Qt::Key_End ? end : 0;
    EXPECT_TRUE(QTest::qWaitFor([&] { return table().contentOffset() == offset; })) << key;
  }
  settle();
  EXPECT_EQ(lines.count("Start dragging\n"), 0);
}

}  // namespace
}  // namespace seedmote
