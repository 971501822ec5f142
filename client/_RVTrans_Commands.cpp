#include <string>
#include <utility>
#include <vector>

#include "client/AnswerDictionary.h"
#include "client/RVUtility.h"
#include "client/RemovalGuard.h"
#include "client/_RVTrans.h"
#include "json/JSONRepresentation.h"
#include "platform/core/FileContents.h"
#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/core/Threads.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

using platform::log;

namespace {

constexpr int kAskAttempts = 3;  // the first ones may meet new session ids

RVSOAPRequest command(const char* method, const std::vector<std::pair<std::string, json::Value>>& arguments) {
  return {method, json::JSONRepresentation(json::Value::dictionary(arguments)), std::nullopt};
}

RVSOAPRequest torrentAdd(const char* key, std::string_view value) {
  return command("torrent-add", {{key, json::Value::string(value)}});
}

const char* whyNotDeleted(RemovalGuard::Verdict verdict) {
  return verdict == RemovalGuard::Verdict::noTorrent
             ? "Not deleted!\nThe daemon no longer has this torrent."
             : "Not deleted!\nThe daemon has numbered its torrents anew. Please select the torrent again.";
}

}  // namespace

void _RVTrans::startTorrent(bool on) {
  startTorrent(selectedidx(), on);
}

void _RVTrans::startTorrent(std::int64_t torrent, bool on) {
  log("startTorrent\n");
  sendCommand(command(on ? "torrent-start" : "torrent-stop", {{"ids", json::Value::integer(torrent)}}));
  log("onoffchanged to %@, index:%@\n", on ? "on" : "off", std::to_string(torrent));
}

// What the user saw when the torrent was selected.
TorrentSelection _RVTrans::meaningOf(std::int64_t torrent) const {
  TorrentSelection selection = listing_.selection();
  return selection.id == torrent ? selection : listing_.find(torrent);
}

void _RVTrans::deleteTorrentAsynch(std::int64_t torrent) {
  deleteTorrentAsynch(meaningOf(torrent));
}

void _RVTrans::deleteTorrentAsynch(const TorrentSelection& meant) {
  OvProgressHUD::showWithStatus("Deleting torrent...");
  platform::services().threads.start("delete", [this, meant] { removeTorrent(meant); });
}

void _RVTrans::deleteTorrent(std::int64_t torrent) {
  removeTorrent(meaningOf(torrent));
}

void _RVTrans::removeTorrent(const TorrentSelection& meant) {
  log("deleteTorrent\n");
  RemovalGuard guard(meant, [this, torrent = meant.id] { return askForTorrent(torrent); });
  // The daemon takes the text for a yes, as it stands.
  sendCommand(command("torrent-remove", {{"ids", json::Value::integer(meant.id)},
                                         {"delete-local-data", json::Value::string("true")}}),
              {.may = [&guard](const SessionID& session) { return guard.maySend(session); }});
  updateAllTorrents();
  if (guard.verdict() != RemovalGuard::Verdict::send) {
    OvProgressHUD::dismissWithError(whyNotDeleted(guard.verdict()));
    log("The removal of torrent %ld was not sent: the id means another torrent now, or none\n", meant.id);
    return;
  }
  OvProgressHUD::dismissWithSuccess("Deleted!!");
  log("torrent is deleted");
}

json::Value _RVTrans::askForTorrent(std::int64_t torrent) {
  const json::Value fields =
      json::Value::array({json::Value::string("id"), json::Value::string("name"),
                          json::Value::string("totalSize"), json::Value::string("hashString")});
  const json::Value ids = json::Value::array({json::Value::integer(torrent)});
  const RVSOAPRequest question = command("torrent-get", {{"fields", fields}, {"ids", ids}});
  json::Value answer;
  for (int attempt = 0; attempt < kAskAttempts && answer.isAbsent(); ++attempt) {
    const RVSOAPResult result = sendCommand(question);
    answer = result.getResponseDict();
    if (result.outcome.condition == DaemonCondition::noAnswer) {
      break;  // it has had its time
    }
  }
  return answer;
}

json::Value _RVTrans::addTorrentFile(const std::string& file) {
  log("addTorrent URL = %@", file);
  return addTorrentData(platform::services().main.wait([&] { return platform::contentsOfFile(file); }));
}

json::Value _RVTrans::addTorrentData(const std::optional<std::string>& contents) {
  log("addTorrentData\n");
  // A large file takes its time to become text.
  return addTorrent(platform::services().main.wait([&contents] {
    return torrentAdd("metainfo", RVUtility::Data2Base64(contents ? std::string_view(*contents) : ""));
  }));
}

json::Value _RVTrans::addTorrentURL(const std::string& link) {
  log("addTorrentURL URL = %@", link);
  return addTorrent(torrentAdd("filename", link));
}

AddOutcome _RVTrans::addQuietly(std::string_view contents) {
  AddOutcome outcome;
  sendAdd(torrentAdd("metainfo", RVUtility::Data2Base64(contents)), false, outcome);
  return outcome;
}

std::optional<AddOutcome> _RVTrans::takeLatestAdd() {
  std::optional<AddOutcome> latest;
  latestAdd_.update([&](std::optional<AddOutcome>& kept) { latest.swap(kept); });
  return latest;
}

RVSOAPResult _RVTrans::sendAdd(const RVSOAPRequest& request, bool counts, AddOutcome& outcome) {
  return sendCommand(request, {.counts = counts, .settled = [&outcome](const RVSOAPResult& last, bool again) {
                                 outcome = AddOutcome::of(last, again);
                               }});
}

json::Value _RVTrans::addTorrent(const RVSOAPRequest& request) {
  AddOutcome outcome;
  const RVSOAPResult result = sendAdd(request, true, outcome);
  latestAdd_.set(outcome);
  const json::Value answer = result.getResponseDict();
  return platform::services().main.wait(
      [&] { return withEntry(answer, "statuscode", json::Value::string(result.statuscode)); });
}

}  // namespace seedmote
