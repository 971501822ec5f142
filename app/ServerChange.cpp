#include "app/ServerChange.h"

#include <string>
#include <utility>

#include "client/RVTrans.h"
#include "client/StoredSetting.h"
#include "platform/core/Format.h"
#include "platform/core/Services.h"
#include "platform/ui/Alerts.h"
#include "platform/ui/UiServices.h"

namespace seedmote {

using platform::format;

namespace {

std::string urlOf(const RVDaemonInfo& info) {
  return format("%@://%@", info.httpprotocol, info.ipAddress);
}

std::string question(const RVDaemonInfo& used, const RVDaemonInfo& stored) {
  if (urlOf(used) == urlOf(stored)) {
    return format("The settings name another login. Seedmote is still connected to\n%@\nRestart it now?",
                  urlOf(used));
  }
  return format("The settings name\n%@\nSeedmote is still connected to\n%@\nRestart it now?", urlOf(stored),
                urlOf(used));
}

}  // namespace

ServerChange::ServerChange(std::function<void()> restart) : restart_(std::move(restart)) {}

bool ServerChange::isOther(const RVDaemonInfo& used, const RVDaemonInfo& stored) {
  return urlOf(used) != urlOf(stored) || used.authorization != stored.authorization;
}

void ServerChange::panelOpened() {
  looking_.stop();
}

void ServerChange::panelClosed() {
  looking_ = platform::services().timers.repeat("serverChange", kLookSeconds, [this] { look(); });
  look();
}

// An attempt to connect that is under way may still end with the old server. A client that is not connected
// takes the stored server with its next attempt; then there is nothing to ask.
void ServerChange::look() {
  const std::optional<RVDaemonInfo> used = RVTrans::daemonInfo();
  const RVDaemonInfo stored = storedDaemonInfo();
  const bool isChanged = used && isOther(*used, stored);
  if (isChanged && !RVTrans::isConnected()) {
    return;
  }
  looking_.stop();
  if (!isChanged) {
    asked_.reset();
  } else if (!asked_ || isOther(*asked_, stored)) {
    asked_ = stored;
    ask(*used, stored);
  }
}

void ServerChange::ask(const RVDaemonInfo& used, const RVDaemonInfo& stored) const {
  platform::uiServices().alerts.show({.title = "Server changed",
                                      .message = question(used, stored),
                                      .buttons = {"Go on", "Restart now"},
                                      .dismissed = [restart = restart_](int button) {
                                        if (button == 1) {
                                          restart();
                                        }
                                      }});
}

}  // namespace seedmote
