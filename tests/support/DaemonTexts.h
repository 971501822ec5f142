#pragma once

#include <string>
#include <string_view>

// What Debian's daemon 3.00 writes, byte by byte, as recorded from it.
namespace seedmote::support::texts {

std::string conflictBody(std::string_view sessionId);  // 581 bytes with an id of 48
std::string unauthorizedBody(int failedLogins);

extern const std::string_view kLockedOutBody;    // 403 after 100 failed logins
extern const std::string_view kAddressBody;      // 403, not on the whitelist
extern const std::string_view kMisdirectedBody;  // 421
extern const std::string_view kMethodBody;       // 405
extern const std::string_view kMovedBody;        // 301

extern const std::string_view kSuccess;
extern const std::string_view kNoMethodName;
extern const std::string_view kUnknownMethod;
extern const std::string_view kStats;    // a fresh daemon
extern const std::string_view kSession;  // shortened
extern const std::string_view kNoTorrents;

}  // namespace seedmote::support::texts
