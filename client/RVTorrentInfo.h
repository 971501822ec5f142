#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "client/RVTorrentFile.h"
#include "json/Value.h"

namespace seedmote {

// A moment in seconds since 1970-01-01 UTC.
struct RVDate {
  std::int64_t secondsSince1970 = 0;
  bool operator==(const RVDate&) const = default;
};

// One torrent's details, named as the daemon's RPC description names them. A plain record; what a detail
// query does not fill stays zero, false or absent.
struct RVTorrentInfo {
  std::optional<RVDate> activityDate;
  std::optional<RVDate> addedDate;
  std::int64_t bandwidthPrioritys = 0;
  std::optional<std::string> comment;
  std::int64_t corruptEvers = 0;
  std::optional<std::string> creator;
  std::optional<RVDate> dateCreated;
  std::int64_t desiredAvailable = 0;
  std::optional<RVDate> doneDate;
  std::optional<std::string> downloadDir;
  std::int64_t downloadLimit = 0;
  bool downloadLimited = false;
  std::int64_t downloadedEver = 0;
  std::int64_t error = 0;
  std::optional<std::string> errorString;
  std::int64_t eta = 0;
  std::optional<std::string> hashString;
  std::int64_t haveUnchecked = 0;
  std::int64_t haveValid = 0;
  bool honorsSessionLimits = false;
  std::int64_t idx = 0;
  bool isFinished = false;
  bool isPrivate = false;
  bool isStalled = false;
  std::int64_t leftUntilDone = 0;
  std::optional<std::string> magnetLink;
  std::int64_t manualAnnounceTime = 0;
  std::int64_t maxConnectedPeers = 0;
  std::int64_t metadataPercentComplete = 0;
  std::optional<std::string> name;
  std::int64_t peerlimit = 0;
  json::Value peers;
  std::int64_t peersConnected = 0;
  json::Value peersFrom;
  std::int64_t peersGettingFromUs = 0;
  std::int64_t peersSendingToUs = 0;
  std::int64_t percentDone = 0;
  std::int64_t pieceCount = 0;
  std::int64_t pieceSize = 0;
  json::Value pieces;
  json::Value priorities;
  std::int64_t queuePosition = 0;
  std::int64_t rateDownload = 0;
  std::int64_t rateUpload = 0;
  std::int64_t recheckProgress = 0;
  std::int64_t secondsDownloading = 0;
  std::int64_t secondsSeeding = 0;
  std::int64_t seedIdleLimit = 0;
  std::int64_t seedIdleMode = 0;
  std::int64_t seedRatioLimit = 0;
  std::int64_t seedRatioMode = 0;
  std::int64_t sizeWhenDone = 0;
  std::int64_t startDate = 0;
  std::int64_t status = 0;
  std::optional<std::string> torrentFile;
  std::int64_t totalSize = 0;
  json::Value trackerStats;
  json::Value trackers;
  std::vector<RVTorrentFile> files;
  json::Value fileStats;
};

}  // namespace seedmote
