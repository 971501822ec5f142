#include "client/SessionWatcher.h"

#include "client/RVTrans.h"
#include "platform/core/Services.h"

namespace seedmote {

using platform::services;

SessionWatcher::SessionWatcher()
    : fetch_(services().main, services().threads, "sessionWatcher",
             [] {
               RVTrans::catchUp();
               return nullptr;
             }),
      timer_(services().timers.repeat("sessionWatcher", kLookSeconds, [this] { look(); })) {}

void SessionWatcher::look() {
  if (!RVTrans::isOutOfStep()) {
    return;
  }
  const platform::Clock::Duration now = services().clock.now();
  if (lastFetch_ && !RVTrans::isListDoubtful() && now - *lastFetch_ < platform::seconds(kFetchSeconds)) {
    return;
  }
  lastFetch_ = now;
  fetch_.tick();
}

}  // namespace seedmote
