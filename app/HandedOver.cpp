#include "app/HandedOver.h"

#include "platform/core/Log.h"

namespace seedmote {

void HandedOver::take(const std::vector<std::string>& uris) {
  {
    const std::lock_guard lock(mutex_);
    uris_.insert(uris_.end(), uris.begin(), uris.end());
  }
  for (const std::string& uri : uris) {
    platform::log("Handed over: %@\n", uri);
  }
  taken_();
}

std::vector<std::string> HandedOver::all() const {
  const std::lock_guard lock(mutex_);
  return uris_;
}

}  // namespace seedmote
