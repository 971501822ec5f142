#include "client/TorrentIdentity.h"

namespace seedmote {

std::int64_t torrentID(json::ValueRef id) {
  return id.exactInteger().value_or(kNoTorrentID);
}

TorrentIdentity TorrentIdentity::of(json::ValueRef torrent) {
  return {torrentID(torrent["id"]), std::string(torrent["name"].text().value_or("")),
          torrent["totalSize"].longLongValue(), std::string(torrent["hashString"].text().value_or(""))};
}

bool TorrentIdentity::isSameTorrent(const TorrentIdentity& other) const {
  return areHashesKnown(other) ? hash == other.hash : name == other.name && totalSize == other.totalSize;
}

json::ValueRef torrentWithID(json::ValueRef torrents, std::int64_t id) {
  for (const json::ValueRef torrent : torrents.elements()) {
    if (torrentID(torrent["id"]) == id) {
      return torrent;
    }
  }
  return {};
}

bool hasTwin(json::ValueRef torrents, const TorrentIdentity& torrent) {
  int same = 0;
  for (const json::ValueRef other : torrents.elements()) {
    const bool isSame = other["totalSize"].longLongValue() == torrent.totalSize &&
                        other["name"].text().value_or("") == torrent.name;
    same += isSame ? 1 : 0;
  }
  return same > 1;
}

}  // namespace seedmote
