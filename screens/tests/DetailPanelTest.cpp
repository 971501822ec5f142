#include <gmock/gmock.h>

#include <QPointingDevice>

#include "PanelScene.h"
#include "screens/RVTorrentDetailController.h"
#include "tests/support/TestServices.h"

namespace seedmote {
namespace {

using testing::ElementsAre;

const QSizeF kRoot(1024, 768);

std::shared_ptr<RVTorrentInfo> hardTorrent() {
  auto info = std::make_shared<RVTorrentInfo>();
  info->activityDate = RVDate{1795240320};
  info->dateCreated = RVDate{-1};
  info->bandwidthPrioritys = -9223372036854775807 - 1;
  info->downloadLimited = true;
  const auto add = [&](const char* name, std::int64_t done, std::int64_t length) {
    info->files.push_back({name, json::Value::integer(length), json::Value::integer(done)});
  };
  add("a third", 1, 3);
  add("3 GiB, half of it", 1610612736, 3221225472);
  add("700 MiB of 1 GiB", 734003200, 1073741824);
  add("nothing of 1 TiB", 0, 1099511627776);
  add("more than all", 2147483647, 1);
  add("more than nothing", 1, 0);
  return info;
}

class DetailPanelTest : public testing::Test {
 protected:
  DetailPanelTest() {
    panel.view()->setFrame({28, 28, 596, 732});
    panel.viewDidLoad();
    panel.resetPosition();
  }

  void show() {
    scene.show("RVTorrentDetailController_iPad", panel, kRoot);
    services.settle();
  }
  int stopAfter(int start, void (RVTorrentDetailController::*move)()) {
    panel.moveToPos(static_cast<float>(start));
    (panel.*move)();
    EXPECT_EQ(panel.view()->translation(), QPointF(panel.curPos(), 0));
    return panel.curPos();
  }
  int stopAfterSwipe(int way) {
    QTest::mousePress(&scene.window, Qt::LeftButton, {}, {750, 200});
    for (const int part : {1, 2, 3, 4}) {
      QTest::mouseMove(&scene.window, {750 + way * part / 4, 200});
    }
    QTest::mouseRelease(&scene.window, Qt::LeftButton, {}, {750 + way, 200});
    services.settle();
    return panel.curPos();
  }
  std::map<std::string, std::string> details(std::shared_ptr<RVTorrentInfo> info) {
    panel.setDetailInfo(std::move(info));
    std::map<std::string, std::string> found;
    const std::vector<std::string>& list = panel.rightListController()->rightList();
    for (std::size_t i = 0; i + 1 < list.size(); i += 2) {
      found[list[i + 1]] = list[i];
    }
    return found;
  }

  support::TestServices services;
  RVTorrentDetailController panel;
  PanelScene scene;
};

TEST_F(DetailPanelTest, MovesOneStopAtATime) {
  const std::vector<std::vector<int>> stops{{1020, 580, 1020}, {580, 340, 1020}, {340, 340, 580}};
  for (const std::vector<int>& stop : stops) {
    EXPECT_EQ(stopAfter(stop[0], &RVTorrentDetailController::moveLeft), stop[1]) << "from " << stop[0];
    EXPECT_EQ(stopAfter(stop[0], &RVTorrentDetailController::moveRight), stop[2]) << "from " << stop[0];
  }
  EXPECT_EQ(panel.view()->animationMilliseconds(), 1000);
  panel.resetPosition();
  EXPECT_EQ(panel.view()->translation(), QPointF(1020, 0));
  EXPECT_EQ(panel.view()->animationMilliseconds(), 0);
  panel.setDetailInfo(nullptr);
  EXPECT_EQ(panel.curPos(), 580) << "a selection brings it in from its hidden place alone";
  panel.moveLeft();
  panel.setDetailInfo(nullptr);
  EXPECT_EQ(panel.curPos(), 340);
}

TEST_F(DetailPanelTest, TextsOfDetailsAndFiles) {
  auto unknown = details(nullptr);
  EXPECT_EQ(unknown.size(), 17U);
  EXPECT_EQ(unknown["Activity date"], "   (null)");
  EXPECT_EQ(unknown["Added date"], "(null)");
  EXPECT_EQ(unknown["Comment"], "(null)");
  EXPECT_EQ(unknown["Download limited"], "No");
  auto known = details(hardTorrent());
  EXPECT_EQ(known["Activity date"], "2026-11-21 05:52:00 +0000");
  EXPECT_EQ(known["Date created"], "1969-12-31 23:59:59 +0000");
  EXPECT_EQ(known["Download limited"], "Yes");
  EXPECT_EQ(known["Bandwidth Prioritys"], "-9223372036854775808");
  std::vector<std::string> files;
  for (int row = 0; row < panel.fileListController()->numberOfRowsInSection(0); ++row) {
    auto* cell = panel.fileListController()->cellForRowAtIndexPath(row);
    files.push_back(cell->accessibleDescription().toStdString());
  }
  EXPECT_THAT(files, ElementsAre("33.33%, 3B", "-150.00%, 3.0GB", "68.36%, 1024.0MB", "nan%, 1024.0GB",
                                 "214748364700.00%, 1B", "inf%, 0B"));
}

TEST_F(DetailPanelTest, TheTabTakesTouchesOutsideItsView) {
  const RVTorrentDetailView& files = *panel.fileListViewPos();
  const auto* list = panel.fileListController()->view();
  const double middle = panel.btnMoveLeft()->frame().center().y();
  const std::vector<std::pair<QPointF, const platform::ViewGeometry*>> touches{
      {{-12, middle}, panel.btnMoveLeft()},
      {{-25, middle}, nullptr},
      {{-12, middle + 33}, nullptr},
      {{0, 0}, list},
      {{356, 1}, nullptr}};
  for (const auto& [point, target] : touches) {
    EXPECT_EQ(files.hitTest(point), target) << point.x() << ", " << point.y();
    EXPECT_EQ(files.pointInside(point), target != nullptr) << point.x() << ", " << point.y();
  }
  show();
  panel.moveToPos(580);
  const QPoint tab(28 + 580 - 12, 28 + 366);
  QTest::mouseClick(&scene.window, Qt::LeftButton, {}, tab);
  services.settle();
  EXPECT_EQ(panel.curPos(), 340);
  panel.moveToPos(580);
  const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
  QTest::touchEvent(&scene.window, finger.get()).press(0, tab, &scene.window);
  QTest::touchEvent(&scene.window, finger.get()).release(0, tab, &scene.window);
  services.settle();
  EXPECT_EQ(panel.curPos(), 340);
}

TEST_F(DetailPanelTest, SwipesOverItsRowsMoveIt) {
  panel.setDetailInfo(hardTorrent());
  show();
  EXPECT_EQ(stopAfterSwipe(-100), 340);
  EXPECT_EQ(stopAfterSwipe(100), 580);
  EXPECT_EQ(stopAfterSwipe(100), 1020);
}

}  // namespace
}  // namespace seedmote
