#pragma once

#include <optional>
#include <string>

#include "client/DaemonOutcome.h"
#include "json/Value.h"

namespace seedmote {

// One answer of the daemon.
struct RVSOAPResult {
  std::string statuscode = "0";         // the HTTP status as text; "0" when no HTTP answer came
  std::optional<std::string> response;  // the body; absent when there is none or it is no UTF-8
  DaemonOutcome outcome;                // what the exchange came to, for people
  std::optional<std::string> session;   // the session id that the request carried

  // The body read as JSON; absent when it is none. A large body on the main thread is read by a worker
  // while the window goes on painting.
  json::Value getResponseDict() const;
  // As above; `problem` gets the reader's message when the body could not be read.
  json::Value getResponseDict(std::string& problem) const;
};

}  // namespace seedmote
