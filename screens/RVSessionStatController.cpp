#include "screens/RVSessionStatController.h"

#include <algorithm>
#include <memory>
#include <string>

#include "app/resources/RVResQt.h"
#include "client/RVTrans.h"
#include "client/RVUtility.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/core/Services.h"

namespace seedmote {

using platform::log;
using platform::services;
using platform::ViewGeometry;

namespace {

constexpr double kFirstSeconds = 5.0;
constexpr double kSeconds = 10.0;
constexpr double kSpeedsHeight = 64;

QString speed(std::int64_t bytes) {
  return QString::fromStdString(platform::format("%@/sec", RVUtility::changeSizeFormat(bytes)));
}

}  // namespace

RVSessionStatController::RVSessionStatController()
    : poll_(services().main, services().threads, "statistics", [this]() -> platform::BackgroundPoll::Apply {
        const std::shared_ptr<RVSessionStatus> status = RVTrans::getSessionStatus();
        if (!status) {
          return nullptr;
        }
        return [this, status] { show(*status); };
      }) {
  connect(&view_, &ViewGeometry::changed, this, &RVSessionStatController::placeSubviews);
}

QUrl RVSessionStatController::downloadIcon() {
  return imageUrl(3);
}

QUrl RVSessionStatController::uploadIcon() {
  return imageUrl(5);
}

void RVSessionStatController::placeSubviews() {
  const QSizeF size = view_.frame().size();
  const double top = std::min(kSpeedsHeight, size.height());
  sessionStatPos_.setFrame({0, top, size.width(), size.height() - top});
  sessionStatListController_.view()->setFrame(sessionStatPos_.frame());
}

void RVSessionStatController::viewDidLoad() {
  sessionStatListController_.viewDidLoad();
  placeSubviews();
  const QRectF frame = sessionStatPos_.frame();
  log("x = %f", frame.x());
  log("y = %f", frame.y());
  log("w = %f", frame.width());
  log("h = %f", frame.height());
  view_.setBackgroundColor(colorOf(32));
  firstTimer_ =
      services().timers.once("updateSessionStauts", kFirstSeconds, [this] { updateSessionStauts(); });
  timer_ = services().timers.repeat("updateSessionStauts", kSeconds, [this] { updateSessionStauts(); });
  log("Session Stat view is loaded.\n");
}

void RVSessionStatController::show(const RVSessionStatus& status) {
  uploadSpeed_ = speed(status.uploadSpeed);
  downloadSpeed_ = speed(status.downloadSpeed);
  Q_EMIT speedsChanged();
  sessionStatListController_.updateSessionStauts(status);
  log("updateSessionStauts");
}

}  // namespace seedmote
