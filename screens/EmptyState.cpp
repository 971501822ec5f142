#include "screens/EmptyState.h"

#include "app/resources/RVRes.h"
#include "platform/core/Format.h"

namespace seedmote {

namespace {

const char* words(DaemonCondition condition) {
  switch (condition) {
    case DaemonCondition::notAsked:
      return "The daemon has not been asked yet. Its torrents appear here once it has answered.";
    case DaemonCondition::answered:
      return "Something answered there, but not as a Transmission daemon does. Check the address and the "
             "port in the settings.";
    case DaemonCondition::newSession:
      return "The daemon has begun a new session. Refresh to fetch its torrents.";
    case DaemonCondition::loginRefused:
      return "The daemon refused the user name or the password. Check both in the settings.";
    case DaemonCondition::lockedOut:
      return "The daemon lets nobody in any more after too many refused logins. Check user name and "
             "password in the settings, then restart the daemon.";
    case DaemonCondition::addressNotAllowed:
      return "The daemon does not let this device in. Add this device's address to \"rpc-whitelist\" in "
             "the daemon's own settings.";
    case DaemonCondition::hostNotAllowed:
      return "The daemon does not know itself by this host name. Enter its IP address in the settings "
             "instead, or add the name to \"rpc-host-whitelist\" in the daemon's own settings.";
    case DaemonCondition::noTls:
      return "The daemon does not speak SSL on this port. Switch SSL off in the settings, or enter the "
             "port that does.";
    case DaemonCondition::needsTls:
      return "The daemon expects SSL on this port. Switch SSL on in the settings.";
    case DaemonCondition::tlsTrouble:
      return "No secure connection to the daemon could be made. Check the port and SSL in the settings.";
    case DaemonCondition::nobodyListens:
      return "Nobody listens at this address and port. Check both in the settings, and that the daemon "
             "runs and allows remote access.";
    case DaemonCondition::badAddress:
      return "This address and port cannot be those of a daemon. Correct them in the settings.";
    case DaemonCondition::unknownHost:
      return "There is no host of this name. Check the address in the settings, and this device's network.";
    case DaemonCondition::unreachable:
      return "There is no way to this host. Check the address in the settings, and this device's network.";
    case DaemonCondition::noAnswer:
      return "The daemon did not answer in time. Check the address in the settings and the network, then "
             "refresh.";
    case DaemonCondition::closedUnanswered:
      return "The connection was closed without an answer. Refresh to try again. If the daemon expects SSL "
             "on this port, switch SSL on in the settings.";
    case DaemonCondition::brokenOff:
      return "The connection broke off in the middle of an answer. Refresh to try again.";
    case DaemonCondition::notTransmission:
      return "What answers there is not a Transmission daemon. Check the address and the port in the "
             "settings.";
    case DaemonCondition::unreadable:
      return "The daemon's answer could not be read. Refresh to try again.";
    case DaemonCondition::failed:
      return "The request failed. Refresh to try again.";
    case DaemonCondition::cancelled:
      return "The request was cancelled.";
  }
  return "";
}

}  // namespace

std::string EmptyState::sentence() const {
  if (connected && !setUp) {
    return "The daemon is connected. Its torrents appear once the settings have been confirmed.";
  }
  if (connected && torrents > 0) {
    return filterID == 1
               ? "The torrents are being listed."
               : platform::format("No torrent is in the state \"%@\" now. Choose \"%@\" to see them all.",
                                  RVRes::getWording(filterID), RVRes::getWording(1));
  }
  if (connected && outcome.condition == DaemonCondition::answered) {
    return "The daemon has no torrents.";
  }
  std::string text = words(outcome.condition);
  const bool hasReason =
      outcome.condition == DaemonCondition::unreadable || outcome.condition == DaemonCondition::failed;
  if (hasReason && !outcome.detail.empty()) {
    text += platform::format("\n(%@)", outcome.detail);
  }
  return text;
}

}  // namespace seedmote
