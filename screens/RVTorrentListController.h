#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "json/Value.h"
#include "platform/core/Device.h"
#include "platform/core/Timers.h"
#include "platform/ui/GestureRecognizers.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TableViewDataSource.h"
#include "platform/ui/ViewGeometry.h"
#include "screens/RVTorrentListCell.h"
#include "screens/RVTorrentListPullbar.h"
#include "screens/TorrentDetailPanel.h"

namespace seedmote {

// The torrent list: a table of the client's torrents, one cell each, those of other states than the
// filter's with height 0. It asks the client every two seconds whether there is something new. Swipes slide
// it aside, over the filter bar below its left edge; pulled down, it offers to add a torrent whose link was
// copied. Main thread.
class RVTorrentListController : public QObject, public platform::TableViewDataSource {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The torrent list is made by the program.")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(seedmote::platform::GestureRecognizers* gestures READ gestures CONSTANT)
  Q_PROPERTY(seedmote::platform::TableView* table READ table CONSTANT)
  Q_PROPERTY(seedmote::RVTorrentListPullbar* toolbar READ toolbar CONSTANT)
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

  platform::ViewGeometry* view() { return &view_; }
  // How many points of the view lie below the screen's bottom edge: the last row is seen all the same.
  void setHiddenBottom(double points);
  platform::GestureRecognizers* gestures() { return &gestures_; }
  platform::TableView* table() { return &table_; }
  RVTorrentListPullbar* toolbar() { return toolbar_.get(); }
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

  // Sliding.
  void addGesture();
  void handleSwipeFrom(platform::SwipeDirection direction);
  // While there is one, a tap slides the list home and selects nothing.
  void addTapGesture();
  void removeTapGesture();
  void handleSingleTap();
  // On a phone, once: the shell has slid the list aside for the start.
  void showFilterAtStartup();

  // Pulling, and what is added.
  void addTorrentListPullBar();
  void scrollViewWillBeginDragging(double offset) override;
  void scrollViewDidScroll(double offset) override;
  void scrollViewDidEndDragging(double offset, bool willDecelerate) override;
  // The answer to the question whether the copied link is to be added; 0: no.
  void didDismissWithButtonIndex(int button);
  // `url` is percent-escaped.
  void addRemoteTorrent(const std::string& url);
  // `file`: a path, or a file URL. Says that it was added whatever the daemon answers.
  void addLocalTorrent(const std::string& file);

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
  void slideTo(double x);
  void placePullBar();
  void offerCopiedTorrent();
  void selectTorrent(const TorrentIdentity& shown, std::uint64_t deal);
  void deselect();
  // Null for a row that is not on the screen.
  bool isShaking(std::int64_t torrent) const;
  void updateShaking();
  void updateEmptyState();

  // The higher bar of a tablet is there, which wants a longer pull.
  static inline bool REFRESH_HEADER_HEIGHT = false;

  platform::ViewGeometry view_;
  platform::GestureRecognizers gestures_;
  platform::TableView table_;
  std::unique_ptr<RVTorrentListPullbar> toolbar_;
  bool isDragging_ = false;
  bool isLoading_ = false;  // stays so
  platform::Timers::Handle refreshTimer_;
  platform::Timers::Handle startupTimer_;
  TorrentDetailPanel* torrentInfoViewController_ = nullptr;
  int filterID_ = 1;
  // The torrent whose row was tapped last; its icon shakes as long as it is the client's selection.
  std::int64_t tappedTorrent_ = RVTorrentListCell::kNoTorrent;
  QString emptyState_;
  std::optional<QString> detailItem_;
  QString detailDescriptionLabel_;
};

}  // namespace seedmote
