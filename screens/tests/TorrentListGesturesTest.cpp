#include <QPointingDevice>
#include <memory>

#include "ListWindow.h"

namespace seedmote {
namespace {

using platform::Idiom;

class TorrentListGestures : public ListWindow {
 protected:
  explicit TorrentListGestures(Idiom idiom) : ListWindow(idiom) {}

  void showAt(double x) {
    controller->view()->setTranslation({x, 0});
    showAll();
    window.resize(1024, window.height());
    lines.clear();
  }
  double slid() { return controller->view()->translation().x(); }

  void touch(QTest::MouseAction action, QPoint place) {
    if (!finger_) {
      return QTest::mouseEvent(action, &window, Qt::LeftButton, {}, place);
    }
    auto touches = QTest::touchEvent(&window, finger_.get());
    action == QTest::MousePress  ? touches.press(0, place, &window)
    : action == QTest::MouseMove ? touches.move(0, place, &window)
                                 : touches.release(0, place, &window);
  }
  void press(QPoint place) { touch(QTest::MousePress, place); }
  void move(QPoint place) {
    touch(QTest::MouseMove, place);
    QTest::qWait(5);      // a drag takes time, else it has no speed
    window.grabWindow();  // and touches are delivered with the frames
  }
  void release(QPoint place) {
    touch(QTest::MouseRelease, place);
    settle();
  }
  void drag(QPoint from, QPoint way, int steps = 10) {
    press(from);
    for (int step = 1; step <= steps; ++step) {
      move(from + way * step / steps);
    }
  }
  void gesture(QPoint from, QPoint way) {
    drag(from, way);
    release(from + way);
  }

  std::unique_ptr<QPointingDevice> finger_;  // none: the mouse
};

class TabletGesturesTest : public TorrentListGestures, public testing::WithParamInterface<bool> {
 protected:
  TabletGesturesTest() : TorrentListGestures(Idiom::tablet) {
    if (GetParam()) {
      finger_.reset(QTest::createTouchDevice());
    }
  }
};

INSTANTIATE_TEST_SUITE_P(ByMouseAndFinger, TabletGesturesTest, testing::Bool());

TEST_P(TabletGesturesTest, SwipesSlideTheListAndNothingElseDoes) {
  showAt(50);
  struct Case {
    QPoint way;
    double slid;
    const char* log;
  };
  for (const Case& wanted : {Case{{120, 0}, 200, "right"}, Case{{40, 300}, 200, "Start dragging\n"},
                             Case{{-120, 20}, 50, "Remove a gesture\n"}, Case{{-80, 70}, 50, "left"},
                             Case{{-80, 0}, 50, "Removing a null gesture\n"}, Case{{100, 120}, 50, ""},
                             Case{{100, 60}, 200, "right"}, Case{{100, 0}, 200, "right"}}) {
    lines.clear();
    gesture({400, 200}, wanted.way);
    EXPECT_EQ(slid(), wanted.slid) << wanted.way.x() << ' ' << wanted.way.y();
    EXPECT_TRUE(wanted.log[0] == '\0' || lines.contains(wanted.log)) << wanted.log;
    EXPECT_EQ(lines.count("touch end"), 0);
    table().setContentOffset(0, false);
  }
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1);
}

TEST_P(TabletGesturesTest, ATapSlidesTheListHomeAndOnlyThenSelects) {
  showAt(50);
  gesture({400, 200}, {100, 0});
  lines.clear();
  gesture({400, 40}, {3, 1});
  EXPECT_EQ(slid(), 50);
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1);
  EXPECT_EQ(lines.count("single tap\n"), 1);
  EXPECT_EQ(lines.count("touch cancel"), lines.count("touch begin"));

  for (const std::int64_t selected : {11, -1, 11}) {
    gesture({400, 40}, {});
    EXPECT_EQ(RVTrans::getTorrentSelection(), selected) << "however quickly one tap follows the other";
  }
  EXPECT_EQ(lines.count("single tap\n"), 1);
}

