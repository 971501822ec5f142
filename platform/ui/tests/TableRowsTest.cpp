#include <gmock/gmock.h>

#include <QAccessible>
#include <QPointingDevice>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QtTest/QTest>
#include <stdexcept>

#include "FakeTable.h"
#include "platform/ui/LayoutLoader.h"
#include "platform/ui/TableRows.h"

namespace seedmote::platform {
namespace {

using testing::ElementsAre;

class TableRowsTest : public testing::Test {
 protected:
  TableRowsTest() {
    window.resize(400, 300);
    controller.rows = 1000;
    controller.table.reload();
    root =
        loader.load(LayoutLoader::layoutName("TableScene", Idiom::tablet), controller, window.contentItem());
    root->setSize({400, 300});
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    settle();
    flickable = root->findChild<QQuickItem*>(QString(), Qt::FindDirectChildrenOnly);
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

  FakeCell* cell(int row) const { return static_cast<FakeCell*>(controller.table.visibleCell(row)); }

  void settle() { services.settle(controller.table); }

  TableServices services;
  QQmlEngine engine;
  LayoutLoader loader{engine};
  FakeController controller;
  QQuickWindow window;
  QQuickItem* root = nullptr;
  QQuickItem* flickable = nullptr;
  TableRows* rows = nullptr;
};

TEST_F(TableRowsTest, PlacesOneDelegateForEachLiveRowAndReusesIt) {
  EXPECT_EQ(visibleRows().size(), controller.table.liveRows().size());
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
  controller.table.reload();
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
  for (int y = 70; y <= 250; y += 20) {
    QTest::touchEvent(&window, finger.get()).move(0, {100, y}, &window);
    QTest::qWait(5);      // a drag takes time, else it has no speed
    window.grabWindow();  // and touches are delivered with the frames
  }
  settle();
  EXPECT_LT(contentY(), -50);
  EXPECT_TRUE(controller.table.isDragging());
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

TEST_F(TableRowsTest, KeysAndWheelScroll) {
  root->forceActiveFocus();
  QTest::keyClick(&window, Qt::Key_Down);
  EXPECT_EQ(contentY(), 50);
  QTest::keyClick(&window, Qt::Key_Up);
  EXPECT_EQ(contentY(), 0);
  QTest::keyClick(&window, Qt::Key_End);
  ASSERT_TRUE(QTest::qWaitFor([&] { return contentY() == 1000 * 50 - 300; }));
  QTest::keyClick(&window, Qt::Key_Home);
  ASSERT_TRUE(QTest::qWaitFor([&] { return contentY() == 0; }));
  QWheelEvent wheel({100, 100}, {100, 100}, {}, {0, -240}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                    false);
  QCoreApplication::sendEvent(&window, &wheel);
  EXPECT_TRUE(QTest::qWaitFor([&] { return contentY() > 20; }));
}

TEST_F(TableRowsTest, AssistiveTechnologyReadsAndPressesRows) {
  QAccessible::setActive(true);
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(root);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->role(), QAccessible::List);
  EXPECT_EQ(list->text(QAccessible::Name), QStringLiteral("Torrents"));
  QQuickItem* third = nullptr;
  for (QQuickItem* item : visibleRows()) {
    third = item->property("cell").value<TableViewCell*>()->row() == 3 ? item : third;
  }
  QAccessibleInterface* row = QAccessible::queryAccessibleInterface(third);
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row->role(), QAccessible::ListItem);
  EXPECT_EQ(row->text(QAccessible::Name), QStringLiteral("torrent 1003"));
  row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  settle();
  EXPECT_THAT(controller.notes, ElementsAre("select 3"));
}

TEST(LayoutLoaderTest, JoinsControllerIdiomAndFile) {
  EXPECT_EQ(LayoutLoader::layoutName("RVTorrentListController", Idiom::tablet),
            QStringLiteral("RVTorrentListController_iPad"));
  EXPECT_EQ(LayoutLoader::layoutName("RVTorrentListController", Idiom::phone),
            QStringLiteral("RVTorrentListController_iPhone"));
  QQmlEngine engine;
  LayoutLoader loader(engine);
  QObject controller;
  EXPECT_THROW(loader.load(QStringLiteral("NoSuchLayout_iPad"), controller, nullptr), std::runtime_error);
}

}  // namespace
}  // namespace seedmote::platform
