#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "client/DaemonOutcome.h"
#include "client/RVDaemonInfo.h"
#include "client/RVSOAPRequest.h"
#include "client/RVSOAPResult.h"
#include "client/RVSessionStatus.h"
#include "client/RVTorrentInfo.h"
#include "json/Value.h"
#include "platform/core/Shared.h"

namespace seedmote {

// The client of one Transmission daemon, over its RPC protocol (the daemon's RPC description, versions up
// to 16). Screens reach it through RVTrans only.
//
// Every operation may run on any thread. Requests block their caller for up to the time-out; on the main
// thread the window goes on painting meanwhile.
class _RVTrans final {
 public:
  using SessionID = std::optional<std::string>;

  static constexpr std::int64_t kNoSelection = -1;

  _RVTrans() { initTransmission(); }
  _RVTrans(const _RVTrans&) = delete;
  _RVTrans& operator=(const _RVTrans&) = delete;

  // Connection.

  // Re-reads the stored settings, unless a session is known and they have not changed.
  void initTransDaemonInfo();
  // Starts a connection attempt on a thread of its own. Shows its progress in the overlay.
  void connectDaemonAsynch();
  // The hand-shake; blocks. The daemon's answer with "errorcode" 0 (connected), 4 (login refused) or 5.
  json::Value connectDaemon();
  bool isConnected() const { return bConnected_; }

  // Transport.

  RVSOAPResult sendCommand(const RVSOAPRequest& request);
  // Sends the text once, with the stored time-out.
  RVSOAPResult sendCommandStringRetry(const std::string& soapMessage);
  // Seconds; 0 or less: the platform's default. A 409 is answered by sending the text again with the new
  // session id; its answer is thrown away, and the first one returned.
  RVSOAPResult sendCommandString(const std::string& soapMessage, double timeoutInterval);
  // The session id that the body of a 409 names. Absent for an absent body; raises std::out_of_range for
  // a body without one.
  SessionID getSessionID(const std::optional<std::string>& body) const;

  // Session. getDaemonInfo raises std::invalid_argument when no version came; every request raises
  // std::out_of_range when a 409 names no session id.

  void getDaemonInfo();
  void getSessionStats();

  // Torrents.

  // Fetches the list. It stays absent when the answer failed.
  void updateAllTorrents();
  // The torrents as the daemon sent them: an array of dictionaries, empty before the first update.
  json::Value getTorrentList() const;
  // Raises std::out_of_range when the daemon does not know the torrent.
  std::shared_ptr<RVTorrentInfo> getTorrentInfo(std::int64_t torrent);
  bool isUpdating() const { return bUpdating_; }
  // True once after each update.
  bool isNewData() { return bNewData_.exchange(false); }

  // The selected torrent's id; kNoSelection for none.
  std::int64_t selectedidx() const { return selectedidx_; }
  void setSelectedidx(std::int64_t torrent) { selectedidx_ = torrent; }
  void clearSelection() { selectedidx_ = kNoSelection; }

  const std::shared_ptr<RVSessionStatus>& sessionInfo() const { return sessionInfo_; }
  RVDaemonInfo daemonInfo() const { return daemonInfo_.get(); }
  std::int32_t rpc_version() const {
    return daemonInfo_.read([](const RVDaemonInfo& info) { return info.rpc_version; });
  }
  std::string version() const { return version_.get(); }
  // What the latest attempt to connect or to fetch the list came to.
  DaemonOutcome listOutcome() const { return listOutcome_.get(); }

 private:
  void initTransmission();
  RVSOAPResult exchangeOnce(const std::string& soapMessage, double timeoutInterval);
  // Shows the seconds that are left, once a second, until this exchange is over or none is in flight.
  void countdownTimeout(float seconds, const std::atomic<bool>& over) const;
  std::int64_t becomeConnected(const std::optional<std::string>& body);
  std::int64_t failToConnect(const std::optional<std::string>& body);
  void setTorrentList(json::Value list);

  platform::Shared<RVDaemonInfo> daemonInfo_;
  std::shared_ptr<RVSessionStatus> sessionInfo_;
  platform::Shared<std::string> version_;
  mutable std::mutex torrentListLock_;
  json::Value torrentList_;  // absent until the first update, and after one that failed
  platform::Shared<DaemonOutcome> listOutcome_;
  std::atomic<bool> bConnected_{false};
  std::atomic<bool> bUpdating_{false};
  std::atomic<bool> bNewData_{false};
  std::atomic<bool> bCountingTimeout_{false};
  std::atomic<std::int64_t> selectedidx_{kNoSelection};
};

}  // namespace seedmote
