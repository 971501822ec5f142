#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration>
#include <cstdint>
#include <optional>
#include <utility>

#include "json/Value.h"
#include "platform/core/Device.h"
#include "platform/core/Timers.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TableViewDataSource.h"
#include "screens/RVTorrentListCell.h"
#include "screens/TorrentDetailPanel.h"

namespace seedmote {

// The torrent list: a table of the client's torrents, one cell each, those of other states than the
// filter's with height 0. It asks the client every two seconds whether there is something new. Main
// thread.
class RVTorrentListController : public QObject, public platform::TableViewDataSource {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The torrent list is made by the program.")
  Q_PROPERTY(seedmote::platform::TableView* table READ table CONSTANT)
  Q_PROPERTY(QString emptyState READ emptyState NOTIFY emptyStateChanged)
  Q_PROPERTY(bool messageShown READ isMessageShown NOTIFY messageShownChanged)

 public:
  explicit RVTorrentListController(QObject* parent = nullptr);
  ~RVTorrentListController() override;

  void viewDidLoad();

  // The panel that shows the selected torrent; not owned. None on a phone.
  void setTorrentInfoViewController(TorrentDetailPanel* panel) { torrentInfoViewController_ = panel; }

  // Lets only torrents of a list state through (see RVTorrentListCell); 1 lets all through.
  void doFilter(int filterID);
  int filterID() const { return filterID_; }
  void refreshAll();
  // Every two seconds: lists the torrents anew when the client has new data.
  void updateTorrentList();

  platform::TableView* table() { return &table_; }
  // Says why there is nothing to see, while the table is empty.
  QString emptyState() const { return emptyState_; }
  // True while the overlay speaks: two texts above each other can't be read.
  bool isMessageShown() const;

  // The ways an interface can stand, by their numbers on a phone's system.
  enum InterfaceOrientation { portrait = 1, portraitUpsideDown = 2, landscapeRight = 3, landscapeLeft = 4 };
  // Upright on a phone, on its side on a tablet.
  bool shouldAutorotateToInterfaceOrientation(int orientation) const;

  // An item that the list may stand for; none unless one is set.
  void setDetailItem(std::optional<QString> description) { detailItem_ = std::move(description); }
  // Shows the item's description, when there is an item, in the label.
  void configureView();
  QString detailDescriptionLabel() const { return detailDescriptionLabel_; }

  int numberOfSectionsInTableView() override { return 1; }
  int numberOfRowsInSection(int section) override;
  double heightForRowAtIndexPath(int row) override;
  // Null for a row beyond the end of the list.
  RVTorrentListCell* cellForRowAtIndexPath(int row) override;
  // The torrent's id.
  std::int64_t rowToken(int row) override;
  // An unconnected client would begin to connect.
  bool canBuildRowsWhileWaiting() const override;
  // A toggle: a tap on the selected torrent deselects it.
  void didSelectRowAtIndexPath(int row) override;
  void didDeselectRowAtIndexPath(int row) override;

 Q_SIGNALS:
  void emptyStateChanged();
  void messageShownChanged();

 private:
  void doInit();
  void selectTorrent(const TorrentIdentity& shown);
  // Null for a row that is not on the screen.
  const RVTorrentListCell* visibleCell(int row) const;
  RVTorrentListCell* reusableCell();
  bool isShaking(std::int64_t torrent) const;
  void updateShaking();
  void updateEmptyState();

  platform::TableView table_;
  platform::Timers::Handle refreshTimer_;
  TorrentDetailPanel* torrentInfoViewController_ = nullptr;
  int filterID_ = 1;
  // The torrent whose row was tapped last; its icon shakes as long as it is the client's selection.
  std::int64_t tappedTorrent_ = RVTorrentListCell::kNoTorrent;
  QString emptyState_;
  std::optional<QString> detailItem_;
  QString detailDescriptionLabel_;
};

}  // namespace seedmote
