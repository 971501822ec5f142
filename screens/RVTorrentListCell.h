#pragma once

#include <QColor>
#include <QString>
#include <QUrl>
#include <QtQmlIntegration>
#include <cstdint>
#include <optional>
#include <string>

#include "client/TorrentIdentity.h"
#include "json/Value.h"
#include "platform/ui/TableViewCell.h"

namespace seedmote {

// One row of the torrent list. The list controller fills it from a torrent of the daemon; texts are made
// when they are first read, so that rows which are only measured cost none. Main thread.
class RVTorrentListCell : public platform::TableViewCell {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Cells are made by the torrent list.")
  Q_PROPERTY(QString labelTorrnetName READ labelTorrnetName NOTIFY filled)
  Q_PROPERTY(QString labelBytesInformation READ labelBytesInformation NOTIFY filled)
  Q_PROPERTY(QString labelSpeedInformation READ labelSpeedInformation NOTIFY filled)
  Q_PROPERTY(QString labelETA READ labelETA NOTIFY filled)
  Q_PROPERTY(float processDownload READ processDownload NOTIFY filled)
  Q_PROPERTY(QUrl imageStatus READ imageStatus NOTIFY filled)
  Q_PROPERTY(QColor imageFill READ imageFill NOTIFY filled)
  Q_PROPERTY(QColor backgroundColor READ backgroundColor NOTIFY filled)
  Q_PROPERTY(int statusID READ statusID NOTIFY filled)
  Q_PROPERTY(bool contentHidden READ isContentHidden NOTIFY filled)
  Q_PROPERTY(bool shaking READ isShaking NOTIFY selectedChanged)
  Q_PROPERTY(double shakeDegrees READ shakeDegrees CONSTANT)
  Q_PROPERTY(int shakeMilliseconds READ shakeMilliseconds CONSTANT)

 public:
  static constexpr const char* kIdentifier = "TorrentCell";
  static constexpr std::int64_t kNoTorrent = kNoTorrentID;

  RVTorrentListCell() : TableViewCell(kIdentifier) {}

  // The fields of the torrent, in this order: texts, id, colours, progress, status (in the numbering of RPC
  // version 14 and later). A field that is missing counts as 0 or "".
  void fill(json::ValueRef torrent, int status);

  // Sets the list state and with it the icon. A stopped torrent's state depends on the progress, so that
  // is set before. A status that is not known leaves the state of the cell's previous use.
  void setTorrentStatus(int status);
  void setProcessDownload(float progress);  // cut to 0..1; not a number counts as 0
  void hideCell(bool hidden) { hidden_ = hidden; }
  void setCellIndex(int row) { cellIndex_ = row; }
  void setShaking(bool shaking);
  // Tells the delegate that filling is over.
  void finishFilling() { Q_EMIT filled(); }

  int getCellIndex() const { return cellIndex_; }
  void infoBtn() {}

  QString labelTorrnetName() const;
  QString labelBytesInformation() const;
  QString labelSpeedInformation() const;
  QString labelETA() const;
  float processDownload() const { return progress_; }
  // The state's icon; empty where that is blank: then imageFill() fills its place.
  QUrl imageStatus() const;
  // Transparent where the icon is a picture.
  QColor imageFill() const;
  // Of the cell's content view and of the background view behind it; transparent before the first filling.
  QColor backgroundColor() const { return backgroundColor_; }
  // A list state: 2 paused, 3 downloading, 4 finished, 5 seeding, 6 verifying, 7 waiting.
  int statusID() const { return statusID_; }
  // The torrent's id; kNoTorrent when the daemon sent none that is exactly an integer.
  std::int64_t torrentidx() const { return torrentidx_; }
  TorrentIdentity torrent() const { return {torrentidx_, name_, totalSize_}; }
  // Of the ids of the list that the torrent is from.
  std::uint64_t deal() const { return deal_; }
  void setDeal(std::uint64_t deal) { deal_ = deal; }
  bool isContentHidden() const { return hidden_; }

  // The icon shakes while the torrent is selected: from one side to the other in this time, and back.
  bool isShaking() const { return shaking_; }
  static double shakeDegrees();
  static int shakeMilliseconds() { return 130; }

  QString accessibleName() const override { return labelTorrnetName(); }
  QString accessibleDescription() const override;
  bool isSelected() const override { return shaking_; }
  void touchesBegan() override;
  void touchesEnded() override;
  void touchesCancelled() override;

 private:
  struct Texts {
    std::optional<QString> name;
    std::optional<QString> bytes;
    std::optional<QString> speed;
    std::optional<QString> eta;
  };

  std::string name_;
  float percentDone_ = 0;
  float totalSizeInSingle_ = 0;
  float rateDownloadInSingle_ = 0;
  std::int64_t totalSize_ = 0;
  std::int64_t uploadedEver_ = 0;
  std::int64_t rateDownload_ = 0;
  std::int64_t rateUpload_ = 0;
  std::int32_t peersSendingToUs_ = 0;
  std::int32_t seeders_ = 0;
  int status_ = 0;

  int cellIndex_ = 0;
  std::uint64_t deal_ = 0;
  int statusID_ = 0;
  float progress_ = 0;
  std::int64_t torrentidx_ = kNoTorrent;
  QColor backgroundColor_ = Qt::transparent;
  bool hidden_ = false;
  bool shaking_ = false;
  mutable Texts texts_;
};

}  // namespace seedmote