TEST_P(TabletGesturesTest, AFingerThatRestsOnASlidingListMakesNoSwipe) {
  showAt(50);
  gesture({400, 200}, {100, 0});
  press({400, 200});
  for (int i = 0; i < 60; ++i) {
    move({400 + i % 2, 200});  // the list goes a good way below it
  }
  release({400, 200});
  EXPECT_EQ(lines.count("left"), 0);
  EXPECT_EQ(lines.count("single tap\n"), 1);
}

TEST_P(TabletGesturesTest, APullOffersTheCopiedLinkAndGlidesBack) {
  showAt(50);
  ui.pasteboard.text = "magnet:?xt=1";
  drag({400, 20}, {10, 300}, 30);
  settle();
  EXPECT_LE(table().contentOffset(), -80);
  EXPECT_EQ(controller->toolbar()->message(),
            QStringLiteral("Release to add a new torrent from a copied url."));
  keepPicture("pull-release.png");
  release({410, 320});
  EXPECT_EQ(ui.alerts.message(), QStringLiteral("Do you want to add a torrent?\nmagnet:?xt=1"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return table().contentOffset() == 0; }));

  lines.clear();
  drag({400, 20}, {0, 80});
  settle();
  EXPECT_EQ(controller->toolbar()->message(), QStringLiteral("Pull to add a new torrent from a copied url."));
  keepPicture("pull.png");
  release({400, 100});
  EXPECT_EQ(lines.count("End dragging\n"), 0);
}

class PhoneGesturesTest : public TorrentListGestures {
 protected:
  PhoneGesturesTest() : TorrentListGestures(Idiom::phone) {}

  void wheel(QPoint pixels, QPoint angle, Qt::ScrollPhase phase) {
    QWheelEvent event({100, 100}, {100, 100}, pixels, angle, Qt::NoButton, Qt::NoModifier, phase, false,
                      Qt::MouseEventSynthesizedBySystem);
    QCoreApplication::sendEvent(&window, &event);
    QTest::qWait(5);
    settle();
  }
};

TEST_F(PhoneGesturesTest, TheListSlidesHomeOnceAfterTheStart) {
  controller->view()->setTranslation({200, 0});
  controller->viewDidLoad();
  EXPECT_EQ(controller->toolbar()->view()->frame().bottom(), 0);
  tick();
  EXPECT_EQ(slid(), 0);
  EXPECT_EQ(controller->view()->animationMilliseconds(), 1000);
  controller->handleSwipeFrom(platform::SwipeDirection::right);
  tick();
  EXPECT_EQ(slid(), 200);
  EXPECT_EQ(lines.count("showFilterAtStartup"), 1);
  controller->handleSingleTap();
  EXPECT_EQ(slid(), 0);
}

TEST_F(PhoneGesturesTest, WheelAndKeysScrollButNeverPull) {
  ui.pasteboard.text = "magnet:?xt=1";
  for (int id = 20; id < 30; ++id) {
    torrents += R"(,{"id":)" + std::to_string(id) + "}";
  }
  showAt(0);
  double lowest = 0;
  QObject::connect(&table(), &platform::TableView::liveRowsChanged, &window,
                   [&] { lowest = std::min(lowest, table().contentOffset()); });
  wheel({}, {}, Qt::ScrollBegin);
  wheel({0, -70}, {0, -140}, Qt::ScrollUpdate);
  EXPECT_EQ(table().contentOffset(), 70);
  for (int i = 0; i < 5; ++i) {
    wheel({0, 60}, {0, 120}, Qt::ScrollUpdate);
  }
  wheel({}, {}, Qt::ScrollEnd);
  EXPECT_EQ(table().contentOffset(), 0);
  wheel({}, {0, 1200}, Qt::NoScrollPhase);
  for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_Home, Qt::Key_PageUp, Qt::Key_Up}) {
    QTest::keyClick(&window, key);
    settle();
  }
  EXPECT_EQ(lowest, 0);
  EXPECT_TRUE(window.activeFocusItem()->property("table").isValid());
  EXPECT_FALSE(ui.alerts.isShown());
  EXPECT_EQ(lines.count("Start dragging\n"), 0);
}

}  // namespace
}  // namespace seedmote
