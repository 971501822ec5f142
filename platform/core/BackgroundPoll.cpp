#include "platform/core/BackgroundPoll.h"

#include <utility>

#include "platform/core/MainThread.h"
#include "platform/core/Origin.h"
#include "platform/core/Threads.h"

namespace seedmote::platform {

// Of the main thread alone.
struct BackgroundPoll::State {
  bool underWay = false;
  bool wanted = true;
};

BackgroundPoll::BackgroundPoll(MainThread& main, Threads& threads, std::string name, Job job)
    : main_(main),
      threads_(threads),
      name_(std::move(name)),
      job_(std::move(job)),
      state_(std::make_shared<State>()) {}

BackgroundPoll::~BackgroundPoll() {
  state_->wanted = false;
}

void BackgroundPoll::tick() {
  if (state_->underWay) {
    return;
  }
  threads_.start(name_, [&main = main_, state = state_, name = name_, job = job_, origin = currentOrigin()] {
    Apply apply;
    main.guard(name, [&] { apply = job(); });
    main.post(
        [state, apply, origin] {
          state->underWay = false;
          if (apply && state->wanted) {
            const OriginScope scope(origin);
            apply();
          }
        },
        MainThread::Lane::ordinary, name);
  });
  state_->underWay = true;
}

}  // namespace seedmote::platform
