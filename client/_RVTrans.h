#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "client/AddOutcome.h"
#include "client/DaemonOutcome.h"
#include "client/RVDaemonInfo.h"
#include "client/RVSOAPRequest.h"
#include "client/RVSOAPResult.h"
#include "client/RVSessionStatus.h"
#include "client/RVTorrentInfo.h"
#include "client/TorrentListing.h"
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

  static constexpr std::int64_t kNoSelection = kNoTorrentID;

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
  bool isConnecting() const { return connecting_ > 0; }

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
  bool isUpdating() const { return bUpdating_ != Updating::no; }
  // True once after each update.
  bool isNewData() { return bNewData_.exchange(false); }

  // Fetches the list behind the user's back: shows nothing, marks no update as under way, and leaves the list
  // as it was, without new data, when no other one came.
  void fetchTorrentList();
  // True for a connected client whose list comes from another session of the daemon than the present one,
  // that knows no session id, or that does not know the daemon's versions, while nothing is under way that
  // would change that.
  bool isOutOfStep() const;
  // Makes that good, also behind the user's back. Raises as getDaemonInfo.
  void catchUp();
  // Whether the list is empty because it came too early, maybe: to be made good soon. See TorrentListing.
  bool isListDoubtful() const { return listing_.isDoubtful(); }

  // The selected torrent's id; kNoSelection for none. See TorrentListing.
  std::int64_t selectedidx() const { return listing_.selectedID(); }
  void setSelectedidx(std::int64_t torrent) { listing_.select(torrent); }
  // What a row shows; false when the list has another torrent there by now.
  bool select(const TorrentIdentity& shown, std::uint64_t deal) { return listing_.select(shown, deal); }
  std::uint64_t torrentDeal() const { return listing_.deal(); }
  TorrentSelection selection() const { return listing_.selection(); }
  std::uint64_t selectionNumber() const { return listing_.selectionNumber(); }
  void clearSelection() { setSelectedidx(kNoSelection); }

  // Commands. They act on one torrent, by the daemon's id; -1 is sent as it is. Each raises
  // std::out_of_range when a 409 names no session id.

  // Starts or stops the selected torrent.
  void startTorrent(bool on);
  void startTorrent(std::int64_t torrent, bool on);
  // Shows a message and removes the torrent on a thread of its own.
  void deleteTorrentAsynch(std::int64_t torrent);
  void deleteTorrentAsynch(const TorrentSelection& meant);
  // Removes the torrent and its data, fetches the list and ends the message. See RemovalGuard for when it is
  // not sent.
  void deleteTorrent(std::int64_t torrent);
  // The daemon's answer with "statuscode", the HTTP status as text. An absent content is sent as an empty
  // one.
  json::Value addTorrentData(const std::optional<std::string>& contents);
  // From a "file:" URL or a path. A file that can't be read is sent as an empty one.
  json::Value addTorrentFile(const std::string& file);
  // The daemon fetches the link itself.
  json::Value addTorrentURL(const std::string& link);

  // Adds a torrent behind the user's back: shows nothing.
  AddOutcome addQuietly(std::string_view contents);
  // What came of the latest of the other adds; absent when there was none since it was last asked for.
  std::optional<AddOutcome> takeLatestAdd();
  // Whether the daemon of the stored settings, or the one connected to, answers now; shows nothing, blocks.
  bool isReachable();

  const std::shared_ptr<RVSessionStatus>& sessionInfo() const { return sessionInfo_; }
  RVDaemonInfo daemonInfo() const { return daemonInfo_.get(); }
  std::int32_t rpc_version() const {
    return daemonInfo_.read([](const RVDaemonInfo& info) { return info.rpc_version; });
  }
  std::string version() const { return version_.get(); }
  // What the latest attempt to connect or to fetch the list came to.
  DaemonOutcome listOutcome() const { return listOutcome_.get(); }

 private:
  enum class Updating { no, underWay, leftStanding };

  // How one request is sent.
  struct Sending {
    bool counts = true;  // shows the seconds that are left
    // Whether it may go out under a session id; null: always.
    std::function<bool(const SessionID&)> may = nullptr;
    // Told the last answer, and whether it is one to the request sent again; null: nobody asks.
    std::function<void(const RVSOAPResult&, bool)> settled = nullptr;
  };

  void initTransmission();
  RVSOAPResult sendCommand(const RVSOAPRequest& request, const Sending& sending);
  RVSOAPResult sendCommandStringRetry(const std::string& soapMessage, const Sending& sending);
  RVSOAPResult send(const std::string& soapMessage, double timeoutInterval, const Sending& sending);
  // How often the text was sent again.
  int resend(const std::string& soapMessage, std::optional<std::string> body, const Sending& sending);
  RVSOAPResult exchangeOnce(const std::string& soapMessage, double timeoutInterval, const SessionID& session,
                            bool counts);
  RVSOAPResult exchange(const platform::HttpRequest& request, bool counts);
  // Shows the seconds that are left, once a second, until this exchange is over or none is in flight.
  void countdownTimeout(float seconds, const std::atomic<bool>& over) const;
  std::int64_t becomeConnected(const std::optional<std::string>& body);
  std::int64_t failToConnect(const std::optional<std::string>& body);
  // Runs an exchange of the hand-shake or of the list; what is raised there is told as its outcome, too.
  RVSOAPResult noteOutcome(const std::function<RVSOAPResult()>& exchange);
  // Keeps the list that an answer brings; false when it brings none.
  bool takeTorrentList(const RVSOAPResult& result, std::optional<std::uint64_t> onlyAfter = std::nullopt);
  bool isListOutdated() const;
  void getDaemonInfo(const Sending& sending);
  TorrentSelection meaningOf(std::int64_t torrent) const;
  void removeTorrent(const TorrentSelection& meant);
  json::Value askForTorrent(std::int64_t torrent);
  json::Value addTorrent(const RVSOAPRequest& request);
  RVSOAPResult sendAdd(const RVSOAPRequest& request, bool counts, AddOutcome& outcome);

  platform::Shared<RVDaemonInfo> daemonInfo_;
  std::shared_ptr<RVSessionStatus> sessionInfo_;
  platform::Shared<std::string> version_;
  TorrentListing listing_;
  platform::Shared<DaemonOutcome> listOutcome_;
  platform::Shared<std::optional<AddOutcome>> latestAdd_;
  std::atomic<bool> bConnected_{false};
  std::atomic<int> connecting_{0};  // attempts under way
  std::atomic<Updating> bUpdating_{Updating::no};
  std::atomic<bool> bNewData_{false};
  std::atomic<bool> bCountingTimeout_{false};
};

}  // namespace seedmote
