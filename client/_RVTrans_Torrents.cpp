#include <algorithm>
#include <functional>
#include <string_view>

#include "client/TorrentFields.h"
#include "client/_RVTrans.h"
#include "json/JSONRepresentation.h"
#include "platform/core/Log.h"

namespace seedmote {

using platform::log;
using platform::logRow;

namespace {

// More than any torrent has. An answer of a few packed bytes may have many more.
constexpr std::size_t kMostFiles = 1'000'000;

RVSOAPRequest torrentGet(const std::vector<std::pair<std::string, json::Value>>& arguments) {
  RVSOAPRequest request;
  request.method = "torrent-get";
  request.arguments = json::JSONRepresentation(json::Value::dictionary(arguments));
  return request;
}

// A date is read as a 32-bit number of seconds.
RVDate dateFrom(json::ValueRef value) {
  return {value.intValue()};
}

std::optional<std::string> textFrom(json::ValueRef value) {
  const auto text = value.text();
  return text ? std::optional(std::string(*text)) : std::nullopt;
}

std::vector<RVTorrentFile> filesFrom(const json::Value& answer, json::ValueRef entries) {
  std::vector<RVTorrentFile> files;
  const std::size_t count =
      entries.kind() == json::Kind::array ? std::min(entries.count(), kMostFiles) : std::size_t{0};
  files.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const json::ValueRef entry = entries.at(i);
    files.push_back(
        {textFrom(entry["name"]), answer.share(entry["length"]), answer.share(entry["bytesCompleted"])});
  }
  return files;
}

// Three fields are deliberately not what their names say: the two read under a key that was never asked
// for stay 0, and `downloadedEver` ends up holding the daemon's error number.
void fill(RVTorrentInfo& info, json::ValueRef torrent) {
  info.activityDate = dateFrom(torrent["activityDate"]);
  info.addedDate = dateFrom(torrent["addedDate"]);
  info.bandwidthPrioritys = torrent["bandwidthPrioritys"].longLongValue();
  info.comment = textFrom(torrent["comment"]);
  info.corruptEvers = torrent["corruptEvers"].longLongValue();
  info.creator = textFrom(torrent["creator"]);
  info.dateCreated = dateFrom(torrent["dateCreated"]);
  info.desiredAvailable = torrent["desiredAvailable"].longLongValue();
  info.doneDate = dateFrom(torrent["doneDate"]);
  info.downloadDir = textFrom(torrent["downloadDir"]);
  info.downloadLimit = torrent["downloadLimit"].longLongValue();
  info.downloadLimited = torrent["downloadLimited"].boolValue();
  info.downloadedEver = torrent["error"].longLongValue();
  info.errorString = textFrom(torrent["errorString"]);
  info.eta = torrent["eta"].longLongValue();
  info.hashString = textFrom(torrent["hashString"]);
  info.haveUnchecked = torrent["haveUnchecked"].longLongValue();
}

RVSOAPRequest listRequest() {
  return torrentGet({{"fields", torrentListFields()}});
}

std::size_t hashOf(const std::optional<std::string>& text) {
  return std::hash<std::string_view>()(text ? std::string_view(*text) : std::string_view());
}

constexpr int kFetchAttempts = 3;  // the first ones may meet new session ids

// Ends an update that has begun, on every way out.
class UpdateEnd {
 public:
  explicit UpdateEnd(std::function<void()> end) : end_(std::move(end)) {}
  ~UpdateEnd() { end_(); }
  UpdateEnd(const UpdateEnd&) = delete;
  UpdateEnd& operator=(const UpdateEnd&) = delete;

 private:
  std::function<void()> end_;
};

// A success without a list is none.
DaemonOutcome withoutList(const DaemonOutcome& outcome, const json::Value& answer,
                          const std::string& problem) {
  if (outcome.condition != DaemonCondition::answered) {
    return outcome;
  }
  if (answer.isAbsent()) {
    return {DaemonCondition::unreadable, problem};
  }
  const auto said = answer["result"].text();
  const bool isReason = said && *said != "success";
  return {DaemonCondition::unreadable, isReason ? std::string(*said) : "it holds no torrents"};
}

}  // namespace

