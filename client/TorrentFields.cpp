#include "client/TorrentFields.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace seedmote {

namespace {

json::Value texts(std::initializer_list<const char*> names) {
  std::vector<json::Value> values;
  values.reserve(names.size());
  for (const char* name : names) {
    values.push_back(json::Value::string(name));
  }
  return json::Value::array(values);
}

}  // namespace

const json::Value& torrentListFields() {
  static const json::Value fields = texts({"rateUpload", "rateDownload", "totalSize", "percentDone", "name",
                                           "uploadedEver", "status", "id", "isFinished", "leftUntilDone"});
  return fields;
}

const json::Value& torrentDetailFields() {
  static const json::Value fields = texts({"activityDate",
                                           "addedDate",
                                           "bandwidthPriority",
                                           "comment",
                                           "corruptEver",
                                           "creator",
                                           "dateCreated",
                                           "desiredAvailable",
                                           "doneDate",
                                           "downloadDir",
                                           "downloadedEver",
                                           "downloadLimit",
                                           "downloadLimited",
                                           "error",
                                           "errorString",
                                           "eta",
                                           "etaIdle",
                                           "files",
                                           "fileStats",
                                           "hashString",
                                           "haveUnchecked",
                                           "haveValid",
                                           "honorsSessionLimits",
                                           "id",
                                           "isFinished",
                                           "isPrivate",
                                           "isStalled",
                                           "leftUntilDone",
                                           "magnetLink",
                                           "manualAnnounceTime",
                                           "maxConnectedPeers",
                                           "metadataPercentComplete",
                                           "name",
                                           "peer-limit",
                                           "peers",
                                           "peersConnected",
                                           "peersFrom",
                                           "peersGettingFromUs",
                                           "peersSendingToUs",
                                           "percentDone",
                                           "pieces",
                                           "pieceCount",
                                           "pieceSize",
                                           "priorities",
                                           "queuePosition",
                                           "rateDownload",
                                           "rateUpload",
                                           "recheckProgress",
                                           "secondsDownloading",
                                           "secondsSeeding",
                                           "seedIdleLimit",
                                           "seedIdleMode",
                                           "seedRatioLimit",
                                           "seedRatioMode",
                                           "sizeWhenDone",
                                           "startDate",
                                           "status",
                                           "trackers",
                                           "trackerStats",
                                           "totalSize",
                                           "torrentFile",
                                           "uploadedEver",
                                           "uploadLimit",
                                           "uploadLimited",
                                           "uploadRatio",
                                           "wanted",
                                           "webseedsSendingToUs"});
  return fields;
}

}  // namespace seedmote
