#include "screens/RVSessionStatListController.h"

#include <algorithm>
#include <cstdint>

#include "app/resources/RVResQt.h"
#include "client/RVUtility.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/ui/ReusableCell.h"
#include "screens/RVSessionStatListCell.h"

namespace seedmote {

namespace {

using Texts = std::vector<std::optional<std::string>>;

std::string number(std::int64_t value) {
  return platform::format("%lld", value);
}

// Nothing from the first absent text on is shown.
std::vector<std::string> untilAbsent(const Texts& texts) {
  std::vector<std::string> known;
  for (auto text = texts.begin(); text != texts.end() && *text; ++text) {
    known.push_back(**text);
  }
  return known;
}

std::vector<std::string> global(const RVSessionStatus& status) {
  return untilAbsent({"Global", status.ipaddress.get(), RVRes::getWording(101), number(status.torrentCount),
                      RVRes::getWording(102), number(status.activeTorrentCount), RVRes::getWording(103),
                      number(status.pausedTorrentCount), RVRes::getWording(104), status.daemonversion.get(),
                      RVRes::getWording(105), number(status.rpcversion), RVRes::getWording(106)});
}

std::vector<std::string> transfers(const char* title, const std::shared_ptr<RVStatusDetail>& known) {
  static const RVStatusDetail none;
  const RVStatusDetail& detail = known ? *known : none;
  return {title,
          RVUtility::changeSizeFormat(detail.uploadedBytes),
          RVRes::getWording(107),
          RVUtility::changeSizeFormat(detail.downloadedBytes),
          RVRes::getWording(108),
          number(detail.filesAdded),
          RVRes::getWording(109),
          number(detail.sessionCount),
          RVRes::getWording(110),
          RVUtility::changeCumTimeFormat(detail.secondsActive),
          RVRes::getWording(111)};
}

}  // namespace

void RVSessionStatListController::viewDidLoad() {
  table()->setBackgroundColor(colorOf(32));
  table_.reload();
  platform::log("Session Stat List view is loaded.\n");
}

void RVSessionStatListController::updateSessionStauts(const RVSessionStatus& status) {
  sessionStatusList_ = {global(status), transfers("Cumulative", status.cumStats),
                        transfers("Current", status.curStats)};
  table_.reload();
}

int RVSessionStatListController::numberOfSectionsInTableView() {
  return std::max(1, static_cast<int>(sessionStatusList_.size()));
}

int RVSessionStatListController::numberOfRowsInSection(int section) {
  if (sessionStatusList_.empty()) {
    return 1;
  }
  return (static_cast<int>(sessionStatusList_.at(static_cast<std::size_t>(section)).size()) - 1) / 2;
}

std::optional<std::string> RVSessionStatListController::titleForHeaderInSection(int section) {
  const auto index = static_cast<std::size_t>(section);
  return index < sessionStatusList_.size() ? std::optional(sessionStatusList_[index].at(0)) : std::nullopt;
}

platform::TableViewCell* RVSessionStatListController::cellForRowAtIndexPath(platform::IndexPath path) {
  auto* cell = platform::reusableCell<RVSessionStatListCell>(*table());
  const auto index = static_cast<std::size_t>(path.section);
  const Section none;
  const Section& section = index < sessionStatusList_.size() ? sessionStatusList_[index] : none;
  const auto value = static_cast<std::size_t>(path.row) * 2 + 1;
  // A newer record may be shorter than that whose rows are still shown.
  const bool known = value + 1 < section.size();
  cell->fill(known ? section[value + 1] : "", known ? section[value] : "");
  return cell;
}

}  // namespace seedmote
