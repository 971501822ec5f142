#include "platform/core/Timers.h"

#include <QObject>
#include <QTimer>
#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>
#include <vector>

#include "platform/core/Origin.h"

namespace seedmote::platform {

class Timers::Impl {
 public:
  struct Timer {
    std::string name;
    std::function<void()> fire;
    Lane lane = Lane::ordinary;
    Clock::Duration interval{};
    Clock::Duration due{};
    bool repeats = false;
    bool held = false;  // its turn has come, and waits for the main thread
    std::shared_ptr<bool> active;
  };

  Impl(Clock& clockInUse, MainThread& mainThread) : clock(clockInUse), main(mainThread) {
    wakeUp.setSingleShot(true);
    wakeUp.setTimerType(Qt::PreciseTimer);
    QObject::connect(&wakeUp, &QTimer::timeout, &wakeUp, [this] { fireDue(); });
    clock.onJump([this] { jumped(); });
  }

  ~Impl() { clock.onJump(nullptr); }

  std::shared_ptr<bool> add(std::shared_ptr<Timer> timer) {
    timer->active = std::make_shared<bool>(true);
    timer->due = clock.now() + timer->interval;
    timers.push_back(timer);
    arm();
    return timer->active;
  }

  void jumped() {
    if (main.isMainThread()) {
      fireDue();
    } else {
      main.post([this] { fireDue(); }, Lane::overlay);
    }
  }

  // Armed anew before anything fires: what fires may wait for long, and the overlay's timers go on then.
  void fireDue() {
    const std::vector<std::shared_ptr<Timer>> due = takeDue(clock.now());
    arm();
    for (const auto& timer : due) {
      deliver(timer);
    }
  }

 private:
  // Those whose time has come, in its order. They stay only when they repeat.
  std::vector<std::shared_ptr<Timer>> takeDue(Clock::Duration now) {
    std::vector<std::shared_ptr<Timer>> due;
    std::erase_if(timers, [](const auto& timer) { return !*timer->active; });
    std::copy_if(timers.begin(), timers.end(), std::back_inserter(due),
                 [now](const auto& timer) { return timer->due <= now; });
    std::stable_sort(due.begin(), due.end(), [](const auto& a, const auto& b) { return a->due < b->due; });
    std::erase_if(timers, [now](const auto& timer) { return timer->due <= now && !timer->repeats; });
    for (const auto& timer : due) {
      // Turns that were missed are not made up for.
      timer->due += timer->interval * ((now - timer->due) / timer->interval + 1);
    }
    return due;
  }

  void deliver(const std::shared_ptr<Timer>& timer) {
    if (timer->lane == Lane::overlay) {
      main.guard(timer->name, [&] { run(*timer); });
    } else if (!timer->held) {
      timer->held = true;
      main.enter(timer->name, [timer] {
        timer->held = false;
        run(*timer);
      });
    }
  }

  static void run(Timer& timer) {
    if (!*timer.active) {
      return;
    }
    if (!timer.repeats) {
      *timer.active = false;
    }
    const OriginScope scope(Origin::timer);
    timer.fire();
  }

  void arm() {
    std::erase_if(timers, [](const auto& timer) { return !*timer->active; });
    if (timers.empty()) {
      wakeUp.stop();
      return;
    }
    Clock::Duration due = Clock::Duration::max();
    for (const auto& timer : timers) {
      due = std::min(due, timer->due);
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(due - clock.now());
    const auto bounded =
        std::clamp<std::chrono::milliseconds::rep>(left.count(), 0, std::numeric_limits<int>::max());
    wakeUp.start(static_cast<int>(bounded));
  }

  Clock& clock;
  MainThread& main;
  std::vector<std::shared_ptr<Timer>> timers;
  QTimer wakeUp;
};

Timers::Handle& Timers::Handle::operator=(Handle&& other) noexcept {
  if (this != &other) {
    stop();
    active_ = std::move(other.active_);
  }
  return *this;
}

bool Timers::Handle::isActive() const {
  return active_ && *active_;
}

void Timers::Handle::stop() {
  if (active_) {
    *active_ = false;
  }
}

Timers::Timers(Clock& clock, MainThread& main) : impl_(std::make_unique<Impl>(clock, main)) {}

Timers::~Timers() = default;

Timers::Handle Timers::once(std::string name, double seconds, std::function<void()> fire, Lane lane) {
  auto timer = std::make_shared<Impl::Timer>();
  timer->name = std::move(name);
  timer->fire = std::move(fire);
  timer->lane = lane;
  timer->interval = platform::seconds(seconds);
  return Handle(impl_->add(std::move(timer)));
}

Timers::Handle Timers::repeat(std::string name, double seconds, std::function<void()> fire, Lane lane) {
  auto timer = std::make_shared<Impl::Timer>();
  timer->name = std::move(name);
  timer->fire = std::move(fire);
  timer->lane = lane;
  timer->interval = platform::seconds(seconds);
  timer->repeats = true;
  return Handle(impl_->add(std::move(timer)));
}

}  // namespace seedmote::platform
