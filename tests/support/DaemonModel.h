#pragma once

#include <mutex>
#include <string>
#include <utility>

#include "tests/support/HttpMessages.h"

namespace seedmote::support {

// Answers as the real daemon does, without any torrents behind it: login, session id, then one text for each
// method. Thread-safe.
class DaemonModel final {
 public:
  DaemonModel();

  Reply reply(const RecordedRequest& request);

  std::string sessionId() const;
  void setSessionId(std::string id) { assign(sessionId_, std::move(id)); }
  void changeSessionId();  // as every hour and at each restart

  // "user:password"; empty switches authentication off.
  void setCredentials(std::string credentials) { assign(credentials_, std::move(credentials)); }

  // The whole JSON texts; a "torrent-get" with "ids" is answered with the detail.
  void setStats(std::string json) { assign(stats_, std::move(json)); }
  void setTorrents(std::string json) { assign(torrents_, std::move(json)); }
  void setDetail(std::string json) { assign(detail_, std::move(json)); }

 private:
  void assign(std::string& to, std::string text);
  bool loggedIn(const RecordedRequest& request);
  std::string jsonFor(const std::string& body) const;

  mutable std::mutex mutex_;
  std::string sessionId_;
  int sessions_ = 0;
  std::string credentials_;
  int failedLogins_ = 0;
  std::string stats_;
  std::string torrents_;
  std::string detail_;
};

}  // namespace seedmote::support
