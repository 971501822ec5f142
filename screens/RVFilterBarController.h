#pragma once

#include <QColor>
#include <QObject>
#include <QUrl>
#include <QtQmlIntegration>
#include <array>
#include <cstdint>
#include <string>

#include "platform/ui/TableView.h"
#include "platform/ui/TableViewDataSource.h"
#include "platform/ui/ViewGeometry.h"
#include "screens/RVFilterBarCell.h"
#include "screens/RVTorrentListController.h"

namespace seedmote {

// The states by which the torrent list can be filtered, below the list's left edge. It knows no torrents: it
// hands a state's number to the list. Main thread.
class RVFilterBarController : public QObject, public platform::TableViewDataSource {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The filter bar is made by the program.")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(seedmote::platform::TableView* table READ table CONSTANT)

 public:
  explicit RVFilterBarController(QObject* parent = nullptr);
  ~RVFilterBarController() override;

  void viewDidLoad();

  // Not owned; outlives the bar, or is taken away with null.
  void setTorrentListController(RVTorrentListController* list);
  void doFilter(int id);
  // The state whose row is highlighted.
  int selectedid() const { return selectedid_; }

  platform::ViewGeometry* view() { return &view_; }
  platform::TableView* table() { return &table_; }

  int numberOfSectionsInTableView() override { return 1; }
  int numberOfRowsInSection(int section) override;
  double heightForRowAtIndexPath(int row) override;
  RVFilterBarCell* cellForRowAtIndexPath(int row) override;
  std::int64_t rowToken(int row) override { return row; }
  bool canBuildRowsWhileWaiting() const override { return true; }
  // The highlight of a row that is chosen again goes back to all states, while the list stays filtered.
  void didSelectRowAtIndexPath(int row) override;

 private:
  void followList();
  static constexpr std::array<int, 7> filterBarID{1, 3, 5, 6, 2, 4, 7};

  std::array<std::string, filterBarID.size()> filterBarStr_;
  std::array<QUrl, filterBarID.size()> filterBarImage_;
  std::array<QUrl, filterBarID.size()> filterBarImageSel_;
  int selectedid_ = 1;
  bool covered_ = false;  // the list lies over the bar's whole width
  RVTorrentListController* torrentListController_ = nullptr;
  platform::ViewGeometry view_;
  platform::TableView table_;
  QColor separatorColor_ = Qt::transparent;
  double separatorInset_ = 15;  // of systems that know no other
};

}  // namespace seedmote
