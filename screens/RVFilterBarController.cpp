#include "screens/RVFilterBarController.h"

#include <memory>

#include "app/resources/RVResQt.h"
#include "platform/core/Device.h"
#include "platform/core/Log.h"
#include "platform/core/Services.h"
#include "platform/ui/ReusableCell.h"

namespace seedmote {

namespace {

constexpr int kAllStates = 1;
constexpr int kLastState = 7;
constexpr int kSelectedImage = 10;  // beyond the image of the state that is not selected
constexpr double kRowHeight = 50.0;
constexpr int kBackground = 32;
constexpr int kText = 51;
constexpr int kSelectedText = 52;
constexpr int kTextShadow = 53;

}  // namespace

RVFilterBarController::RVFilterBarController(QObject* parent) : QObject(parent) {
  for (std::size_t row = 0; row < filterBarID.size(); ++row) {
    filterBarStr_.at(row) = RVRes::getWording(filterBarID.at(row));
    filterBarImage_.at(row) = imageUrl(filterBarID.at(row));
    filterBarImageSel_.at(row) = imageUrl(filterBarID.at(row) + kSelectedImage);
  }
  table_.setDataSource(this);
}

RVFilterBarController::~RVFilterBarController() {
  table_.setDataSource(nullptr);
}

void RVFilterBarController::setTorrentListController(RVTorrentListController* list) {
  if (torrentListController_ != nullptr) {
    disconnect(torrentListController_->view(), nullptr, this, nullptr);
  }
  torrentListController_ = list;
  if (list != nullptr) {
    connect(list->view(), &platform::ViewGeometry::changed, this, &RVFilterBarController::followList);
    followList();
  }
}

void RVFilterBarController::followList() {
  const bool covered = torrentListController_->view()->shownFrame().left() <= view_.frame().left();
  if (covered_ != covered) {
    covered_ = covered;
    for (const platform::TableView::LiveRow& live : table_.liveRows()) {
      if (auto* cell = static_cast<RVFilterBarCell*>(live.cell)) {
        cell->covered = covered;
        cell->finishFilling();
      }
    }
  }
}

// No separators stand below the last row: each belongs to its row.
void RVFilterBarController::viewDidLoad() {
  if (platform::services().device.systemVersionNumber() >= 7.0F) {
    separatorInset_ = 0;
  }
  separatorColor_ = colorOf(kBackground);
  table_.setBackgroundColor(colorOf(kBackground));
  table_.setScrollEnabled(false);
  table_.reload();
  platform::log("Filter Bar view is loaded.\n");
}

int RVFilterBarController::numberOfRowsInSection(int /*section*/) {
  return static_cast<int>(filterBarStr_.size());
}

double RVFilterBarController::heightForRowAtIndexPath(int /*row*/) {
  return kRowHeight;
}

RVFilterBarCell* RVFilterBarController::cellForRowAtIndexPath(int row) {
  auto* cell = platform::reusableCell<RVFilterBarCell>(table_);
  const auto place = static_cast<std::size_t>(row);
  cell->text = QString::fromStdString(filterBarStr_.at(place));
  cell->shadowColor = colorOf(kTextShadow);
  cell->shadowOffset = {2.0, 2.0};
  cell->filterBarID = filterBarID.at(place);
  cell->selected = cell->filterBarID == selectedid_;
  cell->textColor = colorOf(cell->selected ? kSelectedText : kText);
  cell->image = (cell->selected ? filterBarImageSel_ : filterBarImage_).at(place);
  cell->backgroundColor = colorOf(kBackground);
  cell->separatorColor = separatorColor_;
  cell->separatorInset = separatorInset_;
  cell->covered = covered_;
  cell->finishFilling();
  return cell;
}

void RVFilterBarController::didSelectRowAtIndexPath(int row) {
  const auto* cell = static_cast<const RVFilterBarCell*>(table_.visibleCell(row));
  if (cell == nullptr) {
    return;
  }
  const int id = cell->filterBarID;
  selectedid_ = selectedid_ == id ? kAllStates : id;
  if (id >= kAllStates && id <= kLastState) {
    doFilter(id);
  }
  table_.reload();
  platform::log("RVFilterBarController didSelectRowAtIndexPath = %d", id);
}

void RVFilterBarController::doFilter(int id) {
  if (torrentListController_ != nullptr) {
    torrentListController_->doFilter(id);
  }
}

}  // namespace seedmote
