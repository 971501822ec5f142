#include "client/RemovalGuard.h"

#include <utility>

namespace seedmote {

RemovalGuard::RemovalGuard(std::int64_t torrent, std::optional<TorrentIdentity> meant,
                           std::optional<std::string> listed, Ask ask)
    : torrent_(torrent),
      meant_(std::move(meant)),
      listed_(meant_ ? meant_->session : std::move(listed)),
      ask_(std::move(ask)) {}

bool RemovalGuard::maySend(const std::optional<std::string>& session) {
  const bool sameSession = !listed_ || session == listed_;
  verdict_ = torrent_ == kNoTorrentID || sameSession ? Verdict::send : judge(ask_());
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
  const TorrentIdentity found = TorrentIdentity::of(torrents.at(0), std::nullopt);
  return !meant_ || found.isSameTorrent(*meant_) ? Verdict::send : Verdict::anotherTorrent;
}

}  // namespace seedmote
