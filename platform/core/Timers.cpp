#include "platform/core/Timers.h"

#include <QObject>
#include <QTimer>
#include <algorithm>
#include <deque>
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

  // What fires may wait for long, and the overlay's timers go on then: those whose time has come as well
  // stand where the turn finds them that comes in between, and the clock is armed for it.
  void fireDue() {
    takeDue(clock.now());
    arm();
    while (!due.empty()) {
      const std::shared_ptr<Timer> timer = due.front();
      due.pop_front();
      if (due.empty()) {
        arm();
      }
      deliver(timer);
    }
  }

 private:
  // Those whose time has come, in its order. They stay only when they repeat.
  void takeDue(Clock::Duration now) {
    std::vector<std::shared_ptr<Timer>> found;
    std::erase_if(timers, [](const auto& timer) { return !*timer->active; });
    std::copy_if(timers.begin(), timers.end(), std::back_inserter(found),
                 [now](const auto& timer) { return timer->due <= now; });
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& a, const auto& b) { return a->due < b->due; });
    std::erase_if(timers, [now](const auto& timer) { return timer->due <= now && !timer->repeats; });
    for (const auto& timer : found) {
      // Turns that were missed are not made up for.
      timer->due += timer->interval * ((now - timer->due) / timer->interval + 1);
    }
    due.insert(due.end(), found.begin(), found.end());
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
    if (timers.empty() && due.empty()) {
      wakeUp.stop();
      return;
    }
    const Clock::Duration now = clock.now();
    Clock::Duration next = due.empty() ? Clock::Duration::max() : now;
    for (const auto& timer : timers) {
      next = std::min(next, timer->due);
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - now);
    const auto bounded =
        std::clamp<std::chrono::milliseconds::rep>(left.count(), 0, std::numeric_limits<int>::max());
    wakeUp.start(static_cast<int>(bounded));
  }

  Clock& clock;
  MainThread& main;
  std::vector<std::shared_ptr<Timer>> timers;
  std::deque<std::shared_ptr<Timer>> due;  // and not yet fired
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
