#pragma once

#include <cstdint>
#include <string>

namespace seedmote {

// Where the daemon is, how to log in, which protocol. A plain record.
struct RVDaemonInfo {
  std::int32_t rpc_version = -1;          // -1 until known
  std::int32_t rpc_version_minimum = -1;  // -1 until known
  std::string ipAddress;                  // host and port as typed, joined by a colon
  std::string daemonVersion;              // never filled; the session's record has the version
  std::string authorization;              // user and password joined by a colon; ":" for neither
  std::string httpprotocol = "http";      // the URL's scheme, "http" or "https"
};

}  // namespace seedmote
