#include "tests/support/FakeNames.h"

#include <dlfcn.h>
#include <netdb.h>

#include <condition_variable>
#include <cstring>
#include <mutex>

namespace seedmote::support {
namespace {

struct State {
  std::mutex mutex;
  std::condition_variable changed;
  bool on = false;
  int hanging = 0;
};

State& state() {
  static State* const only = new State;  // a look-up may outlive main()
  return *only;
}

bool isPlain(const char* name) {
  return !name || std::strcmp(name, "localhost") == 0 || !std::strpbrk(name, "ghijklmnopqrstuvwxyz");
}

// Whether the look-up is one for the real service; may hang.
bool isReal(const char* name) {
  State& now = state();
  std::unique_lock lock(now.mutex);
  if (now.on && !isPlain(name) && std::strcmp(name, "slow.invalid") == 0) {
    ++now.hanging;
    now.changed.notify_all();
    now.changed.wait(lock, [&] { return !now.on; });
    --now.hanging;
    now.changed.notify_all();
    return false;
  }
  return !now.on || isPlain(name);
}

}  // namespace

FakeNames::FakeNames() {
  const std::lock_guard lock(state().mutex);
  state().on = true;
}

FakeNames::~FakeNames() {
  std::unique_lock lock(state().mutex);
  state().on = false;
  state().changed.notify_all();
  state().changed.wait(lock, [] { return state().hanging == 0; });
}

void FakeNames::waitForHanging() {
  std::unique_lock lock(state().mutex);
  state().changed.wait(lock, [] { return state().hanging > 0; });
}

}  // namespace seedmote::support

extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** result) {
  using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
  static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "getaddrinfo"));
  return seedmote::support::isReal(name) ? real(name, service, hints, result) : EAI_NONAME;
}
