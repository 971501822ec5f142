#pragma once

#include <QObject>
#include <QtQmlIntegration>
#include <memory>

#include "platform/ui/GestureRecognizers.h"
#include "platform/ui/ViewGeometry.h"
#include "screens/RVTorrentDetailFileListController.h"
#include "screens/RVTorrentDetailRightListController.h"
#include "screens/RVTorrentDetailView.h"
#include "screens/TorrentDetailPanel.h"

namespace seedmote {

// The panel of a torrent's details on a tablet: its files at the left, its other details at the right. It
// comes in from the right and has three stops, which are translations of its view; swipes, its button and
// the torrent list move it between them. Who makes it gives its view a frame, and hides it by
// resetPosition(). Main thread.
class RVTorrentDetailController : public QObject, public TorrentDetailPanel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The detail panel is made by the program.")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(seedmote::platform::ViewGeometry* fileListViewPos READ fileListViewPos CONSTANT)
  Q_PROPERTY(seedmote::platform::ViewGeometry* rightInfoListViewPos READ rightInfoListViewPos CONSTANT)
  Q_PROPERTY(seedmote::platform::ViewGeometry* btnMoveLeft READ btnMoveLeft CONSTANT)
  Q_PROPERTY(seedmote::RVTorrentDetailFileListController* fileListController READ fileListController CONSTANT)
  Q_PROPERTY(
      seedmote::RVTorrentDetailRightListController* rightListController READ rightListController CONSTANT)
  Q_PROPERTY(seedmote::platform::GestureRecognizers* gestures READ gestures CONSTANT)
  Q_PROPERTY(bool shown READ isShown NOTIFY curPosChanged)
  Q_PROPERTY(bool wholeShown READ isWholeShown NOTIFY curPosChanged)

 public:
  // The stops.
  static constexpr int kHidden = 1020;
  static constexpr int kHalfIn = 580;
  static constexpr int kFullyIn = 340;

  RVTorrentDetailController();

  void viewDidLoad();
  void viewDidUnload();

  void setDetailInfo(std::shared_ptr<RVTorrentInfo> info) override;
  void resetPosition() override;

  void handleSwipeFrom(platform::SwipeDirection direction);
  void onBtnMoveLeft() { moveLeft(); }
  // To the next stop, in a second; stays at the last.
  void moveLeft();
  void moveRight();
  // At once, or as an animation that runs says.
  void moveToPos(float x);

  std::shared_ptr<RVTorrentInfo> detailInfo() const { return detailInfo_; }
  int curPos() const { return curPos_; }
  bool isShown() const { return curPos_ != kHidden; }
  bool isWholeShown() const { return curPos_ == kFullyIn; }

  platform::ViewGeometry* view() { return &view_; }
  RVTorrentDetailView* fileListViewPos() { return &fileListViewPos_; }
  platform::ViewGeometry* rightInfoListViewPos() { return &rightInfoListViewPos_; }
  // In fileListViewPos, outside its bounds.
  platform::ViewGeometry* btnMoveLeft() { return &btnMoveLeft_; }
  RVTorrentDetailFileListController* fileListController() { return &fileListController_; }
  RVTorrentDetailRightListController* rightListController() { return &rightListController_; }
  platform::GestureRecognizers* gestures() { return &gestures_; }

  // From the layout.
  Q_INVOKABLE void pressBtnMoveLeft();

 Q_SIGNALS:
  void curPosChanged();

 private:
  void placeSubviews();
  void addGesture();
  void addFileListView();
  void addInfoListView();

  platform::ViewGeometry view_;
  platform::ViewGeometry btnMoveLeft_;
  RVTorrentDetailFileListController fileListController_;
  RVTorrentDetailRightListController rightListController_;
  RVTorrentDetailView fileListViewPos_;
  platform::ViewGeometry rightInfoListViewPos_;
  platform::GestureRecognizers gestures_;
  std::shared_ptr<RVTorrentInfo> detailInfo_;
  int curPos_ = kHidden;
};

}  // namespace seedmote
