#include "app/RVRightBarController.h"

#include <algorithm>

#include "app/resources/RVRes.h"
#include "client/RVTrans.h"
#include "client/UnconnectedNotice.h"
#include "platform/core/Device.h"
#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Screen.h"
#include "platform/core/Services.h"
#include "platform/core/Threads.h"
#include "platform/core/UserDefaults.h"
#include "platform/ui/ReusableCell.h"
#include "settings/RVSettingsViewController.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

using platform::log;
using platform::services;

namespace {

constexpr double kAlpha = 0.5;
constexpr double kScrollStart = 1;  // seconds after loading
constexpr double kClientStart = 3;
constexpr double kPause = 1;  // the daemon takes a moment to start or stop a torrent
constexpr double kPanelSlide = 0.5;
constexpr double kPanelTop = 22;  // below the status bar, since system version 7

// The bounds of the screen, which are those of the screen held upright.
QRectF panelFrame() {
  const platform::Rect bounds = services().screen.bounds();
  QRectF frame(bounds.x, bounds.y, bounds.width, bounds.height);
  if (services().device.systemVersionNumber() >= 7.0F) {
    frame.adjust(0, kPanelTop, 0, 0);
  }
  return frame;
}

bool isTablet() {
  return services().device.userInterfaceIdiom() == platform::Idiom::tablet;
}

}  // namespace

RVRightBarController::RVRightBarController(RVSettingsStore& store) : store_(store) {
  initData();
  table_.setDataSource(this);
}

RVRightBarController::~RVRightBarController() {
  table_.setDataSource(nullptr);
  if (panelPlace_.drop) {
    panelPlace_.drop();
  }
}

void RVRightBarController::initData() {
  const std::vector<int> buttons{kRefresh, kStart, kStop, kDelete, kSettings};
  const std::size_t before = isTablet() ? 13 : 9;
  const std::size_t after = isTablet() ? 14 : 9;
  rightBarID_.assign(before, 0);
  rightBarID_.insert(rightBarID_.end(), buttons.begin(), buttons.end());
  rightBarID_.insert(rightBarID_.end(), after, 0);
}

// The table ends up transparent, whatever it was first.
void RVRightBarController::viewDidLoad() {
  table_.setBackgroundColor(Qt::transparent);
  view_.setAlpha(kAlpha);
  platform::Timers& timers = services().timers;
  scrollTimer_ = timers.once("scrollRightBarAtStartup", kScrollStart, [this] { scrollRightBarAtStartup(); });
  updateTimer_ = timers.once("updateFirstTime", kClientStart, [this] { updateFirstTime(); });
  table_.reload();
  log("Right Bar is loaded.\n");
}

void RVRightBarController::updateFirstTime() {
  log("updateFirstTime");
  RVTrans::init();
}

void RVRightBarController::scrollRightBarAtStartup() {
  scrolled_ = true;
  scrollToButtons(true);
  platform::UserDefaults& defaults = services().defaults;
  const platform::PropertyList version = defaults.object("Version")["Value"];
  const platform::PropertyList saved = defaults.object("SavedVersion");
  if (!saved.isAbsent() && saved == version) {
    return;
  }
  defaults.setObject("FirstRun", "2");
  defaults.setObject("SavedVersion", version);
  defaults.synchronize();
  doSettings();
}

void RVRightBarController::scrollToButtons(bool animated) {
  table_.scrollToRow(isTablet() ? 15 : 11, animated, platform::TableView::ScrollPosition::middle);
}

// The table.

int RVRightBarController::numberOfRowsInSection(int /*section*/) {
  log("count = %ld", rightBarID_.size());
  return static_cast<int>(rightBarID_.size());
}

double RVRightBarController::heightForRowAtIndexPath(int /*row*/) {
  return isTablet() ? 64 : 52;
}

RVRightBarCell* RVRightBarController::cellForRowAtIndexPath(int row) {
  auto* button = platform::reusableCell<RVRightBarCell>(table_);
  button->setRightBarRow(row);
  button->setRightBarID(rightBarID_.at(static_cast<std::size_t>(row)));
  return button;
}

// A tap means the button that was seen: one that became another while it waited is none of it.
std::int64_t RVRightBarController::rowToken(int row) {
  return rightBarID_.at(static_cast<std::size_t>(row));
}

void RVRightBarController::didSelectRowAtIndexPath(int row) {
  auto* cell = static_cast<RVRightBarCell*>(table_.visibleCell(row));
  if (cell != nullptr) {
    carryOut(*cell);
  }
}

