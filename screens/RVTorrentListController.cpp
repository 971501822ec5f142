#include "screens/RVTorrentListController.h"

#include <algorithm>
#include <limits>
#include <memory>

#include "app/resources/RVResQt.h"
#include "client/RVTrans.h"
#include "client/RVUtility.h"
#include "platform/core/Log.h"
#include "platform/core/Services.h"
#include "platform/core/ShownText.h"
#include "platform/core/UserDefaults.h"
#include "platform/ui/ReusableCell.h"
#include "screens/EmptyState.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

using platform::log;
using platform::logRow;
using platform::services;

namespace {

constexpr double kRefreshSeconds = 2.0;
constexpr double kStartupSeconds = 2.0;
constexpr int kAllStates = 1;
constexpr std::int64_t kNoRow = std::numeric_limits<std::int64_t>::min();

double rowHeight() {
  return services().device.userInterfaceIdiom() == platform::Idiom::tablet ? 78.0 : 54.0;
}

bool isSetUp() {
  return services().defaults.string("FirstRun") == "3";
}

// The list may have been replaced by a shorter one since its rows were counted.
json::ValueRef torrentAt(const json::Value& list, int row) {
  const auto index = static_cast<std::size_t>(row);
  return row >= 0 && index < list->count() ? list->at(index) : json::ValueRef();
}

}  // namespace

RVTorrentListController::RVTorrentListController(QObject* parent)
    : QObject(parent),
      toolbar_(std::make_unique<RVTorrentListPullbar>(services().device.userInterfaceIdiom())) {
  table_.setDataSource(this);
  table_.setMarksRows(true);
  connect(&table_, &platform::TableView::laidOut, this, &RVTorrentListController::updateEmptyState);
  connect(OvProgressHUD::sharedView(), &OvProgressHUD::changed, this,
          &RVTorrentListController::messageShownChanged);
}

bool RVTorrentListController::isMessageShown() const {
  return OvProgressHUD::sharedView()->panelShown();
}

RVTorrentListController::~RVTorrentListController() {
  table_.disconnect(this);
  table_.setDataSource(nullptr);
}

void RVTorrentListController::viewDidLoad() {
  doInit();
  addGesture();
  addTorrentListPullBar();
  refreshTimer_ =
      services().timers.repeat("updateTorrentList", kRefreshSeconds, [this] { updateTorrentList(); });
  if (services().device.userInterfaceIdiom() == platform::Idiom::phone) {
    startupTimer_ =
        services().timers.once("showFilterAtStartup", kStartupSeconds, [this] { showFilterAtStartup(); });
  }
  log("Torrent List view is loaded.\n");
}

void RVTorrentListController::doInit() {
  configureView();
  table_.setBackgroundColor(colorOf(32));
  services().defaults.setObject("ServerChanged", "NO");
  services().defaults.synchronize();
  filterID_ = kAllStates;
  table_.reload();
  updateEmptyState();
}

void RVTorrentListController::configureView() {
  if (detailItem_) {
    detailDescriptionLabel_ = *detailItem_;
  }
}

bool RVTorrentListController::shouldAutorotateToInterfaceOrientation(int orientation) const {
  if (services().device.userInterfaceIdiom() == platform::Idiom::tablet) {
    return orientation == landscapeRight || orientation == landscapeLeft;
  }
  return orientation == portrait || orientation == portraitUpsideDown;
}

void RVTorrentListController::updateTorrentList() {
  updateShaking();  // a refresh clears the selection
  updateEmptyState();
  if (!isSetUp() || !RVTrans::isConnected() || RVTrans::isUpdating()) {
    return;
  }
  if (RVTrans::isNewData()) {
    refreshAll();
  }
  log("Detailview torrent update finished");
}

void RVTorrentListController::refreshAll() {
  table_.reload();
  if (RVTrans::getTorrentSelection() == RVTorrentListCell::kNoTorrent &&
      torrentInfoViewController_ != nullptr) {
    torrentInfoViewController_->resetPosition();
  }
  log("refreshAll finished");
}

void RVTorrentListController::doFilter(int filterID) {
  filterID_ = filterID;
  refreshAll();
}

int RVTorrentListController::numberOfRowsInSection(int /*section*/) {
  if (!RVTrans::isConnected()) {
    return 0;
  }
  const std::size_t count = RVTrans::getTorrentList()->count();
  log("count = %ld\n", count);
  return static_cast<int>(std::min<std::size_t>(count, std::numeric_limits<int>::max()));
}

