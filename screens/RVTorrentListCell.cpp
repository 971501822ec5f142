#include "screens/RVTorrentListCell.h"

#include <algorithm>
#include <limits>
#include <numbers>

#include "app/resources/RVResQt.h"
#include "client/RVUtility.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/core/ShownText.h"

namespace seedmote {

namespace {

constexpr int kDownloading = 4;  // the daemon's status

// Toward zero; what does not fit becomes the nearest number that does, and no number 0.
std::int64_t truncated(float value) {
  constexpr float kLimit = 9223372036854775808.0F;  // 2^63
  if (value != value) {
    return 0;
  }
  if (value >= kLimit) {
    return std::numeric_limits<std::int64_t>::max();
  }
  return value < -kLimit ? std::numeric_limits<std::int64_t>::min() : static_cast<std::int64_t>(value);
}

template <class Make>
const QString& once(std::optional<QString>& text, Make make) {
  if (!text) {
    text = platform::shownText(make());
  }
  return *text;
}

}  // namespace

void RVTorrentListCell::fill(json::ValueRef torrent, int status) {
  texts_ = Texts();
  name_ = torrent["name"].text().value_or("");
  percentDone_ = torrent["percentDone"].floatValue();
  totalSize_ = torrent["totalSize"].longLongValue();
  totalSizeInSingle_ = torrent["totalSize"].floatValue();
  uploadedEver_ = torrent["uploadedEver"].longLongValue();
  peersSendingToUs_ = torrent["peersSendingToUs"].intValue();
  seeders_ = torrent["seeders"].intValue();
  rateDownload_ = torrent["rateDownload"].longLongValue();
  rateDownloadInSingle_ = torrent["rateDownload"].floatValue();
  rateUpload_ = torrent["rateUpload"].longLongValue();
  torrentidx_ = torrentID(torrent["id"]);
  backgroundColor_ = colorOf(32);
  setProcessDownload(percentDone_);
  status_ = status;
  setTorrentStatus(status);
}

void RVTorrentListCell::setProcessDownload(float progress) {
  progress_ = progress > 0 ? std::min(progress, 1.0F) : 0.0F;
}

void RVTorrentListCell::setTorrentStatus(int status) {
  switch (status) {
    case 0:
      statusID_ = progress_ >= 1.0F ? 4 : 2;
      break;
    case 1:
    case 3:
    case 5:
      statusID_ = 7;
      break;
    case 2:
      statusID_ = 6;
      break;
    case kDownloading:
      statusID_ = 3;
      break;
    case 6:
      statusID_ = 5;
      break;
    default:
      break;
  }
}

void RVTorrentListCell::setShaking(bool shaking) {
  if (shaking_ != shaking) {
    shaking_ = shaking;
    Q_EMIT selectedChanged();
  }
}

double RVTorrentListCell::shakeDegrees() {
  return 0.1 * 180 / std::numbers::pi;
}

QString RVTorrentListCell::labelTorrnetName() const {
  return once(texts_.name, [this] { return name_; });
}

QString RVTorrentListCell::labelBytesInformation() const {
  return once(texts_.bytes, [this] {
    return platform::format("(%2.f%%)   Downloaded:%@/%@   Uploaded:%@ ", percentDone_ * 100.0F,
                            RVUtility::changeSizeFormat(truncated(totalSizeInSingle_ * percentDone_)),
                            RVUtility::changeSizeFormat(totalSize_),
                            RVUtility::changeSizeFormat(uploadedEver_));
  });
}

QString RVTorrentListCell::labelSpeedInformation() const {
  return once(texts_.speed, [this] {
    return platform::format("peers:%d   seeds:%d     Download:%@/sec, Upload:%@/sec", peersSendingToUs_,
                            seeders_, RVUtility::changeSizeFormat(rateDownload_),
                            RVUtility::changeSizeFormat(rateUpload_));
  });
}

QString RVTorrentListCell::labelETA() const {
  return once(texts_.eta, [this]() -> std::string {
    if (!(percentDone_ < 1.0F) || status_ != kDownloading) {
      return "";
    }
    if (!(rateDownloadInSingle_ > 0)) {
      return "ETA>1d";
    }
    const float seconds = totalSizeInSingle_ * (1.0F - percentDone_) / rateDownloadInSingle_;
    return platform::format("ETA:%@", RVUtility::changeETAFormat(truncated(seconds)));
  });
}

QUrl RVTorrentListCell::imageStatus() const {
  return imageUrl(statusID_);
}

QColor RVTorrentListCell::imageFill() const {
  const std::optional<Color> fill = RVRes::getImage(statusID_).fill;
  return fill ? toQColor(*fill) : QColor(Qt::transparent);
}

QString RVTorrentListCell::accessibleDescription() const {
  QString description = labelBytesInformation() + QLatin1Char('\n') + labelSpeedInformation();
  if (!labelETA().isEmpty()) {
    description += QLatin1Char('\n') + labelETA();
  }
  return description;
}

void RVTorrentListCell::touchesBegan() {
  platform::log("touch begin");
}
void RVTorrentListCell::touchesEnded() {
  platform::log("touch end");
}
void RVTorrentListCell::touchesCancelled() {
  platform::log("touch cancel");
}

}  // namespace seedmote
