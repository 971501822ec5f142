#include <QKeyEvent>
#include <algorithm>
#include <thread>

#include "ShellFixture.h"
#include "app/StorageNotice.h"
#include "settings/RVSettingsViewController.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {
namespace {

using platform::Idiom;
using platform::ViewGeometry;
using testing::Contains;
using testing::ElementsAre;

class LaunchedShellTest : public ShellFixture {};

TEST_F(LaunchedShellTest, TakesTheStepsOfTheLaunchInTheirOrder) {
  const std::vector<std::string> phone{"Seedmote Start\n",
                                       "Seedmote is running on iPhone\n",
                                       "Setup all controllers\n",
                                       "GAD Version:none",
                                       "Main view is loaded.\n",
                                       "Session Stat view is loaded.\n",
                                       "Right Bar is loaded.\n",
                                       "Torrent List view is loaded.\n",
                                       "Filter Bar view is loaded.\n",
                                       "Change coordination over 7.0\n",
                                       "handleOpenURL URL = magnet:?x",
                                       "app is open with url",
                                       "url = magnet:?x",
                                       "Add a torrent(url) to server: magnet:?x\n"};
  launch(Idiom::phone, "7.0", {"magnet:?x"});
  EXPECT_EQ(logged(phone), phone);
  EXPECT_TRUE(lines.contains("h = 291.000000")) << "the statistics' table has its place from the first";
  EXPECT_EQ(delegate->torrentInfoViewController(), nullptr);
  const RVGADView* banner = delegate->mainViewController().banner();
  EXPECT_EQ(banner->adUnitID().size(), 15U);
  EXPECT_THAT(banner->request().keywords, ElementsAre("torrent", "transmission", "email", "bt"));
}

TEST_F(LaunchedShellTest, PlacesAndStacksTheViews) {
  const struct {
    Idiom idiom;
    const char* version;
    QRectF filter, list, statusBar;
    double aside;
  } cases[] = {
      {Idiom::tablet, "7.0", {0, 20, 200, 748}, {0, 20, 660, 782}, {720, 20, 244, 748}, 50},
      {Idiom::tablet, "6.1", {0, 0, 200, 768}, {0, 0, 660, 782}, {720, 0, 244, 748}, 50},
      {Idiom::phone, "7.0", {0, 20, 200, 355}, {0, 20, 419, 350}, {419, 20, 204, 355}, 200},
      {Idiom::phone, "6.1", {0, 0, 200, 375}, {0, 0, 419, 375}, {419, 0, 204, 355}, 200},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.version) + (c.idiom == Idiom::tablet ? " tablet" : " phone"));
    launch(c.idiom, c.version);
    RVMainViewController& main = delegate->mainViewController();
    ViewGeometry* const list = delegate->torrentListController().view();
    EXPECT_EQ(delegate->filterBarController().view()->frame(), c.filter);
    EXPECT_EQ(list->frame(), c.list);
    EXPECT_EQ(list->translation(), QPointF(c.aside, 0));
    EXPECT_EQ(main.statusBarView()->frame(), c.statusBar);
    EXPECT_EQ(bar().view()->frame(), main.rightBarView()->frame());
    EXPECT_EQ(main.topbarView()->alpha(), c.version[0] == '7' ? 1 : 0);
    std::vector<ViewGeometry*> order{main.statusBarView(),
                                     main.topbarView(),
                                     main.torrentInfoView(),
                                     delegate->filterBarController().view(),
                                     list,
                                     main.rightBarView(),
                                     bar().view()};
    if (auto* detail = delegate->torrentInfoViewController()) {
      order.insert(order.begin() + 5, detail->view());
      EXPECT_EQ(detail->view()->translation(), QPointF(1020, 0));
      EXPECT_GE(detail->view()->shownFrame().left(), 1024);
    }
    EXPECT_EQ(main.subviews().subviews(), order);
    EXPECT_GT(main.adView()->order(), bar().view()->order());
    delegate.reset();
    RVTrans::drop();
    services.reset();
  }
}

