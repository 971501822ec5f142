#include "client/StoredSetting.h"

#include "client/RVUtility.h"
#include "platform/core/Format.h"
#include "platform/core/NumberText.h"
#include "platform/core/Services.h"
#include "platform/core/UserDefaults.h"

namespace seedmote {

std::optional<std::string> storedSetting(std::string_view key) {
  const std::optional<std::string> value = platform::services().defaults.object(key)["Value"].asText();
  return value ? std::optional(RVUtility::trimString(*value)) : std::nullopt;
}

std::int64_t storedTimeout() {
  const std::optional<std::string> value = platform::services().defaults.object("Timeout")["Value"].asText();
  return value ? platform::leadingInteger(*value) : 0;
}

RVDaemonInfo storedDaemonInfo() {
  RVDaemonInfo info;
  info.ipAddress = platform::format("%@:%@", storedSetting("IP Address"), storedSetting("Port"));
  info.authorization = platform::format("%@:%@", storedSetting("Username"), storedSetting("Password"));
  info.httpprotocol = storedSetting("UseSSL") == "False" ? "http" : "https";
  return info;
}

}  // namespace seedmote
