#include "client/RemovalGuard.h"

#include <utility>

namespace seedmote {

RemovalGuard::RemovalGuard(TorrentSelection meant, Ask ask)
    : meant_(std::move(meant)), ask_(std::move(ask)) {}

bool RemovalGuard::maySend(const std::optional<std::string>& session) {
  if (!meant_.session) {
    meant_.session = session;
  }
  const bool needsNoAnswer = meant_.id == kNoTorrentID || session == meant_.session;
  verdict_ = needsNoAnswer ? Verdict::send : judge(ask_());
  return verdict_ == Verdict::send;
}

RemovalGuard::Verdict RemovalGuard::judge(const json::Value& answer) const {
  const json::ValueRef torrents = answer.ref()["arguments"]["torrents"];
  if (torrents.kind() != json::Kind::array) {
    return Verdict::send;
  }
  if (torrents.count() == 0) {
    return Verdict::noTorrent;
  }
  const TorrentIdentity there = TorrentIdentity::of(torrents.at(0));
  const bool canBeTold = meant_.known && (!meant_.twin || there.areHashesKnown(*meant_.known));
  const bool isMeant = canBeTold && there.isSameTorrent(*meant_.known);
  return isMeant ? Verdict::send : Verdict::anotherTorrent;
}

}  // namespace seedmote
