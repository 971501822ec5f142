#include "tests/support/DaemonModel.h"

#include <string_view>

#include "tests/support/DaemonTexts.h"
#include "tests/support/Encodings.h"
#include "tests/support/Replies.h"

namespace seedmote::support {
namespace {

std::string makeSessionId(int number) {  // 48 letters and digits, another one each time
  std::string id = "SessionNumber" + std::to_string(number) + "x";
  while (id.size() < 48) {
    id += static_cast<char>('A' + (id.size() * 7 + static_cast<std::size_t>(number)) % 26);
  }
  return id;
}

// The text after `"method"` and a colon; empty when there is none.
std::string_view methodOf(std::string_view body) {
  const std::size_t key = body.find("\"method\"");
  const std::size_t open = key == std::string_view::npos ? key : body.find('"', body.find(':', key));
  if (open == std::string_view::npos) {
    return {};
  }
  const std::size_t close = body.find('"', open + 1);
  return body.substr(open + 1, close == std::string_view::npos ? 0 : close - open - 1);
}

}  // namespace

DaemonModel::DaemonModel()
    : sessionId_(makeSessionId(0)),
      stats_(texts::kStats),
      torrents_(texts::kNoTorrents),
      detail_(texts::kNoTorrents) {}

Reply DaemonModel::reply(const RecordedRequest& request) {
  const std::lock_guard lock(mutex_);
  if (!loggedIn(request)) {
    return replies::unauthorized(failedLogins_);
  }
  if (request.header("X-Transmission-Session-Id") != sessionId_) {
    return replies::conflict(sessionId_);
  }
  const std::string json = jsonFor(request.body);
  const bool pack = request.header("Accept-Encoding").value_or("").find("gzip") != std::string::npos;
  return pack ? replies::gzippedJson(json) : replies::json(json);
}

bool DaemonModel::loggedIn(const RecordedRequest& request) {
  if (credentials_.empty()) {
    return true;
  }
  if (request.header("Authorization") == "Basic " + base64(credentials_)) {
    failedLogins_ = 0;
    return true;
  }
  ++failedLogins_;
  return false;
}

std::string DaemonModel::jsonFor(const std::string& body) const {
  const std::string_view method = methodOf(body);
  if (method.empty()) {
    return std::string(texts::kNoMethodName);
  }
  if (method == "session-stats") {
    return stats_;
  }
  if (method == "session-get") {
    return std::string(texts::kSession);
  }
  if (method == "torrent-get") {
    return body.find("\"ids\"") == std::string::npos ? torrents_ : detail_;
  }
  return std::string(texts::kSuccess);
}

std::string DaemonModel::sessionId() const {
  const std::lock_guard lock(mutex_);
  return sessionId_;
}

void DaemonModel::changeSessionId() {
  const std::lock_guard lock(mutex_);
  sessionId_ = makeSessionId(++sessions_);
}

void DaemonModel::assign(std::string& to, std::string text) {
  const std::lock_guard lock(mutex_);
  to = std::move(text);
}

}  // namespace seedmote::support
