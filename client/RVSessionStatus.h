#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "client/RVStatusDetail.h"
#include "platform/core/Shared.h"

namespace seedmote {

// The session of the daemon: made once, overwritten in place by each fetch, so that a holder of the
// record sees the newest values. Each field may be read while another thread fetches.
struct RVSessionStatus {
  using Text = platform::Shared<std::optional<std::string>>;

  std::atomic<bool> dirty{false};              // refreshed, and not yet handed out
  Text sessionID{std::string()};               // "" when unknown
  std::atomic<std::int64_t> downloadCount{0};  // never filled
  std::atomic<std::int64_t> uploadCount{0};    // never filled
  std::atomic<std::int64_t> torrentCount{0};
  std::atomic<std::int64_t> downloadSpeed{0};  // bytes per second
  std::atomic<std::int64_t> uploadSpeed{0};    // bytes per second
  std::atomic<std::int64_t> activeTorrentCount{0};
  std::atomic<std::int64_t> pausedTorrentCount{0};
  std::atomic<std::int64_t> rpcversion{0};
  Text daemonversion;  // absent until known
  Text ipaddress;      // host and port; absent until known
  std::shared_ptr<RVStatusDetail> cumStats = std::make_shared<RVStatusDetail>();
  std::shared_ptr<RVStatusDetail> curStats = std::make_shared<RVStatusDetail>();
};

}  // namespace seedmote
