#include "client/RVTrans.h"

#include <mutex>

#include "platform/core/Log.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

namespace {

std::atomic<_RVTrans*> _trans{nullptr};

// The one client, made on first use.
_RVTrans& client() {
  _RVTrans* current = _trans.load(std::memory_order_acquire);
  if (current != nullptr) {
    return *current;
  }
  static std::mutex making;
  const std::lock_guard lock(making);
  current = _trans.load(std::memory_order_acquire);
  if (current == nullptr) {
    current = new _RVTrans;
    _trans.store(current, std::memory_order_release);
  }
  return *current;
}

}  // namespace

void RVTrans::init() {
  _RVTrans& trans = client();
  if (!trans.isConnected()) {
    platform::log("try to connect********\n");
    trans.connectDaemonAsynch();
  }
}

std::int32_t RVTrans::getRPCVersion() {
  return isConnected() ? client().rpc_version() : -1;
}

std::optional<std::string> RVTrans::getDaemonVersion() {
  return isConnected() ? client().sessionInfo()->daemonversion.get() : std::nullopt;
}

std::shared_ptr<RVSessionStatus> RVTrans::getSessionStatus() {
  if (!isConnected()) {
    return nullptr;
  }
  client().getSessionStats();
  const std::shared_ptr<RVSessionStatus>& session = client().sessionInfo();
  return session->dirty.exchange(false) ? session : nullptr;
}

void RVTrans::startTorrent(bool on) {
  if (isConnected()) {
    client().startTorrent(client().selectedidx(), on);
  }
}

void RVTrans::deleteTorrent() {
  if (isConnected()) {
    client().deleteTorrentAsynch(client().selection());
    client().clearSelection();
  }
}

json::Value RVTrans::addTorrentFile(const std::string& file) {
  init();
  return isConnected() ? client().addTorrentFile(file) : json::Value();
}

json::Value RVTrans::addTorrentURL(const std::string& link) {
  init();
  return isConnected() ? client().addTorrentURL(link) : json::Value();
}

json::Value RVTrans::addTorrentData(const std::optional<std::string>& contents) {
  init();
  return isConnected() ? client().addTorrentData(contents) : json::Value();
}

AddOutcome RVTrans::addQuietly(std::string_view contents) {
  return isConnected() ? client().addQuietly(contents) : AddOutcome();
}

std::optional<AddOutcome> RVTrans::takeLatestAdd() {
  return _trans != nullptr ? client().takeLatestAdd() : std::nullopt;
}

bool RVTrans::isReachable() {
  return _trans != nullptr && client().isReachable();
}

json::Value RVTrans::getTorrentList() {
  init();
  return client().getTorrentList();
}

void RVTrans::updateAllTorrents() {
  init();
  if (isConnected() && !isUpdating()) {
    OvProgressHUD::showWithStatus("Updating...");
    client().updateAllTorrents();
    OvProgressHUD::dismissWithSuccess("Updated!");
  }
}

bool RVTrans::isUpdating() {
  return _trans != nullptr && client().isUpdating();
}

bool RVTrans::isConnected() {
  return _trans != nullptr && client().isConnected();
}

bool RVTrans::isConnecting() {
  return _trans != nullptr && client().isConnecting();
}

bool RVTrans::isNewData() {
  return _trans != nullptr && client().isNewData();
}

std::shared_ptr<RVTorrentInfo> RVTrans::getTorrentInfo() {
  init();
  return isConnected() ? client().getTorrentInfo(client().selectedidx()) : nullptr;
}

void RVTrans::selectTorrent(std::int64_t torrent) {
  client().setSelectedidx(torrent);
}

bool RVTrans::selectTorrent(const TorrentIdentity& shown, std::uint64_t deal) {
  return client().select(shown, deal);
}

std::uint64_t RVTrans::torrentDeal() {
  return _trans != nullptr ? client().torrentDeal() : 0;
}

std::int64_t RVTrans::getTorrentSelection() {
  return _trans != nullptr ? client().selectedidx() : _RVTrans::kNoSelection;
}

std::uint64_t RVTrans::torrentSelectionNumber() {
  return _trans != nullptr ? client().selectionNumber() : 0;
}

void RVTrans::fetchTorrentList() {
  if (isConnected()) {
    client().fetchTorrentList();
  }
}

bool RVTrans::isOutOfStep() {
  return _trans != nullptr && client().isOutOfStep();
}

void RVTrans::catchUp() {
  if (isConnected()) {
    client().catchUp();
  }
}

bool RVTrans::isListDoubtful() {
  return _trans != nullptr && client().isListDoubtful();
}

std::optional<RVDaemonInfo> RVTrans::daemonInfo() {
  return _trans != nullptr ? std::optional(client().daemonInfo()) : std::nullopt;
}

DaemonOutcome RVTrans::listOutcome() {
  return _trans != nullptr ? client().listOutcome() : DaemonOutcome();
}

void RVTrans::drop() {
  delete _trans.exchange(nullptr);
}

}  // namespace seedmote
