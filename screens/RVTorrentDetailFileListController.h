#pragma once

#include <QObject>
#include <QtQmlIntegration>
#include <memory>
#include <vector>

#include "client/RVTorrentInfo.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TableViewDataSource.h"
#include "platform/ui/ViewGeometry.h"

namespace seedmote {

// The files of the torrent that the detail panel shows. Main thread.
class RVTorrentDetailFileListController : public QObject, public platform::TableViewDataSource {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The file list is made by the detail panel.")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(seedmote::platform::TableView* table READ table CONSTANT)

 public:
  RVTorrentDetailFileListController();
  ~RVTorrentDetailFileListController() override;

  // Absent: no files.
  void setDetailInfo(std::shared_ptr<const RVTorrentInfo> info);

  platform::ViewGeometry* view() { return &view_; }
  platform::TableView* table() { return &table_; }

  int numberOfRowsInSection(int section) override;
  double heightForRowAtIndexPath(int /*row*/) override { return 22.0; }
  platform::TableViewCell* cellForRowAtIndexPath(int row) override;
  std::int64_t rowToken(int row) override { return row; }
  bool canBuildRowsWhileWaiting() const override { return true; }

  // For a button in a row; the rows have none.
  void buttonPressedAction();

 private:
  const std::vector<RVTorrentFile>& fileList() const;

  platform::ViewGeometry view_;
  platform::TableView table_;
  std::shared_ptr<const RVTorrentInfo> info_;
};

}  // namespace seedmote
