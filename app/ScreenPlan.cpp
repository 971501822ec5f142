#include "app/ScreenPlan.h"

#include <algorithm>

namespace seedmote {

using platform::Idiom;

namespace {

constexpr double kFilterWidth = 200;

ScreenPlan tabletPlan(QSizeF root) {
  constexpr double kBar = 60;
  constexpr double kStatistics = 244;
  constexpr double kCardMargin = 28;  // to the left also more than what sticks out of the panel there
  const double barLeft = root.width() - kBar;
  ScreenPlan plan;
  plan.statusBar = {barLeft - kStatistics, 0, kStatistics, root.height() - ScreenPlan::kStatusBar};
  plan.rightBar = {barLeft, 0, kBar, root.height()};
  plan.torrentList = {0, 0, 660, root.height()};
  plan.torrentDetail = {kCardMargin, kCardMargin, 596, root.height() - kCardMargin - 8};
  return plan;
}

// The list takes what the others leave; on a short screen the statistics grow narrower first.
ScreenPlan phonePlan(QSizeF root) {
  constexpr double kBar = 44;
  constexpr double kUsualList = 419;
  const double barLeft = root.width() - kBar;
  const double statistics = std::clamp(barLeft - kUsualList, 168.0, 204.0);
  ScreenPlan plan;
  plan.statusBar = {barLeft - statistics, 0, statistics, root.height() - ScreenPlan::kStatusBar};
  plan.rightBar = {barLeft, 0, kBar, root.height()};
  plan.torrentList = {0, 0, barLeft - statistics, root.height()};
  return plan;
}

}  // namespace

ScreenPlan ScreenPlan::make(Idiom idiom, QSizeF root) {
  ScreenPlan plan = idiom == Idiom::tablet ? tabletPlan(root) : phonePlan(root);
  const auto place = static_cast<int>(idiom);
  plan.topbar = {0, 0, root.width(), kStatusBar};
  plan.torrentInfo = plan.torrentDetail;
  plan.ad = {(root.width() - kAdWidth[place]) / 2, root.height() - kAdHeight[place], kAdWidth[place],
             kAdHeight[place]};
  plan.filterBar = {0, 0, kFilterWidth, root.height()};
  return plan;
}

void ScreenPlan::moveBelowStatusBar(Idiom idiom, double rootHeight) {
  statusBar.moveTop(kStatusBar);
  filterBar = {filterBar.x(), kStatusBar, filterBar.width(), filterBar.height() - kStatusBar};
  const double height = idiom == Idiom::tablet ? filterBar.height() - 20 : rootHeight - 25;
  torrentList = {torrentList.x(), kStatusBar, torrentList.width(), height};
}

void ScreenPlan::useWholeHeight(Idiom idiom, double rootHeight) {
  if (idiom == Idiom::phone) {
    torrentList.setHeight(rootHeight);
  }
}

void ScreenPlan::stretchList(Idiom idiom, double rootHeight) {
  if (idiom == Idiom::tablet) {
    torrentList.setHeight(rootHeight + 14);
  }
}

}  // namespace seedmote
