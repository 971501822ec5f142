#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace seedmote::platform {

// Listens for as long as it is held. It may outlive what it listens to.
using Subscription = std::shared_ptr<const void>;

// Those who want to know when something happens. One thread.
template <class... Args>
class Listeners final {
 public:
  using Listener = std::function<void(const Args&...)>;

  [[nodiscard]] Subscription add(Listener listener) {
    auto kept = std::make_shared<const Listener>(std::move(listener));
    std::erase_if(listeners_, [](const auto& known) { return known.expired(); });
    listeners_.push_back(kept);
    return kept;
  }

  // Who is called may add listeners, and end subscriptions, its own included.
  void tell(const Args&... args) {
    for (const auto& known : std::vector(listeners_)) {
      if (const auto listener = known.lock()) {
        (*listener)(args...);
      }
    }
  }

 private:
  std::vector<std::weak_ptr<const Listener>> listeners_;
};

}  // namespace seedmote::platform
