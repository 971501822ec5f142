#include "screens/RVTorrentDetailFileListController.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "platform/core/Log.h"
#include "platform/ui/ReusableCell.h"
#include "screens/RVTorrentDetailFileListCell.h"
#include "widgets/JtSwitch.h"

namespace seedmote {

using platform::log;

namespace {

// Readied with every row for choosing its file. There is nothing to choose yet, so it is dropped.
void readySwitch() {
  const auto image = [](const char* name) { return SwitchImage::named(QString::fromLatin1(name)); };
  JtSwitch choice({0, 0, 76, 27});
  choice.setTrackImage(image("square-switch-track"));
  choice.setOverlayImage(image("square-switch-overlay"));
  choice.setThumbImage(image("square-switch-thumb"));
  choice.setThumbHighlightImage(image("square-switch-thumb-highlight"));
  choice.setTrackMaskImage(image("square-switch-mask"));
  choice.setThumbMaskImage({});
  choice.setThumbInsetX(-3.0F);
  choice.setThumbOffsetY(-3.0F);
}

}  // namespace

RVTorrentDetailFileListController::RVTorrentDetailFileListController() {
  table_.setBackgroundColor(Qt::transparent);
  table_.setDataSource(this);
}

RVTorrentDetailFileListController::~RVTorrentDetailFileListController() {
  table_.setDataSource(nullptr);
}

void RVTorrentDetailFileListController::setDetailInfo(std::shared_ptr<const RVTorrentInfo> info) {
  log("setFileList");
  info_ = std::move(info);
  table_.setContentOffset(0, false);
  table_.reload();
}

const std::vector<RVTorrentFile>& RVTorrentDetailFileListController::fileList() const {
  static const std::vector<RVTorrentFile> none;
  return info_ ? info_->files : none;
}

int RVTorrentDetailFileListController::numberOfRowsInSection(int /*section*/) {
  const std::size_t count = fileList().size();
  log("filelist count = %ld\n", count);
  return static_cast<int>(std::min<std::size_t>(count, std::numeric_limits<int>::max()));
}

platform::TableViewCell* RVTorrentDetailFileListController::cellForRowAtIndexPath(int row) {
  const auto index = static_cast<std::size_t>(row);
  if (index >= fileList().size()) {
    return nullptr;
  }
  auto* cell = platform::reusableCell<RVTorrentDetailFileListCell>(table_);
  cell->fill(fileList()[index]);
  readySwitch();
  return cell;
}

void RVTorrentDetailFileListController::buttonPressedAction() {
  log("selected\n");
}

}  // namespace seedmote
