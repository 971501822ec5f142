#include "client/TorrentListing.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "platform/core/Log.h"

namespace seedmote {

namespace {

constexpr int kDoubts = 5;  // how often an empty list is looked at again: time to load 100,000 torrents

// Of all clients: rows of the one before may be on the screen yet.
std::uint64_t nextDeal() {
  static std::atomic<std::uint64_t> deals = 0;
  return ++deals;
}

// Whether a selection from another session still means the torrent that stands under its id now.
bool isStillMeant(const TorrentSelection& selection, const TorrentSelection& now) {
  return selection.known && now.known && now.known->isSameTorrent(*selection.known) && !selection.twin &&
         !now.twin;
}

}  // namespace

TorrentListing::Listed TorrentListing::listed() const {
  const std::lock_guard lock(torrentListLock_);
  return list_;
}

// A long table asks for these row by row: nothing is copied that is not asked for.

json::Value TorrentListing::torrents() const {
  const std::lock_guard lock(torrentListLock_);
  return list_.torrents;
}

TorrentListing::SessionID TorrentListing::session() const {
  const std::lock_guard lock(torrentListLock_);
  return list_.session;
}

std::uint64_t TorrentListing::version() const {
  const std::lock_guard lock(torrentListLock_);
  return list_.version;
}

std::uint64_t TorrentListing::deal() const {
  const std::lock_guard lock(torrentListLock_);
  return list_.deal;
}

bool TorrentListing::isOf(const SessionID& session, std::size_t text) const {
  const std::lock_guard lock(torrentListLock_);
  return list_.text == text && list_.session == session;
}

bool TorrentListing::isDoubtful() const {
  const std::lock_guard lock(torrentListLock_);
  return list_.doubts > 0;
}

void TorrentListing::lookAgain() {
  const std::lock_guard lock(torrentListLock_);
  list_.doubts = std::max(0, list_.doubts - 1);
}

std::int64_t TorrentListing::selectedID() const {
  const std::lock_guard lock(torrentListLock_);
  return selection_.id;
}

void TorrentListing::replace(json::Value torrents) {
  const std::lock_guard lock(torrentListLock_);
  std::swap(list_.torrents, torrents);  // the old list goes after the lock
  list_.text.reset();
  ++list_.version;
}

// The search through a long list happens outside the lock, and again when the selection has changed
// meanwhile.
bool TorrentListing::store(const json::Value& torrents, const SessionID& session,
                           std::optional<std::uint64_t> onlyAfter, std::optional<std::size_t> text) {
  json::Value old = torrents;
  while (true) {
    const std::int64_t id = selectedID();
    const TorrentSelection now = find(torrents, session, id);
    const std::lock_guard lock(torrentListLock_);
    if (onlyAfter && list_.version != *onlyAfter) {
      return false;
    }
    if (selection_.id != id) {
      continue;
    }
    const bool anotherSession = selection_.session && selection_.session != session;
    if (id != kNoTorrentID && anotherSession && !isStillMeant(selection_, now)) {
      platform::log("The daemon's new session has another torrent under the selected id %ld, or none\n", id);
      selection_ = {};
      ++selectionNumber_;
    } else if (now.known) {
      const std::string hash = selection_.known ? selection_.known->hash : "";
      selection_ = now;
      selection_.known->hash = hash;
    }
    std::swap(list_.torrents, old);
    list_.doubts = torrents->count() == 0 && list_.deal != 0 && list_.session != session ? kDoubts : 0;
    if (list_.deal == 0 || list_.session != session) {
      list_.deal = nextDeal();
    }
    list_.session = session;
    list_.text = text;
    ++list_.version;
    return true;
  }
}

TorrentSelection TorrentListing::find(const json::Value& torrents, const SessionID& session,
                                      std::int64_t id) {
  TorrentSelection found{id, session, std::nullopt};
  const json::ValueRef torrent = id == kNoTorrentID ? json::ValueRef() : torrentWithID(torrents, id);
  if (!torrent.isAbsent()) {
    found.known = TorrentIdentity::of(torrent);
    found.twin = hasTwin(torrents, *found.known);
  }
  return found;
}

TorrentSelection TorrentListing::find(std::int64_t id) const {
  const Listed list = listed();
  return find(list.torrents, list.session, id);
}

void TorrentListing::select(std::int64_t id) {
  while (true) {
    const Listed list = listed();
    TorrentSelection found = find(list.torrents, list.session, id);
    const std::lock_guard lock(torrentListLock_);
    if (list_.version == list.version) {
      selection_ = std::move(found);
      ++selectionNumber_;
      return;
    }
  }
}

bool TorrentListing::select(const TorrentIdentity& shown, std::uint64_t deal) {
  while (true) {
    const Listed list = listed();
    TorrentSelection found = find(list.torrents, list.session, shown.id);
    const std::lock_guard lock(torrentListLock_);
    if (list_.version != list.version) {
      continue;
    }
    const bool canBeTold = !found.twin || list.deal == deal;
    if (shown.id != kNoTorrentID && !(found.known && found.known->isSameTorrent(shown) && canBeTold)) {
      return false;
    }
    selection_ = std::move(found);
    ++selectionNumber_;
    return true;
  }
}

// Details of another session than the list's may be another torrent's.
void TorrentListing::learn(const TorrentIdentity& details, const SessionID& session) {
  const std::lock_guard lock(torrentListLock_);
  const bool isSelected = selection_.known && selection_.id == details.id && selection_.session == session;
  if (isSelected && !details.hash.empty() && selection_.known->isSameTorrent(details)) {
    selection_.known->hash = details.hash;
  }
}

TorrentSelection TorrentListing::selection() const {
  const std::lock_guard lock(torrentListLock_);
  return selection_;
}

std::uint64_t TorrentListing::selectionNumber() const {
  const std::lock_guard lock(torrentListLock_);
  return selectionNumber_;
}

}  // namespace seedmote
