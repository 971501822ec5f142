// How torrents are added: by a pull that offers the copied link, and from outside.
#include <QPointer>
#include <algorithm>

#include "client/PercentEscapes.h"
#include "client/RVTrans.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/core/Threads.h"
#include "platform/ui/Alerts.h"
#include "platform/ui/Pasteboard.h"
#include "platform/ui/UiServices.h"
#include "screens/RVTorrentListController.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

using platform::log;
using platform::services;
using platform::uiServices;

namespace {

constexpr int kReleaseImage = 30;
constexpr int kPullImage = 31;
constexpr const char* kPull = "Pull to add a new torrent from a copied url.";
constexpr const char* kRelease = "Release to add a new torrent from a copied url.";
constexpr double kErrorSeconds = 2.0;
constexpr double kSecondsAfterFile = 3.0;  // for the daemon to take it in

double pullThreshold(bool higherBar) {
  return higherBar ? -80.0 : -60.0;
}

std::optional<std::string> entry(const json::Value& reply, const char* key) {
  const json::ValueRef value = reply[key];
  return value.isAbsent() ? std::nullopt : std::optional(value.description());
}

}  // namespace

// The pull.

void RVTorrentListController::addTorrentListPullBar() {
  REFRESH_HEADER_HEIGHT = services().device.userInterfaceIdiom() == platform::Idiom::tablet;
  toolbar_->show(kPull, kPullImage);
  toolbar_->setPressed([this] {
    if (!services().main.swallowsInput()) {  // of two presses the first has asked already
      offerCopiedTorrent();
    }
  });
  connect(&view_, &platform::ViewGeometry::changed, this, &RVTorrentListController::placePullBar);
  placePullBar();
}

// Above the first row; as wide as the list, once that has its place.
void RVTorrentListController::placePullBar() {
  const QRectF own = toolbar_->view()->frame();
  const double width = view_.frame().width() > 0 ? view_.frame().width() : own.width();
  toolbar_->view()->setFrame({0, -own.height(), width, own.height()});
}

void RVTorrentListController::setHiddenBottom(double points) {
  table_.setContentInset(table_.insetTop(), points);
}

void RVTorrentListController::scrollViewWillBeginDragging(double /*offset*/) {
  if (!isLoading_) {
    isDragging_ = true;
    log("Start dragging\n");
  }
}

void RVTorrentListController::scrollViewDidScroll(double offset) {
  const double threshold = pullThreshold(REFRESH_HEADER_HEIGHT);
  if (isLoading_ && offset > 0) {
    table_.setContentInset(0, table_.insetBottom());
  } else if (isLoading_ && offset >= threshold) {
    table_.setContentInset(-offset, table_.insetBottom());
  } else if (isDragging_ && offset < 0 && offset >= threshold) {
    toolbar_->show(kPull, kPullImage);
    log("pull to add\n");
  } else if (isDragging_ && offset < threshold) {
    toolbar_->show(kRelease, kReleaseImage);
    log("release to add\n");
  }
}

void RVTorrentListController::scrollViewDidEndDragging(double offset, bool /*willDecelerate*/) {
  if (isLoading_) {
    return;
  }
  isDragging_ = false;
  if (offset <= pullThreshold(REFRESH_HEADER_HEIGHT)) {
    log("End dragging\n");
    offerCopiedTorrent();
  }
}

void RVTorrentListController::offerCopiedTorrent() {
  const std::optional<std::string> copied = uiServices().pasteboard.string();
  if (!copied) {
    return;
  }
  log("%@\n", *copied);
  uiServices().alerts.show({.title = "Add torrent",
                            .message = platform::format("%@\n%@", "Do you want to add a torrent?", *copied),
                            .buttons = {"Cancel", "OK"},
                            .dismissed = [list = QPointer<RVTorrentListController>(this)](int button) {
                              if (list) {
                                list->didDismissWithButtonIndex(button);
                              }
                            }});
}

// What is added is what the pasteboard holds now, whatever the question showed.
void RVTorrentListController::didDismissWithButtonIndex(int button) {
  if (button == 0) {
    log("cancel");
    return;
  }
  log("ok");
  addRemoteTorrent(addingPercentEscapes(platform::format("%@", uiServices().pasteboard.string())));
}

// Adding.

void RVTorrentListController::addRemoteTorrent(const std::string& url) {
  log("Add a torrent(url) to server: %@\n", url);
  OvProgressHUD::showWithStatus("Adding torrent by url...");
  const json::Value reply = RVTrans::addTorrentURL(url);
  const std::optional<std::string> result = entry(reply, "result");
  if (result == "success") {
    table_.selectRow(table_.rowCount() - 1, true, platform::TableView::ScrollPosition::bottom);
    log("success\n");
    OvProgressHUD::dismissWithSuccess("Success!");
    return;
  }
  OvProgressHUD::dismissWithError(
      platform::format("ERROR\n%@\nerror code:%@", result, entry(reply, "statuscode")), kErrorSeconds);
  log("failed to add torrent\n");
}

void RVTorrentListController::addLocalTorrent(const std::string& file) {
  log("Add a torrent(file) to server");
  OvProgressHUD::showWithStatus("Adding torrent...");
  RVTrans::addTorrentFile(file);
  services().main.wait([] { services().threads.sleep(kSecondsAfterFile); });
  refreshAll();
  OvProgressHUD::dismissWithSuccess("Torrent is added!");
}

}  // namespace seedmote
