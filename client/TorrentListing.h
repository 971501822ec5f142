#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

#include "client/TorrentIdentity.h"
#include "json/Value.h"

namespace seedmote {

// What is selected, and what was known of it when it was.
struct TorrentSelection {
  std::int64_t id = kNoTorrentID;
  std::optional<std::string> session;  // under which the list of that moment was fetched; absent without one
  std::optional<TorrentIdentity> known;  // absent for a torrent that was not in that list
  bool twin = false;                     // another one of that list has the same name and size
};

// The torrent list, the session id under which it was fetched, and the selection, which is a place in that
// list: they change together, behind one lock. Thread-safe.
class TorrentListing final {
 public:
  using SessionID = std::optional<std::string>;

  // An array; absent before the first list, and after an update that failed.
  json::Value torrents() const;
  // Of the newest list that came, also when an update has failed since.
  SessionID session() const;
  // Counts the changes of the list.
  std::uint64_t version() const;
  // Tells the list's ids from those of every other session, which may mean other torrents.
  std::uint64_t deal() const;

  // Whether this is the very list that an answer of this text (its hash) brought under `session`.
  bool isOf(const SessionID& session, std::size_t text) const;

  // An empty list of a new session: a daemon that has just started answers before it has loaded its torrents.
  // So until it was looked at again a few times.
  bool isDoubtful() const;
  void lookAgain();

  // A list that is none of the daemon's: an empty one, or an absent one.
  void replace(json::Value torrents);
  // A list that was fetched under `session`. A selection from another session is cleared unless the torrent
  // is still there under its id, with the same name and size, which no other one has. With `onlyAfter`, does
  // nothing and answers false when the list has changed since that version. `text`: the hash of the answer's
  // text.
  bool store(const json::Value& torrents, const SessionID& session,
             std::optional<std::uint64_t> onlyAfter = std::nullopt,
             std::optional<std::size_t> text = std::nullopt);

  // kNoTorrentID for none.
  void select(std::int64_t id);
  // Selects what a row shows, from a list of that deal of ids. Answers false, and selects nothing, when the
  // list has another torrent under that id by now, or may have.
  bool select(const TorrentIdentity& shown, std::uint64_t deal);
  // What the selected torrent's details say of it, which were fetched under `session`.
  void learn(const TorrentIdentity& details, const SessionID& session);
  std::int64_t selectedID() const;
  TorrentSelection selection() const;
  // Counts the acts of selecting, and of clearing the selection.
  std::uint64_t selectionNumber() const;
  // The selection that `id` would be now.
  TorrentSelection find(std::int64_t id) const;

 private:
  struct Listed {
    json::Value torrents;
    SessionID session;
    std::optional<std::size_t> text;
    std::uint64_t version = 0;
    std::uint64_t deal = 0;
    int doubts = 0;
  };
  Listed listed() const;
  static TorrentSelection find(const json::Value& torrents, const SessionID& session, std::int64_t id);

  mutable std::mutex torrentListLock_;
  Listed list_;
  TorrentSelection selection_;
  std::uint64_t selectionNumber_ = 0;
};

}  // namespace seedmote
