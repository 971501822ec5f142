#include "screens/RVTorrentDetailRightListController.h"

#include <chrono>
#include <cstdint>
#include <optional>

#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/ui/ReusableCell.h"
#include "screens/RVTorrentDetailRightListCell.h"

namespace seedmote {

namespace {

using platform::format;
using Text = std::optional<std::string>;

// In UTC: "2026-11-21 05:52:00 +0000".
Text description(const std::optional<RVDate>& date) {
  if (!date) {
    return std::nullopt;
  }
  const std::chrono::sys_seconds moment{std::chrono::seconds(date->secondsSince1970)};
  const auto midnight = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day day(midnight);
  const std::chrono::hh_mm_ss time(moment - midnight);
  return format("%04d-%02u-%02u %02ld:%02ld:%02ld +0000", int{day.year()}, unsigned{day.month()},
                unsigned{day.day()}, time.hours().count(), time.minutes().count(), time.seconds().count());
}

std::string text(const Text& value) {
  return format("%@", value);
}

std::string number(std::int64_t value) {
  return format("%lld", value);
}

std::vector<std::string> rows(const RVTorrentInfo& info) {
  return {
      format("%9@", description(info.activityDate)),
      "Activity date",
      text(description(info.addedDate)),
      "Added date",
      number(info.bandwidthPrioritys),
      "Bandwidth Prioritys",
      text(info.comment),
      "Comment",
      number(info.corruptEvers),
      "Corrupt evers",
      text(info.creator),
      "Creator",
      text(description(info.dateCreated)),
      "Date created",
      number(info.desiredAvailable),
      "Desired available",
      text(description(info.doneDate)),
      "Done date",
      text(info.downloadDir),
      "Download dir",
      number(info.downloadLimit),
      "Download limit",
      info.downloadLimited ? "Yes" : "No",
      "Download limited",
      number(info.downloadedEver),
      "Downloaded ever",
      text(info.errorString),
      "Error string",
      number(info.eta),
      "Eta",
      text(info.hashString),
      "Hash string",
      number(info.haveUnchecked),
      "haveUnchecked",
  };
}

}  // namespace

RVTorrentDetailRightListController::RVTorrentDetailRightListController() {
  table_.setBackgroundColor(Qt::transparent);
  table_.setDataSource(this);
}

RVTorrentDetailRightListController::~RVTorrentDetailRightListController() {
  table_.setDataSource(nullptr);
}

void RVTorrentDetailRightListController::setDetailInfo(const std::shared_ptr<const RVTorrentInfo>& info) {
  platform::log("RVTorrentInfoViewController setDetailInfo");
  rightList_ = rows(info ? *info : RVTorrentInfo());
  table_.setContentOffset(0, false);
  table_.reload();
}

platform::TableViewCell* RVTorrentDetailRightListController::cellForRowAtIndexPath(int row) {
  const std::size_t value = static_cast<std::size_t>(row) * 2;
  if (value >= rightList_.size()) {
    return nullptr;
  }
  auto* cell = platform::reusableCell<RVTorrentDetailRightListCell>(table_);
  cell->fill(rightList_[value + 1], rightList_[value]);
  return cell;
}

}  // namespace seedmote
