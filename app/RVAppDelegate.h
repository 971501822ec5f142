#pragma once

#include <QQuickView>
#include <memory>

#include "app/RVMainViewController.h"
#include "app/RVRightBarController.h"
#include "app/RootView.h"
#include "client/SessionWatcher.h"
#include "platform/ui/LayoutLoader.h"
#include "screens/RVTorrentListController.h"

namespace seedmote {

// Builds the window and its screens at launch and holds them for the life of the process. Main thread.
class RVAppDelegate final {
 public:
  RVAppDelegate();
  ~RVAppDelegate();
  RVAppDelegate(const RVAppDelegate&) = delete;
  RVAppDelegate& operator=(const RVAppDelegate&) = delete;

  // Always true. Raises std::runtime_error when a layout can't be used.
  bool didFinishLaunchingWithOptions();

  QQuickView& window() { return *window_; }
  RVTorrentListController& torrentListController() { return *torrentListController_; }

 private:
  void makeWindow();
  void applySystemVersion();

  // The controllers outlive the window, whose layouts are bound to them.
  std::unique_ptr<RVMainViewController> mainViewController_;
  std::unique_ptr<RVTorrentListController> torrentListController_;
  std::unique_ptr<RVRightBarController> rightBarViewController_;
  std::unique_ptr<SessionWatcher> sessionWatcher_;
  std::unique_ptr<QQuickView> window_;
};

}  // namespace seedmote
