#pragma once

#include <optional>
#include <string>

#include "client/RVSOAPResult.h"

namespace seedmote {

// What came of a request to add one torrent: what the last answer to it said, be it the first or that to the
// request sent again under a new session id.
struct AddOutcome {
  std::string statuscode = "0";       // of that answer
  DaemonOutcome outcome;              // in the terms in which a person can be told
  std::optional<std::string> result;  // the daemon's word: "success", or why not; absent when there is none
  bool duplicate = false;             // it had the torrent already
  bool wasSentAgain = false;          // the first answer was a 409, and says nothing of the torrent

  static AddOutcome of(const RVSOAPResult& last, bool wasSentAgain);

  // The daemon has dealt with the torrent, for good or ill: nothing is to be sent again. An answer without
  // its word is another server's.
  bool isOver() const { return statuscode == "200" && result; }
  bool isAdded() const { return isOver() && result == "success"; }
};

}  // namespace seedmote
