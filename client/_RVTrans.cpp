#include "client/_RVTrans.h"

#include <stdexcept>

#include "client/AnswerDictionary.h"
#include "client/StoredSetting.h"
#include "platform/core/Log.h"
#include "platform/core/Services.h"
#include "platform/core/Threads.h"
#include "platform/core/UserDefaults.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

using platform::format;
using platform::log;

namespace {

// Held against a daemon's whole body; no daemon of version 3 answers so, it puts a <p> between.
constexpr std::string_view kUnauthorized = "<h1>401: Unauthorized</h1>Unauthorized User";

constexpr std::int64_t kConnected = 0;
constexpr std::int64_t kLoginRefused = 4;
constexpr std::int64_t kNotConnected = 5;

const char* truth(bool value) {
  return value ? "TRUE" : "FALSE";
}

// Counts an attempt to connect for as long as it is under way.
class Attempt {
 public:
  explicit Attempt(std::atomic<int>& count) : count_(count) { ++count_; }
  ~Attempt() { --count_; }
  Attempt(const Attempt&) = delete;
  Attempt& operator=(const Attempt&) = delete;

 private:
  std::atomic<int>& count_;
};

std::string withAddress(std::string_view text, const RVDaemonInfo& info) {
  return format(text, info.httpprotocol, info.ipAddress);
}

}  // namespace

void _RVTrans::initTransmission() {
  log("initTransmission\n");
  sessionInfo_ = std::make_shared<RVSessionStatus>();
  clearSelection();
  log("finished initTransmission\n");
}

void _RVTrans::initTransDaemonInfo() {
  log("initTransDaemonInfo\n");
  platform::UserDefaults& defaults = platform::services().defaults;
  const bool changed = defaults.string("ServerChanged") == "YES";
  if (sessionInfo_->sessionID.get() != "" && !changed) {
    log("return from initTransDaemonInfo, because no change\n");
    return;
  }
  defaults.setObject("ServerChanged", "NO");
  defaults.synchronize();

  const RVDaemonInfo stored = storedDaemonInfo();
  log("Connecting to %@", stored.ipAddress);
  // All at once, so that no request goes to the new host with the old password.
  daemonInfo_.update([&](RVDaemonInfo& info) {
    info.ipAddress = stored.ipAddress;
    info.authorization = stored.authorization;
    info.httpprotocol = stored.httpprotocol;
  });
  log("finished initTransDaemonInfo\n");
}

void _RVTrans::connectDaemonAsynch() {
  initTransDaemonInfo();
  OvProgressHUD::showWithStatus(withAddress("Connecting to daemon\n%@://%@", daemonInfo_.get()));
  platform::services().threads.start("connection", [this] { connectDaemon(); });
}

json::Value _RVTrans::connectDaemon() {
  const Attempt attempt(connecting_);
  log("connect to daemon\n");
  const RVSOAPResult result =
      noteOutcome([this] { return sendCommandStringRetry("{\"method\":\"session-stats\"}"); });
  if (!bConnected_) {
    listOutcome_.set(result.outcome);
  }
  const json::Value answer = result.getResponseDict();
  const std::int64_t code =
      result.statuscode == "409" ? becomeConnected(result.response) : failToConnect(result.response);
  log("finished connectDaemon\n");
  return withEntry(answer, "errorcode", json::Value::integer(code));
}

RVSOAPResult _RVTrans::noteOutcome(const std::function<RVSOAPResult()>& exchange) {
  try {
    return exchange();
  } catch (const std::out_of_range& raised) {
    listOutcome_.set({DaemonCondition::notTransmission, raised.what()});
    throw;
  }
}

std::int64_t _RVTrans::becomeConnected(const std::optional<std::string>& body) {
  const SessionID session = getSessionID(body);
  sessionInfo_->sessionID.set(session);
  log("Finished connect deamon, new session id = %@\n", session);
  bConnected_ = true;
  log("bConnected = %@\n", "TRUE");
  getSessionStats();
  getDaemonInfo();
  updateAllTorrents();
  OvProgressHUD::dismissWithSuccess("Daemon is connected!");
  return kConnected;
}

std::int64_t _RVTrans::failToConnect(const std::optional<std::string>& body) {
  const bool unauthorized = body == kUnauthorized;
  if (unauthorized) {
    log("Unauthorized user error\n");
  } else {
    sessionInfo_->sessionID.set("");
    log("Failed to connect deamon\n");
  }
  log("bConnected = %@\n", truth(bConnected_));
  // A failure is shown in the style of a success, on purpose.
  OvProgressHUD::dismissWithSuccess(
      withAddress(unauthorized ? "Failed to connecting daemon!\n%@://%@\nError: Unauthorized User"
                               : "Failed to connecting daemon!\n%@://%@\nError: Timeout",
                  daemonInfo_.get()));
  return unauthorized ? kLoginRefused : kNotConnected;
}

}  // namespace seedmote
