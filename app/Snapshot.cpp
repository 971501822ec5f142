#include "app/Snapshot.h"

#include <QImage>
#include <QQuickWindow>
#include <iostream>

#include "client/RVTrans.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "screens/RVTorrentListCell.h"
#include "screens/RVTorrentListController.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

namespace {
constexpr double kLookEvery = 0.25;  // seconds
constexpr double kLimit = 60;
}  // namespace

Snapshot::Snapshot(std::string file, QQuickWindow& window, RVTorrentListController& list)
    : file_(std::move(file)), window_(window), list_(list) {
  platform::Timers& timers = platform::services().timers;
  looking_ = timers.repeat("snapshot", kLookEvery, [this] { look(); });
  limit_ = timers.once("snapshot", kLimit, [this] { end(kTooLate, "No list came within a minute."); });
}

void Snapshot::look() {
  const bool messageShown = OvProgressHUD::sharedView()->panelShown();
  if (messageShown || RVTrans::listOutcome().condition == DaemonCondition::notAsked) {
    return;
  }
  if (!RVTrans::isConnected()) {
    end(kNoDaemon, list_.emptyState().toStdString());
  } else if (standsStill()) {
    finish();
  }
}

void Snapshot::finish() {
  if (!window_.grabWindow().save(QString::fromStdString(file_), "PNG")) {
    end(kNotSaved, "The picture could not be saved as " + file_ + ".");
    return;
  }
  printRows();
  end(kShown, "");
}

bool Snapshot::standsStill() const {
  const platform::TableView& table = *list_.table();
  const auto torrents = static_cast<int>(RVTrans::getTorrentList()->count());
  return !table.isReloading() && table.rowCount() == torrents;
}

void Snapshot::printRows() const {
  for (const auto& row : list_.table()->liveRows()) {
    const auto* cell = qobject_cast<RVTorrentListCell*>(row.cell);
    if (cell != nullptr) {
      std::cout << cell->labelTorrnetName().toStdString() << "\n    "
                << cell->labelBytesInformation().toStdString() << "\n    "
                << cell->labelSpeedInformation().toStdString() << '\n';
    }
  }
  if (list_.table()->isEmpty()) {
    std::cout << list_.emptyState().toStdString() << '\n';
  }
}

void Snapshot::end(Exit code, const std::string& message) {
  looking_.stop();
  limit_.stop();
  std::cout.flush();
  if (!message.empty()) {
    std::cerr << "seedmote: " << message << '\n';
  }
  platform::services().main.quit(code);
}

}  // namespace seedmote
