#include "screens/RVTorrentDetailFileListCell.h"

#include "client/RVUtility.h"
#include "platform/core/Format.h"
#include "platform/core/ShownText.h"

namespace seedmote {

void RVTorrentDetailFileListCell::fill(const RVTorrentFile& file) {
  const double percent = file.bytesCompleted->intValue() * 100.0 / file.length->intValue();
  filename_ = platform::shownText(file.name.value_or(""));
  process_ = QString::fromStdString(platform::format("%.2f%%", percent));
  length_ = QString::fromStdString(RVUtility::changeSizeFormat(file.length->longLongValue()));
  Q_EMIT filled();
}

}  // namespace seedmote
