#include <stdexcept>

#include "client/_RVTrans.h"
#include "platform/core/Log.h"

namespace seedmote {

using platform::log;

namespace {

void readDetail(json::ValueRef block, RVStatusDetail& detail) {
  detail.uploadedBytes = block["uploadedBytes"].longLongValue();
  detail.downloadedBytes = block["downloadedBytes"].longLongValue();
  detail.filesAdded = block["filesAdded"].longLongValue();
  detail.sessionCount = block["sessionCount"].longLongValue();
  detail.secondsActive = block["secondsActive"].longLongValue();
}

std::string requiredVersion(json::ValueRef arguments) {
  const auto text = arguments["version"].text();
  if (!text) {
    throw std::invalid_argument("the daemon's answer names no version");
  }
  return std::string(*text);
}

}  // namespace

void _RVTrans::getDaemonInfo() {
  getDaemonInfo({});
}

void _RVTrans::getDaemonInfo(const Sending& sending) {
  log("getDaemonInfo\n");
  const json::Value answer =
      sendCommandStringRetry("{\"method\":\"session-get\"}", sending).getResponseDict();
  const json::ValueRef arguments = answer.ref()["arguments"];
  const std::string version = requiredVersion(arguments);
  version_.set(version);

  const std::int32_t rpcVersion = arguments["rpc-version"].intValue();
  const std::int32_t rpcVersionMinimum = arguments["rpc-version-minimum"].intValue();
  std::string address;
  daemonInfo_.update([&](RVDaemonInfo& info) {
    info.rpc_version = rpcVersion;
    info.rpc_version_minimum = rpcVersionMinimum;
    address = info.ipAddress;
  });
  sessionInfo_->rpcversion = rpcVersion;
  sessionInfo_->daemonversion.set(version);
  sessionInfo_->ipaddress.set(address);
  sessionInfo_->dirty = true;
  log("version = %@\n", version);
  log("rpc-version = %ld\n", rpcVersion);
  log("rpc-version-minimum = %ld\n", rpcVersionMinimum);
}

void _RVTrans::getSessionStats() {
  RVSessionStatus& session = *sessionInfo_;
  if (session.sessionID.get() == "") {
    log("Tried to get stats, but session is is empty!!!");
    return;
  }
  const json::Value answer = sendCommandStringRetry("{\"method\":\"session-stats\"}").getResponseDict();
  log("%@", answer.isAbsent() ? std::nullopt : std::optional(answer.ref().description()));
  session.dirty = true;
  const json::ValueRef arguments = answer.ref()["arguments"];
  session.downloadSpeed = arguments["downloadSpeed"].longLongValue();
  session.uploadSpeed = arguments["uploadSpeed"].longLongValue();
  session.torrentCount = arguments["torrentCount"].longLongValue();
  session.activeTorrentCount = arguments["activeTorrentCount"].longLongValue();
  session.pausedTorrentCount = arguments["pausedTorrentCount"].longLongValue();
  readDetail(arguments["cumulative-stats"], *session.cumStats);
  readDetail(arguments["current-stats"], *session.curStats);
}

}  // namespace seedmote
