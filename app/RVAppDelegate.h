#pragma once

#include <QQuickView>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/RVMainViewController.h"
#include "app/RootView.h"
#include "app/ServerChange.h"
#include "app/Shortcuts.h"
#include "client/ListRefresher.h"
#include "client/SessionWatcher.h"
#include "platform/ui/LayoutLoader.h"
#include "screens/RVFilterBarController.h"
#include "screens/RVTorrentDetailController.h"
#include "screens/RVTorrentListController.h"

namespace seedmote {

class RVSettingsStore;
class RVSettingsViewController;

// Why the program was launched.
struct LaunchOptions {
  std::optional<std::string> url;  // a link or file that it was launched with
};

// Builds the window and its screens at launch and holds them for the life of the process, and takes what
// other programs hand over. Main thread.
class RVAppDelegate final {
 public:
  // `store` outlives the delegate.
  explicit RVAppDelegate(RVSettingsStore& store);
  ~RVAppDelegate();
  RVAppDelegate(const RVAppDelegate&) = delete;
  RVAppDelegate& operator=(const RVAppDelegate&) = delete;

  // Always true. Raises std::runtime_error when a layout can't be used.
  bool didFinishLaunchingWithOptions(const LaunchOptions& options = {});

  // A link that the program was launched with; always true. Absent: nothing is added.
  bool handleOpenURL(const std::optional<std::string>& url);
  // A file handed to the running program; always true.
  bool openURL(const std::optional<std::string>& url, const std::optional<std::string>& sourceApplication,
               const std::optional<std::string>& annotation);

  // Fetches the list every so many seconds while the window is to be seen; absent: as the stored settings
  // say.
  void refreshEvery(std::optional<double> seconds);
  // From now on asks whether to start anew when the settings name another server than the one in use.
  void onRestart(std::function<void()> restart);

  QQuickView& window() { return *window_; }
  RVMainViewController& mainViewController() { return *mainViewController_; }
  RVFilterBarController& filterBarController() { return *filterBarController_; }
  RVTorrentListController& torrentListController() { return *torrentListController_; }
  Shortcuts& shortcuts() { return *shortcuts_; }
  // Null on a phone.
  RVTorrentDetailController* torrentInfoViewController() { return torrentInfoViewController_.get(); }

 private:
  void makeWindow();
  void makeControllers();
  void stackViews();
  void applySystemVersion();
  void wire();
  void orderKeys(const std::vector<QQuickItem*>& views);
  void makeShortcuts();
  void loadHiddenViewsLater();
  void afterNextFrame(void (RVAppDelegate::*step)());
  void loadFrontView();
  void loadDetailView();
  void slideAside();
  void placeViews();
  QQuickItem* load(const char* controllerName, QObject& controller, QQuickItem* parent);
  void keepLandscapeShape();
  void showPanel(RVSettingsViewController& panel);
  void dropPanel();
  bool isWindowSeen() const;

  RVSettingsStore& store_;
  // The controllers outlive the window, whose layouts are bound to them.
  std::unique_ptr<RVMainViewController> mainViewController_;
  std::unique_ptr<RVFilterBarController> filterBarController_;
  std::unique_ptr<RVTorrentListController> torrentListController_;
  std::unique_ptr<RVTorrentDetailController> torrentInfoViewController_;
  std::unique_ptr<SessionWatcher> sessionWatcher_;
  std::unique_ptr<ListRefresher> listRefresher_;
  std::unique_ptr<ServerChange> serverChange_;
  std::unique_ptr<Shortcuts> shortcuts_;
  std::unique_ptr<QQuickView> window_;
  std::optional<platform::LayoutLoader> layouts_;
  RootView* rootView_ = nullptr;
  QQuickItem* mainView_ = nullptr;
  QQuickItem* rightBarView_ = nullptr;
  QQuickItem* frontView_ = nullptr;
  bool wantsDetailView_ = false;
  std::unique_ptr<QQuickItem> panelView_;
  RVSettingsViewController* panel_ = nullptr;
};

}  // namespace seedmote