void RVRightBarController::press(Button button) {
  const auto place = std::find(rightBarID_.begin(), rightBarID_.end(), button);
  if (place == rightBarID_.end()) {
    return;
  }
  const auto row = static_cast<int>(place - rightBarID_.begin());
  if (auto* cell = static_cast<RVRightBarCell*>(table_.visibleCell(row))) {
    return carryOut(*cell);
  }
  RVRightBarCell cell;  // as one would stand there
  cell.setRightBarRow(row);
  cell.setRightBarID(button);
  carryOut(cell);
}

bool RVRightBarController::has(Button button) const {
  return std::find(rightBarID_.begin(), rightBarID_.end(), button) != rightBarID_.end();
}

bool RVRightBarController::isPanelShown() const {
  return settingsViewController_ && settingsViewController_->bShown();
}

void RVRightBarController::carryOut(RVRightBarCell& cell) {
  switch (cell.rightBarID()) {
    case kSettings:
      return doSettings();
    case kRefresh:
      return doRefresh();
    case kStart:
      return doStart();
    case kStop:
      return doStop();
    case kDelete:
      return doDelete(cell);
    case kConfirmDelete:
      return doDeleteConfirm(cell);
    default:
      return;
  }
}

// The actions.

void RVRightBarController::doRefresh() {
  log("rightbar doRefresh");
  RVTrans::selectTorrent(kNoTorrentID);
  RVTrans::updateAllTorrents();
  refreshAll();
}

void RVRightBarController::doStart() {
  log("rightbar doStart");
  startOrStop(true);
}

void RVRightBarController::doStop() {
  log("rightbar doStop");
  startOrStop(false);
}

void RVRightBarController::startOrStop(bool start) {
  const UnconnectedNotice notice;
  OvProgressHUD::showWithStatus(start ? "Starting..." : "Stopping...");
  RVTrans::startTorrent(start);
  services().main.wait([] { services().threads.sleep(kPause); });
  doRefresh();
  OvProgressHUD::dismissWithSuccess(start ? "Started!" : "Stopped!");
}

void RVRightBarController::doStartAll() {
  log("rightbar doStartAll");
  OvProgressHUD::showWithStatus("Starting...");
  doRefresh();
  OvProgressHUD::dismissWithSuccess("Started!");
}

void RVRightBarController::doStopAll() {
  log("rightbar doStopAll");
  OvProgressHUD::showWithStatus("Stopping...");
  doRefresh();
  OvProgressHUD::dismissWithSuccess("Stopped!");
}

void RVRightBarController::doDelete(RVRightBarCell& cell) {
  log("rightbar doDelete");
  become(cell, kConfirmDelete);
}

// Its message stays until the client has heard that the torrent is gone.
void RVRightBarController::doDeleteConfirm(RVRightBarCell& cell) {
  log("rightbar doDeleteConfirm");
  const UnconnectedNotice notice;
  OvProgressHUD::showWithStatus("Deleting...");
  RVTrans::deleteTorrent();
  become(cell, kDelete);
}

void RVRightBarController::become(RVRightBarCell& cell, int kind) {
  cell.setRightBarID(kind);
  rightBarID_.at(static_cast<std::size_t>(cell.rightBarRow())) = kind;
  refreshAll();
}

void RVRightBarController::doSettings() {
  log("doSettings");
  if (isPanelShown()) {
    log("Settings View is shown now.");
    return;
  }
  showSettingView();
}

// A new panel each time.
void RVRightBarController::showSettingView() {
  if (panelPlace_.drop) {
    panelPlace_.drop();
  }
  settingsViewController_ = std::make_unique<RVSettingsViewController>(store_);
  settingsViewController_->view()->setFrame(RVSettingsViewController::offScreenFrame());
  if (panelPlace_.show) {
    panelPlace_.show(*settingsViewController_);
  }
  platform::ViewGeometry::animate(kPanelSlide,
                                  [this] { settingsViewController_->view()->setFrame(panelFrame()); });
  settingsViewController_->setShown(true);
}

void RVRightBarController::place(const QRectF& frame) {
  const bool resized = view_.frame().size() != frame.size();
  view_.setFrame(frame);
  if (resized && scrolled_) {
    scrollToButtons(false);
  }
  if (isPanelShown() && !settingsViewController_->isClosing()) {
    settingsViewController_->view()->setFrame(panelFrame());
  }
}

void RVRightBarController::endEditing() {
  if (settingsViewController_) {
    settingsViewController_->settingController()->endEditing();
  }
}

}  // namespace seedmote
