#pragma once

#include <QObject>
#include <QtQmlIntegration>
#include <memory>
#include <string>
#include <vector>

#include "client/RVTorrentInfo.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TableViewDataSource.h"
#include "platform/ui/ViewGeometry.h"

namespace seedmote {

// The details of the torrent that the detail panel shows, a label and a value in each row. Main thread.
class RVTorrentDetailRightListController : public QObject, public platform::TableViewDataSource {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The list of details is made by the detail panel.")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(seedmote::platform::TableView* table READ table CONSTANT)

 public:
  RVTorrentDetailRightListController();
  ~RVTorrentDetailRightListController() override;

  // An absent record has the texts of an empty one.
  void setDetailInfo(const std::shared_ptr<const RVTorrentInfo>& info);

  platform::ViewGeometry* view() { return &view_; }
  platform::TableView* table() { return &table_; }
  // The value of row r, and then its label.
  const std::vector<std::string>& rightList() const { return rightList_; }

  int numberOfRowsInSection(int /*section*/) override { return static_cast<int>(rightList_.size() / 2); }
  double heightForRowAtIndexPath(int /*row*/) override { return 22.0; }
  platform::TableViewCell* cellForRowAtIndexPath(int row) override;
  std::int64_t rowToken(int row) override { return row; }
  bool canBuildRowsWhileWaiting() const override { return true; }

 private:
  platform::ViewGeometry view_;
  platform::TableView table_;
  std::vector<std::string> rightList_;
};

}  // namespace seedmote
