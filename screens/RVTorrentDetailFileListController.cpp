#include "screens/RVTorrentDetailFileListController.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "platform/core/Log.h"
#include "screens/RVTorrentDetailFileListCell.h"
#include "screens/ReusableCell.h"

namespace seedmote {

using platform::log;

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
  auto* cell = reusableCell<RVTorrentDetailFileListCell>(table_);
  cell->fill(fileList()[index]);
  return cell;
}

void RVTorrentDetailFileListController::buttonPressedAction() {
  log("selected\n");
}

}  // namespace seedmote
