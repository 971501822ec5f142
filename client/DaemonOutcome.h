#pragma once

#include <string>

#include "platform/core/Http.h"

namespace seedmote {

// What an exchange with the daemon came to, in the terms in which a person can be told.
enum class DaemonCondition {
  notAsked,           // nothing was sent yet
  answered,           // 200, and the body begins as JSON does
  newSession,         // 409: the daemon gave out another session id
  loginRefused,       // 401
  lockedOut,          // 403, after too many refused logins
  addressNotAllowed,  // 403, this machine is not on the daemon's whitelist
  hostNotAllowed,     // 421, the daemon does not know itself by this host name
  noTls,              // https was asked of a port that speaks none
  needsTls,           // http was asked of a port that speaks TLS
  tlsTrouble,
  nobodyListens,
  badAddress,  // the stored address and port make no URL
  unknownHost,
  unreachable,       // no way to the host's network
  noAnswer,          // in time
  closedUnanswered,  // http: closed or reset before an answer began; often for want of TLS
  brokenOff,         // the connection ended before the answer did
  notTransmission,   // an answer, but none that a Transmission daemon gives
  unreadable,        // 200, but the body could not be read
  failed,            // for a reason that `detail` tells
  cancelled          // the program ends
};

struct DaemonOutcome {
  DaemonCondition condition = DaemonCondition::notAsked;
  std::string detail;  // what the transport or the reader said; may be empty
};

// Judges one answer by its transport error, its status and what its body says.
DaemonOutcome judgeAnswer(const platform::HttpAnswer& answer);

}  // namespace seedmote
