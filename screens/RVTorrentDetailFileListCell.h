#pragma once

#include <QString>
#include <QtQmlIntegration>

#include "client/RVTorrentFile.h"
#include "platform/ui/TableViewCell.h"

namespace seedmote {

// One file of a torrent: its name, how much of it is there, its size. Main thread.
class RVTorrentDetailFileListCell : public platform::TableViewCell {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Cells are made by the file list.")
  Q_PROPERTY(QString filename READ filename NOTIFY filled)
  Q_PROPERTY(QString process READ process NOTIFY filled)
  Q_PROPERTY(QString length READ length NOTIFY filled)

 public:
  static constexpr const char* kIdentifier = "Cell";

  RVTorrentDetailFileListCell() : TableViewCell(kIdentifier) {}

  void fill(const RVTorrentFile& file);

  QString filename() const { return filename_; }
  // In percent. Both sizes are taken as 32-bit numbers, so that it is wrong for files of 2 GiB and more;
  // "inf" or "nan" for a file of length 0.
  QString process() const { return process_; }
  QString length() const { return length_; }

  QString accessibleName() const override { return filename_; }
  QString accessibleDescription() const override { return process_ + QLatin1String(", ") + length_; }

 private:
  QString filename_;
  QString process_;
  QString length_;
};

}  // namespace seedmote
