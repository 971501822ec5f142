#include "app/RVMainViewController.h"

#include <utility>

#include "app/RVRightBarController.h"
#include "platform/core/Log.h"
#include "platform/core/ScreenShapes.h"
#include "platform/core/Services.h"
#include "platform/ui/UiServices.h"

namespace seedmote {

using platform::ViewGeometry;

namespace {

constexpr double kAdAlpha = 0.5;
constexpr int kAboveAllViews = 99;
// Nobody's: there is no account with anybody.
constexpr const char* kAdUnit = "a1seedmote00000";
constexpr const char* kSimulator = "Simulator";
constexpr const char* kTestDevice = "5eed0000000000000000000000000000000000e0";

}  // namespace

RVMainViewController::RVMainViewController() {
  for (ViewGeometry* region : {&statusBarView_, &topbarView_, &torrentInfoView_, &rightBarView_}) {
    subviews_.addSubview(*region);
  }
}

RVMainViewController::~RVMainViewController() = default;

void RVMainViewController::viewDidLoad() {
  addAdmobView();
  addTorrentInfoView();
  platform::log("Main view is loaded.\n");
  addSessionStatView();
}

void RVMainViewController::viewDidUnload() {
  for (ViewGeometry* region : {&adView_, &rightBarView_, &torrentInfoView_, &statusBarView_}) {
    region->setInParent(false);
  }
}

void RVMainViewController::addAdmobView() {
  banner_ = std::make_unique<RVGADView>(platform::services().device.userInterfaceIdiom());
  banner_->setAdUnitID(kAdUnit);
  banner_->setRootView(&view_);
  adView_.setAlpha(kAdAlpha);
  adView_.setOrder(kAboveAllViews);
  banner_->loadRequest({{kSimulator, kTestDevice}, {"torrent", "transmission", "email", "bt"}});
  platform::log("GAD Version:%@", RVGADView::kLibraryVersion);
}

void RVMainViewController::addRightBarView(RVSettingsStore& store) {
  rightBarViewController_ = std::make_unique<RVRightBarController>(store);
  platform::log("x = %f", rightBarViewController_->view()->frame().x());
  subviews_.addSubview(*rightBarViewController_->view());
}

void RVMainViewController::addSessionStatView() {
  sessionStatController_.viewDidLoad();
}

void RVMainViewController::place(const ScreenPlan& plan, QSizeF root) {
  view_.setFrame({QPointF(), root});
  topbarView_.setFrame(plan.topbar);
  statusBarView_.setFrame(plan.statusBar);
  torrentInfoView_.setFrame(plan.torrentInfo);
  rightBarView_.setFrame(plan.rightBar);
  adView_.setFrame(plan.ad);
  sessionStatController_.view()->setFrame({QPointF(), plan.statusBar.size()});
}

void RVMainViewController::setRightBarViewController(std::unique_ptr<RVRightBarController> controller) {
  rightBarViewController_ = std::move(controller);
}

bool RVMainViewController::shouldAutorotateToInterfaceOrientation(int orientation) const {
  return platform::isLandscape(static_cast<platform::InterfaceOrientation>(orientation));
}

platform::Alerts* RVMainViewController::alerts() const {
  return &platform::uiServices().alerts;
}

}  // namespace seedmote
