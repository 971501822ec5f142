// Any values where a daemon's numbers and texts are expected: each row of a list of torrents, or of files,
// has its texts.
#include <string>

#include "client/RVUtility.h"
#include "fuzz/Target.h"
#include "json/YxJsonParser.h"
#include "platform/core/Log.h"
#include "screens/RVTorrentDetailFileListCell.h"
#include "screens/RVTorrentListCell.h"

namespace seedmote::fuzz {
namespace {

void showTorrent(json::ValueRef torrent) {
  static RVTorrentListCell cell;
  const int version = torrent["rpc-version"].intValue();
  cell.fill(torrent, RVUtility::changeTransStatus(torrent["status"].intValue(), version));
  check(cell.processDownload() >= 0 && cell.processDownload() <= 1, "progress is a part of the whole");
  check(cell.statusID() == 0 || (cell.statusID() >= 2 && cell.statusID() <= 7), "a state is one");
  check(cell.labelBytesInformation().startsWith(u'(') && cell.labelSpeedInformation().startsWith(u'p'),
        "texts");
  check(cell.accessibleDescription().size() > cell.labelETA().size(), "a description");
  check(cell.imageStatus().isValid() || cell.statusID() == 0, "a picture");
}

void showFile(const json::Value& files, json::ValueRef file) {
  static RVTorrentDetailFileListCell cell;
  cell.fill({std::string(file["name"].text().value_or("")), files.share(file["length"]),
             files.share(file["bytesCompleted"])});
  check(cell.process().endsWith(u'%') && cell.length().endsWith(u'B'), "a file's texts");
}

}  // namespace
}  // namespace seedmote::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace seedmote;
  platform::silenceLog();
  json::YxJsonParser parser;
  const json::Value rows = parser.objectWithString(fuzz::textOf(data, size));
  for (const json::ValueRef row : rows->elements()) {
    fuzz::showTorrent(row);
    fuzz::showFile(rows, row);
  }
  return 0;
}
