#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "client/AddOutcome.h"
#include "platform/ui/Inbox.h"

namespace seedmote {

// What came of adding several files one after the other.
struct InboxDelivery {
  std::size_t settled = 0;  // that the daemon has dealt with
  std::size_t added = 0;
  std::size_t duplicates = 0;              // that the daemon had already
  std::vector<std::string> refused;        // a line for people each
  std::optional<AddOutcome> trouble = {};  // what ended it early: this file and those after it still wait

  // Adds the files behind the user's back and takes each that was dealt with out of the inbox. Blocks; any
  // thread.
  static InboxDelivery of(platform::Inbox& inbox, const std::vector<platform::Inbox::Item>& files);

  // Empty when nothing was dealt with.
  std::string summary() const;
};

// A line for people about a torrent that the daemon did not take.
std::string refusalLine(const std::string& name, const AddOutcome& outcome);

}  // namespace seedmote
