#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "client/TorrentListing.h"
#include "json/Value.h"

namespace seedmote {

// Keeps a removal from hitting another torrent than the one that was meant. A new session id may mean that
// the daemon was started anew and has dealt its ids anew, and a removal that is sent again after a 409 is
// carried out. So before a removal goes out under another session id than the one under which its torrent
// was listed, the daemon is asked for the torrent's name and size, and for its hash, which the details of the
// selected torrent have told: by it two that look alike are told apart.
//
// Only what the daemon positively says stops the removal: another torrent under this id, or none.
class RemovalGuard final {
 public:
  // Asks the daemon for the torrent; returns its whole answer, absent when there was none.
  using Ask = std::function<json::Value()>;

  enum class Verdict {
    send,
    anotherTorrent,  // the id belongs to another torrent now, or to one that nobody can tell from it
    noTorrent        // the daemon no longer knows the id
  };

  // `meant` is the selection that is to be removed.
  RemovalGuard(TorrentSelection meant, Ask ask);

  // Whether the removal may go out under this session id. Without a list, the first id asked for counts as
  // the one under which the torrent was listed.
  bool maySend(const std::optional<std::string>& session);

  // What the last maySend() came to.
  Verdict verdict() const { return verdict_; }

 private:
  Verdict judge(const json::Value& answer) const;

  TorrentSelection meant_;
  Ask ask_;
  Verdict verdict_ = Verdict::send;
};

}  // namespace seedmote
