// How the torrent list slides aside, and home again.
#include "platform/core/Log.h"
#include "platform/core/Services.h"
#include "screens/RVTorrentListController.h"

namespace seedmote {

using platform::log;
using platform::SwipeDirection;

namespace {

constexpr double kSlideSeconds = 1.0;
constexpr double kAside = 200;

double home() {
  return platform::services().device.userInterfaceIdiom() == platform::Idiom::phone ? 0 : 50;
}

}  // namespace

void RVTorrentListController::addGesture() {
  for (const SwipeDirection direction : {SwipeDirection::left, SwipeDirection::right}) {
    gestures_.addSwipe(direction, [this](SwipeDirection made) { handleSwipeFrom(made); });
  }
}

void RVTorrentListController::handleSwipeFrom(SwipeDirection direction) {
  if (direction == SwipeDirection::left) {
    log("left");
    slideTo(home());
    removeTapGesture();
  }
  if (direction == SwipeDirection::right) {
    log("right");
    slideTo(kAside);
    addTapGesture();
  }
}

void RVTorrentListController::slideTo(double x) {
  platform::ViewGeometry::animate(kSlideSeconds, [&] { view_.setTranslation({x, 0}); });
}

void RVTorrentListController::addTapGesture() {
  if (!gestures_.hasTap()) {
    gestures_.addTap([this] { handleSingleTap(); });
  }
}

void RVTorrentListController::handleSingleTap() {
  log("single tap\n");
  slideTo(home());
  removeTapGesture();
}

void RVTorrentListController::removeTapGesture() {
  log("Remove a gesture\n");
  if (!gestures_.hasTap()) {
    log("Removing a null gesture\n");
    return;
  }
  gestures_.removeTap();
}

void RVTorrentListController::showFilterAtStartup() {
  log("showFilterAtStartup");
  slideTo(0);
}

}  // namespace seedmote
