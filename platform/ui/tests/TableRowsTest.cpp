#include <QAccessible>
#include <QPointingDevice>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QtTest/QTest>

#include "TableFixture.h"
#include "platform/ui/LayoutLoader.h"
#include "platform/ui/TableRows.h"

namespace seedmote::platform {
namespace {

using testing::ElementsAre;

class TableRowsTest : public TableFixture {
 protected:
  TableRowsTest() {
    window.resize(400, 300);
    controller.rows = 1000;
    table.reload();
    root =
        loader.load(LayoutLoader::layoutName("TableScene", Idiom::tablet), controller, window.contentItem());
    root->setSize({400, 300});
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    settle();
    for (QQuickItem* child : root->childItems()) {
      if (child->inherits("QQuickFlickable")) {
        flickable = child;
      }
    }
    rows = flickable->findChild<TableRows*>();
  }

  double contentY() const { return flickable->property("contentY").toDouble(); }

  std::vector<QQuickItem*> visibleRows() const {
    std::vector<QQuickItem*> found;
    for (QQuickItem* child : rows->childItems()) {
      if (child->isVisible()) {
        found.push_back(child);
      }
    }
    return found;
  }

  QQuickItem* rowItem(int row) const {
    for (QQuickItem* item : visibleRows()) {
      if (item->property("cell").value<TableViewCell*>()->row() == row) {
        return item;
      }
    }
    return nullptr;
  }

  FakeCell* cell(int row) const { return static_cast<FakeCell*>(table.visibleCell(row)); }

  // Moves the finger, already down, from one height to another. Leaves the finger down.
  void drag(QPointingDevice* finger, int from, int to) {
    const int step = to > from ? 20 : -20;
    for (int y = from; y != to + step; y += step) {
      QTest::touchEvent(&window, finger).move(0, {100, y}, &window);
      QTest::qWait(5);      // a drag takes time, else it has no speed
      window.grabWindow();  // and touches are delivered with the frames
    }
  }

