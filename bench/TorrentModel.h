#pragma once

#include <QAbstractListModel>
#include <cstdint>
#include <string>
#include <vector>

namespace seedmote::bench {

// What the bare program shows of a torrent.
struct BareTorrent {
  std::string name;
  std::int64_t totalSize = 0;
  std::int64_t leftUntilDone = 0;
  std::int64_t uploadedEver = 0;
  std::int64_t rateDownload = 0;
  std::int64_t rateUpload = 0;
  double percentDone = 0;
  int status = 0;
};

// A list for Qt Quick's own view. Texts are made when they are asked for.
class TorrentModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role { nameRole = Qt::UserRole, bytesRole, speedRole };

  void setTorrents(std::vector<BareTorrent> torrents);

  int rowCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  std::vector<BareTorrent> torrents_;
};

}  // namespace seedmote::bench
