#pragma once

#include <atomic>
#include <cstdint>

namespace seedmote {

// One block of transfer statistics. Each field may be read while another thread fetches.
struct RVStatusDetail {
  std::atomic<std::int64_t> uploadedBytes{0};
  std::atomic<std::int64_t> downloadedBytes{0};
  std::atomic<std::int64_t> filesAdded{0};
  std::atomic<std::int64_t> sessionCount{0};
  std::atomic<std::int64_t> secondsActive{0};
};

}  // namespace seedmote
