#include "bench/TorrentModel.h"

#include <QLocale>
#include <utility>

namespace seedmote::bench {

namespace {

QString size(std::int64_t bytes) {
  return QLocale::c().formattedDataSize(bytes, 2, QLocale::DataSizeTraditionalFormat);
}

}  // namespace

void TorrentModel::setTorrents(std::vector<BareTorrent> torrents) {
  beginResetModel();
  torrents_ = std::move(torrents);
  endResetModel();
}

int TorrentModel::rowCount(const QModelIndex&) const {
  return static_cast<int>(torrents_.size());
}

QVariant TorrentModel::data(const QModelIndex& index, int role) const {
  const BareTorrent& torrent = torrents_.at(static_cast<std::size_t>(index.row()));
  switch (role) {
    case nameRole:
      return QString::fromStdString(torrent.name);
    case bytesRole:
      return QStringLiteral("%1 of %2 (%3%), uploaded %4")
          .arg(size(torrent.totalSize - torrent.leftUntilDone), size(torrent.totalSize))
          .arg(torrent.percentDone * 100, 0, 'f', 1)
          .arg(size(torrent.uploadedEver));
    case speedRole:
      return QStringLiteral("down %1/s, up %2/s, state %3")
          .arg(size(torrent.rateDownload), size(torrent.rateUpload))
          .arg(torrent.status);
    default:
      return {};
  }
}

QHash<int, QByteArray> TorrentModel::roleNames() const {
  return {{nameRole, "name"}, {bytesRole, "bytes"}, {speedRole, "speed"}};
}

}  // namespace seedmote::bench
