#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <memory>

#include "app/InboxNotice.h"
#include "app/RVGADView.h"
#include "app/ScreenPlan.h"
#include "platform/ui/Alerts.h"
#include "platform/ui/ViewGeometry.h"
#include "platform/ui/ViewStack.h"
#include "screens/RVSessionStatController.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

class RVRightBarController;
class RVSettingsStore;

// The root screen: its regions, the stack of the views in it, and the statistics. Above all of them stand the
// overlay and alerts. Main thread.
class RVMainViewController : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The application delegate makes it")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(seedmote::platform::ViewGeometry* topbarView READ topbarView CONSTANT)
  Q_PROPERTY(seedmote::platform::ViewGeometry* statusBarView READ statusBarView CONSTANT)
  Q_PROPERTY(seedmote::platform::ViewGeometry* torrentInfoView READ torrentInfoView CONSTANT)
  Q_PROPERTY(seedmote::platform::ViewGeometry* rightBarView READ rightBarView CONSTANT)
  Q_PROPERTY(seedmote::platform::ViewGeometry* adView READ adView CONSTANT)
  Q_PROPERTY(seedmote::RVSessionStatController* sessionStatController READ sessionStatController CONSTANT)
  Q_PROPERTY(seedmote::InboxNotice* inboxNotice READ inboxNotice CONSTANT)
  Q_PROPERTY(seedmote::OvProgressHUD* overlay READ overlay CONSTANT)
  Q_PROPERTY(seedmote::platform::Alerts* alerts READ alerts CONSTANT)

 public:
  RVMainViewController();
  ~RVMainViewController() override;

  void viewDidLoad();
  void viewDidUnload();

  void addAdmobView();
  void addTorrentInfoView() {}
  void addTorrentFileListView() {}
  // Makes an action bar of its own in its region. Nobody calls it: the launch installs the one there is.
  void addRightBarView(RVSettingsStore& store);
  void addSessionStatView();

  // Puts the regions where they belong.
  void place(const ScreenPlan& plan, QSizeF root);

  platform::ViewStack& subviews() { return subviews_; }
  RVRightBarController* rightBarViewController() const { return rightBarViewController_.get(); }
  void setRightBarViewController(std::unique_ptr<RVRightBarController> controller);
  RVSessionStatController* sessionStatController() { return &sessionStatController_; }
  InboxNotice* inboxNotice() { return &inboxNotice_; }
  const RVGADView* banner() const { return banner_.get(); }

  // Landscape only.
  bool shouldAutorotateToInterfaceOrientation(int orientation) const;
  bool prefersStatusBarHidden() const { return false; }

  platform::ViewGeometry* view() { return &view_; }
  platform::ViewGeometry* topbarView() { return &topbarView_; }
  platform::ViewGeometry* statusBarView() { return &statusBarView_; }
  platform::ViewGeometry* torrentInfoView() { return &torrentInfoView_; }
  platform::ViewGeometry* rightBarView() { return &rightBarView_; }
  platform::ViewGeometry* adView() { return &adView_; }
  OvProgressHUD* overlay() const { return OvProgressHUD::sharedView(); }
  platform::Alerts* alerts() const;

 private:
  platform::ViewGeometry view_;
  platform::ViewGeometry topbarView_;
  platform::ViewGeometry statusBarView_;
  platform::ViewGeometry torrentInfoView_;
  platform::ViewGeometry rightBarView_;
  platform::ViewGeometry adView_;
  platform::ViewStack subviews_;
  std::unique_ptr<RVGADView> banner_;
  std::unique_ptr<RVRightBarController> rightBarViewController_;
  RVSessionStatController sessionStatController_;
  InboxNotice inboxNotice_;
};

}  // namespace seedmote
