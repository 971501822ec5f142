#include "tests/soak/QuietPoint.h"

#include <chrono>
#include <cmath>
#include <thread>

#include "app/ServerChange.h"
#include "client/RVTrans.h"
#include "client/RVUtility.h"
#include "client/StoredSetting.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "screens/RVTorrentListCell.h"

namespace seedmote::soak {

namespace {

DaemonKeeper::Torrents listOfClient() {
  DaemonKeeper::Torrents torrents;
  const json::Value list = RVTrans::getTorrentList();
  for (const json::ValueRef torrent : list->elements()) {
    torrents[torrentID(torrent["id"])] = std::string(torrent["name"].text().value_or(""));
  }
  return torrents;
}

bool passesFilter(json::ValueRef torrent, int filter) {
  constexpr int kAllStates = 1;
  RVTorrentListCell cell;
  cell.fill(torrent, RVUtility::changeTransStatus(torrent["status"].intValue(), RVTrans::getRPCVersion()));
  return filter == kAllStates || cell.statusID() == filter;
}

// What is wrong with the rows of the table; empty when they are those of the client's list.
std::string wrongRow(Shell& shell) {
  const json::Value list = RVTrans::getTorrentList();
  const int filter = shell.delegate().torrentListController().filterID();
  std::size_t shown = 0;
  for (const json::ValueRef torrent : list->elements()) shown += passesFilter(torrent, filter) ? 1 : 0;
  double height = 0;
  for (const platform::TableView::LiveRow& live : shell.list().liveRows()) {
    const auto row = static_cast<std::size_t>(live.row);
    height = live.height;
    if (row >= list->count() || live.cell == nullptr || live.token != torrentID(list->at(row)["id"]) ||
        live.cell->accessibleName().toStdString() != list->at(row)["name"].text() ||
        !passesFilter(list->at(row), filter)) {
      return "row " + std::to_string(row) + " shows another torrent than the list has there";
    }
  }
  const bool isAsHigh = std::abs(shell.list().contentHeight() - height * static_cast<double>(shown)) < 1;
  const bool isCounted = shell.list().rowCount() == static_cast<int>(list->count());
  return isAsHigh && isCounted && (shown == 0 || height > 0) ? "" : "the table is not as long as the list";
}

}  // namespace

std::string QuietPoint::find() {
  keeper_.now([](support::RealDaemon&) {});  // what it was about to do
  std::string wrong;
  for (int turn = 0; turn < kMostRefreshes; ++turn) {
    mendSettings();
    wrong = refresh() ? compare() : "the program does not come to rest";
    if (wrong.empty()) {
      return wrong;
    }
  }
  return wrong;
}

// Any of them may have been written over. A client that is connected keeps its login until the program is
// started anew.
void QuietPoint::mendSettings() {
  loop_.run([port = keeper_.port(), password = keeper_.password()](Shell& shell) {
    platform::services().main.enter("soak", [&shell, port, password] {
      RVSettingsStore& store = shell.store();
      store.timeoutChanged({"10"});
      store.ipaddressChanged({"127.0.0.1"});
      store.portChanged({port});
      store.usernameChanged({DaemonKeeper::kUser});
      store.passwordChanged({password});
      store.usesslChanged({"", false});
      if (RVTrans::isConnected() && ServerChange::isOther(*RVTrans::daemonInfo(), storedDaemonInfo())) {
        platform::services().main.quit();
      }
    });
  });
}

bool QuietPoint::refresh() {
  ++refreshes_;
  const bool rested = person_.comeToRest();
  loop_.run(
      [](Shell& shell) { platform::services().main.enter("soak", [&shell] { shell.bar().doRefresh(); }); });
  return rested && person_.comeToRest();
}

// The daemon is asked before and after: what the inbox adds meanwhile is nobody's fault.
std::string QuietPoint::compare() {
  DaemonKeeper::Torrents before;
  DaemonKeeper::Torrents after;
  std::string wrong;
  do {
    before = keeper_.torrents();
    wrong = "no program runs";
    loop_.run([&](Shell& shell) {
      wrong = !RVTrans::isConnected() ? "the program is not connected"
              : listOfClient() != before
                  ? "the list has " + std::to_string(listOfClient().size()) +
                        " torrents and is not the daemon's, which has " + std::to_string(before.size())
                  : wrongRow(shell);
    });
    after = keeper_.torrents();
  } while (before != after);
  return wrong;
}

}  // namespace seedmote::soak
