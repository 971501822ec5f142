#pragma once

#include <mutex>
#include <string>

#include "tests/support/HttpMessages.h"

namespace seedmote::support {

// Answers as the real daemon does, without any torrents behind it: whitelist, login, session id, then one
// text for each method. Thread-safe.
class DaemonModel final {
 public:
  DaemonModel();

  Reply reply(const RecordedRequest& request);

  std::string sessionId() const;
  void setSessionId(std::string id);
  void changeSessionId();  // as every hour and at each restart

  // "user:password"; empty switches authentication off. The 101st failed login locks everybody out.
  void setCredentials(std::string credentials);
  void setWhitelisted(bool whitelisted);

  // The whole JSON texts; a "torrent-get" with "ids" is answered with the detail.
  void setStats(std::string json);
  void setSession(std::string json);
  void setTorrents(std::string json);
  void setDetail(std::string json);

 private:
  bool loggedIn(const RecordedRequest& request);
  Reply refusal() const;
  std::string jsonFor(const std::string& body) const;

  mutable std::mutex mutex_;
  std::string sessionId_;
  int sessions_ = 0;
  std::string credentials_;
  int failedLogins_ = 0;
  bool whitelisted_ = true;
  std::string stats_;
  std::string session_;
  std::string torrents_;
  std::string detail_;
};

}  // namespace seedmote::support
