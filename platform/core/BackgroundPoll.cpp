#include "platform/core/BackgroundPoll.h"

#include <exception>
#include <utility>

#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Origin.h"
#include "platform/core/Threads.h"

namespace seedmote::platform {

// Of the main thread alone.
struct BackgroundPoll::State {
  bool underWay = false;
  bool wanted = true;
};

namespace {

// Nobody waits for this job, so what it raises is logged and ends nobody's message.
BackgroundPoll::Apply runQuietly(const std::string& name, const BackgroundPoll::Job& job) {
  try {
    return job();
  } catch (const std::exception& raised) {
    log("Raised in %@: %@\n", name, raised.what());
  } catch (...) {
    log("Raised in %@: something that is no exception\n", name);
  }
  return nullptr;
}

}  // namespace

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
    const Apply apply = runQuietly(name, job);
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
