#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "client/RVDaemonInfo.h"

namespace seedmote {

// The trimmed "Value" of the setting that is stored under `key`; absent when there is none.
std::optional<std::string> storedSetting(std::string_view key);

// The daemon that the stored settings name; nothing is known of its versions.
RVDaemonInfo storedDaemonInfo();

// The stored request time-out in seconds; 0 when there is none or it is no number.
std::int64_t storedTimeout();

}  // namespace seedmote
