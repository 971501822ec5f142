#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/DeafPort.h"
#include "tests/support/LoopbackDaemon.h"
#include "tests/support/Replies.h"

namespace seedmote::faults {

using support::LoopbackDaemon;
using support::RecordedRequest;
using support::Reply;
namespace replies = support::replies;

// The servers that a request may meet, beside the daemon itself.
struct World {
  LoopbackDaemon daemon;
  LoopbackDaemon other;  // a web server that knows nothing of torrents
  LoopbackDaemon tls{{.tls = true}};
  LoopbackDaemon strict{{.tls = true, .demandClientCertificate = true}};
  LoopbackDaemon blunt;  // greets whoever comes as it was told
  support::DeafPort deaf;
};

// What becomes of the request as far as the client goes by it.
enum class Kind {
  failed,     // no JSON came
  answered,   // JSON, but no list of torrents
  listed,     // its torrents are some list
  conflict,   // 409, and the re-send is answered as ever
  unreadable  // 409 without a session id
};
inline constexpr int kKinds = 5;

// What a request meets in place of an answer, and what a person is told of it.
struct Fault {
  std::string name;  // in words, as the daemon's doing
  Kind kind = Kind::failed;
  std::function<Reply(World&)> reply{};            // of the daemon
  std::function<std::string(World&)> url{};        // or: where the request gets to in the daemon's stead
  std::string list{};                              // the sentence in place of the list
  std::string atFirst{};                           // the same in the hand-shake; empty: no other
  std::string orElse{};                            // the same where chance has it otherwise
  std::string status = "200";                      // as adding a link tells it
  std::string result = "(null)";                   // the same
  std::string connected = "Daemon is connected!";  // the message in the hand-shake where it goes on
  int times = 1'000'000;                           // so often, then the daemon behaves
  bool slow = false;                               // the client gives up when the time is over
  bool heavy = false;                              // costs a second or so
};

// Of connections, of HTTP, and of what stands in the answer.
std::vector<Fault> placeFaults();
std::vector<Fault> httpFaults();
std::vector<Fault> textFaults();

const std::vector<Fault>& faultTable();  // all of them

inline std::function<Reply(World&)> always(Reply reply) {
  return [reply = std::move(reply)](World&) { return reply; };
}

// The sentences that stand in the list's place.
namespace sentences {
inline constexpr const char* kNobodyListens =
    "Nobody listens at this address and port. Check both in the settings, and that the daemon runs and allows "
    "remote access.";
inline constexpr const char* kBadAddress =
    "This address and port cannot be those of a daemon. Correct them in the settings.";
inline constexpr const char* kUnknownHost =
    "There is no host of this name. Check the address in the settings, and this device's network.";
inline constexpr const char* kNoAnswer =
    "The daemon did not answer in time. Check the address in the settings and the network, then refresh.";
inline constexpr const char* kClosedUnanswered =
    "The connection was closed without an answer. Refresh to try again. If the daemon expects SSL on this port, "
    "switch SSL on in the settings.";
inline constexpr const char* kBrokenOff =
    "The connection broke off in the middle of an answer. Refresh to try again.";
inline constexpr const char* kNotTransmission =
    "What answers there is not a Transmission daemon. Check the address and the port in the settings.";
inline constexpr const char* kNotAsDaemon =
    "Something answered there, but not as a Transmission daemon does. Check the address and the port in the "
    "settings.";
inline constexpr const char* kNoTls =
    "The daemon does not speak SSL on this port. Switch SSL off in the settings, or enter the port that does.";
inline constexpr const char* kNeedsTls =
    "The daemon expects SSL on this port. Switch SSL on in the settings.";
inline constexpr const char* kTlsTrouble =
    "No secure connection to the daemon could be made. Check the port and SSL in the settings.";
inline constexpr const char* kNewSession =
    "The daemon has begun a new session. Refresh to fetch its torrents.";
inline constexpr const char* kLoginRefused =
    "The daemon refused the user name or the password. Check both in the settings.";
inline constexpr const char* kLockedOut =
    "The daemon lets nobody in any more after too many refused logins. Check user name and password in the "
    "settings, then restart the daemon.";
inline constexpr const char* kAddressNotAllowed =
    "The daemon does not let this device in. Add this device's address to \"rpc-whitelist\" in the daemon's own "
    "settings.";
inline constexpr const char* kHostNotAllowed =
    "The daemon does not know itself by this host name. Enter its IP address in the settings instead, or add "
    "the name to \"rpc-host-whitelist\" in the daemon's own settings.";
inline constexpr const char* kUnreadable = "The daemon's answer could not be read. Refresh to try again.";
inline constexpr const char* kFailed = "The request failed. Refresh to try again.";
inline constexpr const char* kNoTorrents = "The daemon has no torrents.";

// Those that end with a reason of ours; one in a library's words may stand behind any other.
inline std::string unreadable(const std::string& why) {
  return std::string(kUnreadable) + "\n(" + why + ")";
}
}  // namespace sentences

}  // namespace seedmote::faults