void _RVTrans::updateAllTorrents() {
  bUpdating_ = Updating::underWay;
  log("updateAllTorrents\n");
  if (sessionInfo_->sessionID.get() == "") {
    log("Tried to update all torrents, but session is is empty!!!");
    listing_.replace(json::Value::array({}));
    bUpdating_ = Updating::leftStanding;  // until an update gets past this point
    return;
  }
  {
    const UpdateEnd end([this] { bUpdating_ = Updating::no; });
    if (!takeTorrentList(noteOutcome([this] { return sendCommand(listRequest()); }))) {
      listing_.replace(json::Value());
    }
  }
  bNewData_ = true;
  log("finished updateAllTorrents\n");
}

bool _RVTrans::takeTorrentList(const RVSOAPResult& result, std::optional<std::uint64_t> onlyAfter) {
  std::string problem;
  const json::Value answer = result.getResponseDict(problem);
  const json::ValueRef torrents = answer.ref()["arguments"]["torrents"];
  if (torrents.kind() != json::Kind::array) {
    listOutcome_.set(withoutList(result.outcome, answer, problem));
    return false;
  }
  listOutcome_.set({DaemonCondition::answered, ""});
  return listing_.store(answer.share(torrents), result.session, onlyAfter, hashOf(result.response));
}

bool _RVTrans::isListOutdated() const {
  const SessionID listed = listing_.session();
  const bool isAnothers = sessionInfo_->sessionID.read(
      [&listed](const SessionID& session) { return session.value_or("").empty() || session != listed; });
  return isAnothers || listing_.isDoubtful();
}

bool _RVTrans::isOutOfStep() const {
  const bool isBusy = connecting_ > 0 || bUpdating_ == Updating::underWay;
  return bConnected_ && !isBusy && (isListOutdated() || version().empty());
}

void _RVTrans::catchUp() {
  if (isListOutdated()) {
    listing_.lookAgain();
    fetchTorrentList();
  }
  if (version().empty()) {
    getDaemonInfo({.counts = false});
    bNewData_ = true;  // a torrent's state means what the version says
  }
}

void _RVTrans::fetchTorrentList() {
  RVSOAPResult result;
  std::uint64_t before = 0;
  for (int attempt = 0; attempt == 0 || (attempt < kFetchAttempts && result.statuscode == "409"); ++attempt) {
    before = listing_.version();
    result = noteOutcome([this] { return sendCommand(listRequest(), {.counts = false}); });
  }
  if (listing_.isOf(result.session, hashOf(result.response))) {
    listOutcome_.set({DaemonCondition::answered, ""});
    return;  // nothing to read, and nothing new to show
  }
  // A list that was stored meanwhile may be newer.
  if (takeTorrentList(result, before)) {
    Updating standing = Updating::leftStanding;
    bUpdating_.compare_exchange_strong(standing, Updating::no);
    bNewData_ = true;
  }
}

json::Value _RVTrans::getTorrentList() const {
  static const json::Value empty = json::Value::array({});
  logRow("getTorrentList\n");
  json::Value list = listing_.torrents();
  logRow("finished getTorrentList\n");
  return list.isAbsent() ? empty : list;
}

std::shared_ptr<RVTorrentInfo> _RVTrans::getTorrentInfo(std::int64_t torrent) {
  log("getTorrentDetailInfo\n");
  const json::Value ids = json::Value::array({json::Value::integer(torrent)});
  const RVSOAPResult result = sendCommand(torrentGet({{"fields", torrentDetailFields()}, {"ids", ids}}));
  const json::Value answer = result.getResponseDict();
  const json::ValueRef torrents = answer.ref()["arguments"]["torrents"];
  // No answer gives an empty record; an answer without the torrent raises.
  const json::ValueRef found = torrents.isAbsent() ? json::ValueRef() : torrents.at(0);
  auto info = std::make_shared<RVTorrentInfo>();
  info->files = filesFrom(answer, found["files"]);
  fill(*info, found);
  listing_.learn(TorrentIdentity::of(found), result.session);
  log("finished getTorrentDetailInfo\n");
  return info;
}

}  // namespace seedmote