TEST_F(LaunchedShellTest, DeleteTakesTwoTapsAndSurvivesARefresh) {
  launch(Idiom::tablet, "7.0");
  EXPECT_EQ(std::count(bar().rightBarID().begin(), bar().rightBarID().end(), 0), 27);
  tap(5);
  EXPECT_EQ(lines.count("rightbar doRefresh"), 0) << "a blank row";
  tap(16);
  EXPECT_EQ(bar().rightBarID()[16], 28);
  tap(13);
  services->finishThreads();  // the refresh tries to connect
  EXPECT_EQ(bar().rightBarID()[16], 28);
  EXPECT_EQ(lines.count("rightbar doDeleteConfirm"), 0);
  tap(16);
  EXPECT_EQ(bar().rightBarID()[16], 27);
  EXPECT_EQ(lines.count("rightbar doDeleteConfirm"), 1);
  EXPECT_THAT(OvProgressHUD::sharedView()->text().toStdString(), testing::StartsWith("Not connected!"));
}

TEST_F(LaunchedShellTest, AHeldKeyConfirmsNoDelete) {
  launch(Idiom::tablet, "7.0");
  bar().table()->scrollToRow(15, false, platform::TableView::ScrollPosition::middle);
  settle();
  const auto press = [this](Qt::Key key, bool again) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, {}, again);
    QCoreApplication::sendEvent(&delegate->window(), &event);
    settle();
  };
  const auto focused = [this] {
    const QQuickItem* const item = delegate->window().activeFocusItem();
    const auto* const cell = item == nullptr ? nullptr : item->property("button").value<RVRightBarCell*>();
    return cell == nullptr ? std::string() : cell->accessibleName().toStdString();
  };
  for (int tabs = 0; tabs < 20 && focused() != "Delete"; ++tabs) press(Qt::Key_Tab, false);
  press(Qt::Key_Return, false);
  press(Qt::Key_Return, true);
  EXPECT_EQ(focused(), "Confirm delete");
  press(Qt::Key_Return, false);
  EXPECT_EQ(focused(), "Delete");
}

TEST_F(LaunchedShellTest, ANewVersionOpensThePanelOnce) {
  savedVersion = "9.8";
  launch(Idiom::phone, "7.0");
  advance(1);
  EXPECT_EQ(services->defaults.string("FirstRun"), "2");
  EXPECT_EQ(services->defaults.string("SavedVersion"), "9.9");
  ASSERT_NE(bar().settingsViewController(), nullptr);
  ViewGeometry* const panel = bar().settingsViewController()->view();
  EXPECT_EQ(panel->frame(), QRectF(0, 22, 375, 645));
  EXPECT_EQ(delegate->mainViewController().subviews().subviews().back(), panel);
  tap(13);
  EXPECT_EQ(lines.count("Settings View is shown now."), 1);
  bar().settingsViewController()->onCloseBtn();
  advance(0.6);
  EXPECT_EQ(services->defaults.string("FirstRun"), "3");
  EXPECT_FALSE(panel->isInParent());
  tap(13);
  EXPECT_TRUE(bar().settingsViewController()->bShown()) << "a new one";
}

TEST_F(LaunchedShellTest, AWindowStaysWide) {
  launch(Idiom::tablet, "7.0");
  for (const QSize& upright : {QSize(700, 900), QSize(700, 768)}) {
    delegate->window().resize(upright);
    settle();
    EXPECT_GT(delegate->window().width(), delegate->window().height());
  }
}

// Told once for each thing that is wrong, the one from before the window included.
TEST_F(LaunchedShellTest, WhatIsWrongWithTheStoredSettingsIsSaidInTheWindow) {
  makeServices(platform::Idiom::phone, "7.0");
  services->defaults.setProblem("They cannot be read.");
  {
    const StorageNotice notice;
    for (const char* problem : {"The disk is full.", "The disk is full.", ""}) {
      std::thread([&] { services->defaults.setProblem(problem); }).join();
    }
    settle();
  }
  services->defaults.setProblem("Nobody is told.");
  settle();
  for (const char* said : {"They cannot be read.", "The disk is full."}) {
    EXPECT_EQ(ui.alerts.message().toStdString(), said);
    ui.alerts.press(0);
    settle();
  }
  EXPECT_FALSE(ui.alerts.isShown());
}

}  // namespace
}  // namespace seedmote
