#include "app/InboxDelivery.h"

#include <exception>

#include "client/RVTrans.h"
#include "platform/core/FileContents.h"
#include "platform/core/Format.h"
#include "platform/core/Services.h"
#include "platform/core/Threads.h"

namespace seedmote {

namespace {

constexpr std::size_t kLinesShown = 8;

// A daemon whose answer makes no sense has not dealt with the torrent.
AddOutcome add(const std::string& contents) {
  try {
    return RVTrans::addQuietly(contents);
  } catch (const std::exception& raised) {
    AddOutcome outcome;
    outcome.outcome = {DaemonCondition::notTransmission, raised.what()};
    return outcome;
  }
}

std::string counted(std::size_t count, const char* one, const char* many) {
  return count == 1 ? std::string("1 torrent ") + one : platform::format("%lu torrents %@", count, many);
}

}  // namespace

InboxDelivery InboxDelivery::of(platform::Inbox& inbox, const std::vector<platform::Inbox::Item>& files) {
  InboxDelivery delivery;
  for (const platform::Inbox::Item& file : files) {
    if (platform::services().threads.isStopping()) {
      break;
    }
    const std::optional<std::string> contents = platform::contentsOfFile(file.path);
    if (!contents) {
      AddOutcome unreadable;
      unreadable.outcome = {DaemonCondition::failed, file.path + " cannot be read"};
      delivery.trouble = unreadable;
      break;
    }
    const AddOutcome outcome = add(*contents);
    if (!outcome.isOver()) {
      delivery.trouble = outcome;
      break;
    }
    inbox.drop(file);
    ++delivery.settled;
    if (!outcome.isAdded()) {
      delivery.refused.push_back(refusalLine(file.name, outcome));
    } else {
      ++(outcome.duplicate ? delivery.duplicates : delivery.added);
    }
  }
  return delivery;
}

std::string InboxDelivery::summary() const {
  std::vector<std::string> lines;
  if (added > 0) {
    lines.push_back(counted(added, "was added.", "were added."));
  }
  if (duplicates > 0) {
    lines.push_back(counted(duplicates, "was there already.", "were there already."));
  }
  if (!refused.empty()) {
    lines.push_back(counted(refused.size(), "was not added:", "were not added:"));
  }
  for (std::size_t line = 0; line < refused.size() && line < kLinesShown; ++line) {
    lines.push_back(refused[line]);
  }
  if (refused.size() > kLinesShown) {
    lines.push_back(platform::format("and %lu more", refused.size() - kLinesShown));
  }
  std::string text;
  for (const std::string& line : lines) {
    text += (text.empty() ? "" : "\n") + line;
  }
  return text;
}

std::string refusalLine(const std::string& name, const AddOutcome& outcome) {
  return name + ": " + outcome.result.value_or("");
}

}  // namespace seedmote
