#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "client/_RVTrans.h"

namespace seedmote {

// The client as screens see it: class-level operations over the one _RVTrans of the process.
//
// Operations that begin with init() start another connection attempt while the client is not connected.
// Synchronous requests block their caller for up to the time-out; any thread may call.
class RVTrans final {
 public:
  RVTrans() = delete;

  // Makes the client on first use; while it is not connected, starts a connection attempt.
  static void init();

  // -1 while not connected, or not yet known.
  static std::int32_t getRPCVersion();
  // Absent while not connected.
  static std::optional<std::string> getDaemonVersion();
  // Fetches the statistics. The one record of the client, newest values; absent while not connected, and when
  // nothing was fetched for want of a session id.
  static std::shared_ptr<RVSessionStatus> getSessionStatus();

  // Starts or stops the selected torrent; nothing while not connected.
  static void startTorrent(bool on);
  // Removes the selected torrent and its data in the background, and clears the selection at once; nothing
  // while not connected.
  static void deleteTorrent();
  // These begin with init(). The daemon's answer with "statuscode", the HTTP status as text; absent while not
  // connected. See _RVTrans.
  static json::Value addTorrentFile(const std::string& file);
  static json::Value addTorrentURL(const std::string& link);
  static json::Value addTorrentData(const std::optional<std::string>& contents);

  // For what was handed to the program, beside the above; see _RVTrans. While not connected no add was sent,
  // which has the status "0".
  static AddOutcome addQuietly(std::string_view contents);
  static std::optional<AddOutcome> takeLatestAdd();
  static bool isReachable();

  // Begins with init(). An array of dictionaries with the fields of the list query.
  static json::Value getTorrentList();
  // Begins with init(). Does nothing while not connected, or while an update is under way.
  static void updateAllTorrents();
  static bool isUpdating();
  static bool isConnected();
  // An attempt to connect is under way, also while it fetches the first list.
  static bool isConnecting();
  // True once after each update.
  static bool isNewData();
  // Begins with init(). The selected torrent's details; absent while not connected. Raises
  // std::out_of_range when the daemon does not know the torrent.
  static std::shared_ptr<RVTorrentInfo> getTorrentInfo();

  // A torrent's id; -1 for none.
  static void selectTorrent(std::int64_t torrent);
  // Selects the torrent that a row shows, from a list of that deal of ids. False, and nothing is selected,
  // when the client's list has another torrent under its id by now, or may have.
  static bool selectTorrent(const TorrentIdentity& shown, std::uint64_t deal);
  // Of the ids of the list, to be asked before it: the daemon deals them anew at each of its starts.
  static std::uint64_t torrentDeal();
  static std::int64_t getTorrentSelection();
  // Another one after each act of selecting, be it the same torrent or none; see TorrentListing.
  static std::uint64_t torrentSelectionNumber();

  // Fetches the list behind the user's back; see _RVTrans.
  static void fetchTorrentList();
  // Whether the client must catch up with the daemon, and doing so; see _RVTrans.
  static bool isOutOfStep();
  static void catchUp();
  static bool isListDoubtful();

  // The daemon that the client uses; absent before the first attempt to connect.
  static std::optional<RVDaemonInfo> daemonInfo();
  // What the latest attempt to connect or to fetch the list came to, for the texts that explain an empty
  // screen.
  static DaemonOutcome listOutcome();

  // Forgets the client, so that a test starts afresh. No thread may still use it.
  static void drop();
};

}  // namespace seedmote
