#pragma once

#include <cstdint>
#include <string>

#include "json/Value.h"

namespace seedmote {

constexpr std::int64_t kNoTorrentID = -1;

// A torrent's id as the daemon sent it. What is not exactly an integer (2.5, 5.0, 1e400, true, a text,
// nothing) is kNoTorrentID: the daemon takes a bare 5.0 for every torrent it has.
std::int64_t torrentID(json::ValueRef id);

// By what one torrent is told from another. The daemon deals its ids anew at each of its starts.
struct TorrentIdentity {
  std::int64_t id = kNoTorrentID;
  std::string name;
  std::int64_t totalSize = 0;  // bytes
  std::string hash = {};       // its "hashString"; empty while unknown: lists have none, details do

  // From one entry of a "torrents" answer.
  static TorrentIdentity of(json::ValueRef torrent);

  // The same hash where both are known, else the same name and size; whatever the ids.
  bool isSameTorrent(const TorrentIdentity& other) const;
  bool areHashesKnown(const TorrentIdentity& other) const { return !hash.empty() && !other.hash.empty(); }
};

// The entry of a torrent in a "torrents" array; absent when it is not there.
json::ValueRef torrentWithID(json::ValueRef torrents, std::int64_t id);

// Whether two torrents or more of a "torrents" array have this name and size, so that nobody can tell which
// of them had which id before the ids were dealt anew.
bool hasTwin(json::ValueRef torrents, const TorrentIdentity& torrent);

}  // namespace seedmote
