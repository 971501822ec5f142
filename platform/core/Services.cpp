#include "platform/core/Services.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace seedmote::platform {

namespace {
std::atomic<const Services*> installed{nullptr};
}  // namespace

const Services& services() {
  const Services* current = installed.load(std::memory_order_acquire);
  if (current == nullptr) {
    std::fputs("seedmote: no platform services are installed\n", stderr);
    std::abort();
  }
  return *current;
}

ServicesScope::ServicesScope(const Services& services) : services_(services) {
  installed.store(&services_, std::memory_order_release);
}

ServicesScope::~ServicesScope() {
  installed.store(nullptr, std::memory_order_release);
}

}  // namespace seedmote::platform
