#include <utility>

#include "client/_RVTrans.h"
#include "platform/core/Log.h"

namespace seedmote {

_RVTrans::SessionID _RVTrans::listSession() const {
  const std::lock_guard lock(torrentListLock_);
  return listSession_;
}

void _RVTrans::setListSession(const SessionID& session) {
  const std::lock_guard lock(torrentListLock_);
  listSession_ = session;
}

std::uint64_t _RVTrans::listsStored() const {
  const std::lock_guard lock(torrentListLock_);
  return listsStored_;
}

bool _RVTrans::isListOutdated() const {
  if (!bConnected_ || connecting_ > 0 || bUpdating_ == Updating::underWay) {
    return false;
  }
  const SessionID session = sessionInfo_->sessionID.get();
  return session == "" || session != listSession();
}

std::int64_t _RVTrans::selectedidx() const {
  return selection_.read([](const Selection& selection) { return selection.id; });
}

void _RVTrans::setSelectedidx(std::int64_t torrent) {
  selection_.set({torrent, torrent == kNoSelection ? std::nullopt : identityInList(torrent)});
}

std::optional<TorrentIdentity> _RVTrans::identityInList(std::int64_t torrent) const {
  json::Value list;
  SessionID session;
  {
    const std::lock_guard lock(torrentListLock_);
    list = torrentList_;
    session = listSession_;
  }
  const json::ValueRef found = torrentWithID(list, torrent);
  return found.isAbsent() ? std::nullopt : std::optional(TorrentIdentity::of(found, session));
}

// What is known of the selected torrent is what the user saw when it was selected.
std::optional<TorrentIdentity> _RVTrans::identityOf(std::int64_t torrent) const {
  const Selection selection = selection_.get();
  return selection.known && selection.id == torrent ? selection.known : identityInList(torrent);
}

void _RVTrans::reviewSelection(json::ValueRef torrents, const SessionID& session) {
  const std::int64_t torrent = selectedidx();
  const json::ValueRef found = torrentWithID(torrents, torrent);
  const TorrentIdentity now = TorrentIdentity::of(found, session);
  bool cleared = false;
  selection_.update([&](Selection& selection) {
    if (selection.id != torrent || !selection.known) {
      return;
    }
    const bool sameSession = selection.known->session == session;
    cleared = !sameSession && (found.isAbsent() || !now.isSameTorrent(*selection.known));
    if (cleared) {
      selection = {};
    } else if (!found.isAbsent()) {
      selection.known = now;
    }
  });
  if (cleared) {
    platform::log("The daemon's new session has another torrent under the selected id %ld\n", torrent);
  }
}

}  // namespace seedmote