RVTorrentListCell* RVTorrentListController::cellForRowAtIndexPath(int row) {
  const std::uint64_t deal = RVTrans::torrentDeal();
  const json::Value list = RVTrans::getTorrentList();
  const json::ValueRef torrent = torrentAt(list, row);
  if (torrent.isAbsent()) {
    return nullptr;
  }
  auto* cell = platform::reusableCell<RVTorrentListCell>(table_);
  const int status = RVUtility::changeTransStatus(torrent["status"].intValue(), RVTrans::getRPCVersion());
  cell->fill(torrent, status);
  cell->hideCell(filterID_ != kAllStates && filterID_ != cell->statusID());
  logRow("status = %d\n", status);
  cell->setCellIndex(row);
  cell->setDeal(deal);
  cell->setShaking(isShaking(cell->torrentidx()));
  cell->finishFilling();
  return cell;
}

bool RVTorrentListController::canBuildRowsWhileWaiting() const {
  return RVTrans::isConnected();
}

double RVTorrentListController::heightForRowAtIndexPath(int row) {
  logRow("heightForRowAtIndexPath:%ld\n", std::int64_t{row});
  const RVTorrentListCell* cell = cellForRowAtIndexPath(row);
  if (cell == nullptr || (filterID_ != kAllStates && filterID_ != cell->statusID())) {
    return 0.0;
  }
  return rowHeight();
}

std::int64_t RVTorrentListController::rowToken(int row) {
  if (!RVTrans::isConnected()) {
    return kNoRow;
  }
  const json::Value list = RVTrans::getTorrentList();
  const json::ValueRef torrent = torrentAt(list, row);
  return torrent.isAbsent() ? kNoRow : torrentID(torrent["id"]);
}

// The selection.

bool RVTorrentListController::isShaking(std::int64_t torrent) const {
  return torrent != RVTorrentListCell::kNoTorrent && torrent == tappedTorrent_ &&
         torrent == RVTrans::getTorrentSelection();
}

void RVTorrentListController::didSelectRowAtIndexPath(int row) {
  log("didSelectRowAtIndexPath:%ld\n", std::int64_t{row});
  const auto* cell = static_cast<const RVTorrentListCell*>(table_.visibleCell(row));
  if (cell == nullptr) {
    return;
  }
  if (RVTrans::getTorrentSelection() == cell->torrentidx()) {
    deselect();
  } else {
    selectTorrent(cell->torrent(), cell->deal());
  }
}

void RVTorrentListController::deselect() {
  RVTrans::selectTorrent(RVTorrentListCell::kNoTorrent);
  tappedTorrent_ = RVTorrentListCell::kNoTorrent;
  updateShaking();
}

// The row shows the selection also when its details cannot be had: who starts or deletes what is selected
// must see what that is.
void RVTorrentListController::selectTorrent(const TorrentIdentity& shown, std::uint64_t deal) {
  if (!RVTrans::selectTorrent(shown, deal)) {
    // A newer list has another torrent there, or may have. What was selected before is no longer meant
    // either.
    deselect();
    refreshAll();
    return;
  }
  tappedTorrent_ = shown.id;
  try {
    std::shared_ptr<RVTorrentInfo> info = RVTrans::getTorrentInfo();
    if (torrentInfoViewController_ != nullptr) {
      torrentInfoViewController_->setDetailInfo(std::move(info));
    }
  } catch (...) {
    updateShaking();
    throw;
  }
  updateShaking();
}

// Starts and stops the shakes of the icons, as their torrents are selected or not.
void RVTorrentListController::updateShaking() {
  for (const platform::TableView::LiveRow& live : table_.liveRows()) {
    if (auto* cell = static_cast<RVTorrentListCell*>(live.cell)) {
      cell->setShaking(isShaking(cell->torrentidx()));
    }
  }
}

void RVTorrentListController::didDeselectRowAtIndexPath(int row) {
  if (rowToken(row) == tappedTorrent_) {
    tappedTorrent_ = RVTorrentListCell::kNoTorrent;
  }
  updateShaking();
  log("didDeselectRowAtIndexPath:%ld\n", std::int64_t{row});
}

void RVTorrentListController::updateEmptyState() {
  if (!table_.isEmpty()) {
    return;
  }
  EmptyState state;
  state.setUp = isSetUp();
  state.connected = RVTrans::isConnected();
  state.torrents = state.connected ? RVTrans::getTorrentList()->count() : 0;
  state.filterID = filterID_;
  state.outcome = RVTrans::listOutcome();
  const QString sentence = platform::shownText(state.sentence());
  if (emptyState_ != sentence) {
    emptyState_ = sentence;
    Q_EMIT emptyStateChanged();
  }
}

}  // namespace seedmote
