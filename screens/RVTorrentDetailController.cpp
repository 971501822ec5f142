#include "screens/RVTorrentDetailController.h"

#include <algorithm>
#include <utility>

#include "platform/core/Log.h"
#include "platform/ui/LayoutEntry.h"

namespace seedmote {

using platform::log;
using platform::SwipeDirection;
using platform::ViewGeometry;

namespace {

constexpr double kMoveSeconds = 1.0;

constexpr double kFilesWidth = 356;  // what is to be seen at the stop half in
constexpr double kTitleHeight = 40;
constexpr double kBelow = 10;
constexpr QSizeF kButtonSize{24, 64};

}  // namespace

RVTorrentDetailController::RVTorrentDetailController() {
  fileListViewPos_.addSubview(btnMoveLeft_);
  connect(&view_, &ViewGeometry::changed, this, &RVTorrentDetailController::placeSubviews);
}

void RVTorrentDetailController::placeSubviews() {
  const QSizeF size = view_.frame().size();
  const double height = std::max(0.0, size.height() - kTitleHeight - kBelow);
  fileListViewPos_.setFrame({0, kTitleHeight, kFilesWidth, height});
  rightInfoListViewPos_.setFrame(
      {kFilesWidth, kTitleHeight, std::max(0.0, size.width() - kFilesWidth), height});
  const double middle = size.height() / 2 - kTitleHeight;
  btnMoveLeft_.setFrame({{-kButtonSize.width(), middle - kButtonSize.height() / 2}, kButtonSize});
  fileListController_.view()->setFrame({{0, 0}, fileListViewPos_.frame().size()});
  rightListController_.view()->setFrame({{0, 0}, rightInfoListViewPos_.frame().size()});
}

void RVTorrentDetailController::viewDidLoad() {
  addGesture();
  addFileListView();
  addInfoListView();
  curPos_ = kHidden;
  Q_EMIT curPosChanged();
  log("Torrent Detail view is loaded.\n");
}

void RVTorrentDetailController::viewDidUnload() {
  btnMoveLeft_.setInParent(false);
  rightInfoListViewPos_.setInParent(false);
}

void RVTorrentDetailController::addGesture() {
  for (const SwipeDirection direction : {SwipeDirection::left, SwipeDirection::right}) {
    gestures_.addSwipe(direction, [this](SwipeDirection made) { handleSwipeFrom(made); });
  }
}

void RVTorrentDetailController::addFileListView() {
  fileListController_.view()->setFrame({{0, 0}, fileListViewPos_.frame().size()});
  fileListViewPos_.addSubview(*fileListController_.view());
  fileListViewPos_.setBtnMoveLeft(&btnMoveLeft_);
}

void RVTorrentDetailController::addInfoListView() {
  rightListController_.view()->setFrame({{0, 0}, rightInfoListViewPos_.frame().size()});
}

void RVTorrentDetailController::setDetailInfo(std::shared_ptr<RVTorrentInfo> info) {
  log("RVTorrentInfoViewController setDetailInfo");
  if (curPos_ == kHidden) {
    moveLeft();
  }
  detailInfo_ = std::move(info);
  fileListController_.setDetailInfo(detailInfo_);
  rightListController_.setDetailInfo(detailInfo_);
}

void RVTorrentDetailController::resetPosition() {
  moveToPos(kHidden);
}

void RVTorrentDetailController::handleSwipeFrom(SwipeDirection direction) {
  if (direction == SwipeDirection::left) {
    moveLeft();
  } else {
    moveRight();
  }
}

void RVTorrentDetailController::pressBtnMoveLeft() {
  platform::pressFromLayout(this, "btnMoveLeft",
                            [](RVTorrentDetailController& panel) { panel.onBtnMoveLeft(); });
}

void RVTorrentDetailController::moveLeft() {
  log("moveLeft");
  ViewGeometry::animate(kMoveSeconds, [this] {
    if (curPos_ == kHidden) {
      moveToPos(kHalfIn);
    } else if (curPos_ == kHalfIn) {
      moveToPos(kFullyIn);
    }
  });
}

void RVTorrentDetailController::moveRight() {
  log("moveRight");
  ViewGeometry::animate(kMoveSeconds, [this] {
    if (curPos_ == kFullyIn) {
      moveToPos(kHalfIn);
    } else if (curPos_ == kHalfIn) {
      moveToPos(kHidden);
    }
  });
}

void RVTorrentDetailController::moveToPos(float x) {
  view_.setTranslation({x, 0});
  curPos_ = static_cast<int>(x);
  Q_EMIT curPosChanged();
}

}  // namespace seedmote