  QQmlEngine engine;
  LayoutLoader loader{engine};
  QQuickWindow window;
  QQuickItem* root = nullptr;
  QQuickItem* flickable = nullptr;
  TableRows* rows = nullptr;
};

TEST_F(TableRowsTest, PlacesOneDelegateForEachLiveRowAndReusesIt) {
  EXPECT_EQ(visibleRows().size(), table.liveRows().size());
  const auto total = [&] { return rows->childItems().size(); };
  const auto many = total();
  for (int step = 1; step <= 40; ++step) {
    flickable->setProperty("contentY", 37.5 * step);
    settle();
  }
  EXPECT_LE(total(), many + 4);
  for (QQuickItem* item : visibleRows()) {
    const auto* shown = item->property("cell").value<TableViewCell*>();
    EXPECT_EQ(item->y(), shown->row() * 50 - contentY());
    EXPECT_EQ(item->size(), QSizeF(400, 50));
  }

  controller.heightOf = [](int row) { return row == 900 ? 78.0 : 0.0; };
  table.reload();
  settle();
  ASSERT_EQ(visibleRows().size(), 1u);
  EXPECT_EQ(contentY(), 0);
  EXPECT_EQ(visibleRows()[0]->y(), 0);
}

TEST_F(TableRowsTest, TapsReachTheRowUnderTheFinger) {
  QTest::mouseClick(&window, Qt::LeftButton, {}, {100, 125});
  settle();
  EXPECT_THAT(controller.notes, ElementsAre("select 2"));
  EXPECT_THAT(cell(2)->touches, ElementsAre("began", "ended"));

  std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
  QTest::touchEvent(&window, finger.get()).press(0, {100, 60}, &window);
  QTest::touchEvent(&window, finger.get()).release(0, {100, 60}, &window);
  settle();
  EXPECT_THAT(controller.notes, ElementsAre("select 2", "deselect 2", "select 1"));

  // Sliding to another row is no tap.
  controller.notes.clear();
  QTest::mousePress(&window, Qt::LeftButton, {}, {100, 148});
  QTest::mouseRelease(&window, Qt::LeftButton, {}, {100, 152});
  settle();
  EXPECT_THAT(controller.notes, testing::IsEmpty());
}

TEST_F(TableRowsTest, ADragScrollsAndCancelsTheTouch) {
  std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
  QTest::touchEvent(&window, finger.get()).press(0, {100, 60}, &window);
  drag(finger.get(), 70, 250);
  settle();
  EXPECT_LT(contentY(), -20);  // it resists, more or less with the pace
  EXPECT_TRUE(table.isDragging());
  ASSERT_FALSE(controller.offsets.empty());
  EXPECT_EQ(controller.offsets.back(), contentY());
  EXPECT_THAT(cell(1)->touches, ElementsAre("began", "cancelled"));
  const int pulled = static_cast<int>(contentY());
  QTest::touchEvent(&window, finger.get()).release(0, {100, 250}, &window);
  settle();
  ASSERT_EQ(controller.notes.size(), 2u);
  EXPECT_EQ(controller.notes[0].substr(0, 5), "begin");
  EXPECT_EQ(controller.notes[1], "end " + std::to_string(pulled));
}

TEST_F(TableRowsTest, TheEndOfADragSaysWhetherTheContentMovesOn) {
  std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
  const auto dragAndRelease = [&](int from, int to, int restMilliseconds) {
    QTest::touchEvent(&window, finger.get()).press(0, {100, from}, &window);
    drag(finger.get(), from, to);
    QTest::qWait(restMilliseconds);
    QTest::touchEvent(&window, finger.get()).release(0, {100, to}, &window);
    settle();
  };
  const auto stands = [&] { return !flickable->property("moving").toBool(); };
  dragAndRelease(250, 50, 0);
  EXPECT_THAT(controller.decelerates, ElementsAre(true)) << "a flick";
  flickable->setProperty("contentY", 5000);
  ASSERT_TRUE(QTest::qWaitFor(stands));

  controller.decelerates.clear();
  dragAndRelease(250, 50, 150);
  EXPECT_THAT(controller.decelerates, ElementsAre(false)) << "the finger rested before it left";
  ASSERT_TRUE(QTest::qWaitFor(stands));

  flickable->setProperty("contentY", 0);
  controller.decelerates.clear();
  dragAndRelease(50, 250, 150);
  EXPECT_THAT(controller.decelerates, ElementsAre(true)) << "a pulled content glides back";
}

TEST_F(TableRowsTest, ATouchEndsAtItsCellAlsoWhenTheRowHasGone) {
  for (const char* end : {"ended", "cancelled"}) {
    FakeCell* const touched = cell(2);
    ASSERT_NE(touched, nullptr);
    touched->touches.clear();
    QTest::mousePress(&window, Qt::LeftButton, {}, {100, 125});
    controller.heightOf = [](int) { return 0.0; };
    table.reload();
    settle();
    if (end == std::string("cancelled")) {
      rows->ungrabMouse();
    }
    QTest::mouseRelease(&window, Qt::LeftButton, {}, {100, 125});
    settle();
    EXPECT_THAT(touched->touches, ElementsAre("began", end));
    EXPECT_THAT(controller.notes, testing::IsEmpty());
    controller.heightOf = [](int) { return 50.0; };
    table.reload();
    settle();
  }
}

TEST_F(TableRowsTest, AFlickThatGoesOnWhileTheMainThreadWaitsShowsItsRows) {
  services.main.wait([&] {
    for (int step = 1; step <= 10; ++step) {
      duringWait([&] { flickable->setProperty("contentY", 400 * step); });
      duringWait([&] {
        for (int y = 0; y < 300; y += 50) {
          EXPECT_NE(rowItem(table.rowAt(contentY() + y)), nullptr) << step;
        }
      });
    }
  });
}

TEST_F(TableRowsTest, AGlideGoesOnOverAReloadUnlessItsPlaceHasGone) {
  for (const auto& [count, offset, end] : {std::tuple(1000, 2000, 2000), std::tuple(10, 40000, 200)}) {
    table.setContentOffset(offset, true);
    controller.rows = count;
    table.reload();
    settle();
    EXPECT_TRUE(QTest::qWaitFor([&, end = end] { return contentY() == end; })) << contentY();
  }
}

// The first is also what a screen reader follows.
TEST_F(TableRowsTest, KeysAndTheMouseAreSeenAtTheirRowAFingerIsNot) {
  const auto isTinted = [this](int row) {
    return rowItem(row)->property("hover").value<QQuickItem*>()->opacity() > 0;
  };
  window.requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  table.setMarksRows(true);
  table.wantKeys();
  QTest::keyClick(&window, Qt::Key_Down);
  EXPECT_TRUE(rowItem(1)->property("ring").value<QQuickItem*>()->isVisible());
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(rowItem(1))->state().focused);

  int x = 100;  // a mouse that is moved on: the first move may come before the rows are ready
  EXPECT_TRUE(QTest::qWaitFor([&] {
    QTest::mouseMove(&window, {++x, 210});
    return isTinted(4);
  }));
  std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
  QTest::touchEvent(&window, finger.get()).press(0, {100, 60}, &window);
  EXPECT_FALSE(isTinted(1));
  QTest::touchEvent(&window, finger.get()).release(0, {100, 60}, &window);
  EXPECT_FALSE(isTinted(1));
}

}  // namespace
}  // namespace seedmote::platform
