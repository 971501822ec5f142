#include "tests/support/FakeNames.h"

#include <dlfcn.h>
#include <netdb.h>

#include <condition_variable>
#include <cstring>
#include <mutex>
#include <set>

namespace seedmote::support {
namespace {

struct State {
  std::mutex mutex;
  std::condition_variable changed;
  bool on = false;
  std::set<std::string> known;
  std::set<std::string> slow;
  int hanging = 0;
};

State& state() {
  static State* const only = new State;  // a look-up may outlive main()
  return *only;
}

bool isPlain(const char* name) {
  return !name || std::strcmp(name, "localhost") == 0 || !std::strpbrk(name, "ghijklmnopqrstuvwxyz");
}

// The name to ask the real service for; null when the look-up fails.
const char* substituteFor(const char* name) {
  State& now = state();
  std::unique_lock lock(now.mutex);
  if (!now.on || isPlain(name)) {
    return name;
  }
  if (now.slow.count(name)) {
    ++now.hanging;
    now.changed.notify_all();
    now.changed.wait(lock, [&] { return !now.on; });
    --now.hanging;
    now.changed.notify_all();
    return nullptr;
  }
  return now.known.count(name) ? "127.0.0.1" : nullptr;
}

}  // namespace

FakeNames::FakeNames() {
  const std::lock_guard lock(state().mutex);
  state().on = true;
}

FakeNames::~FakeNames() {
  std::unique_lock lock(state().mutex);
  state().on = false;
  state().known.clear();
  state().slow.clear();
  state().changed.notify_all();
  state().changed.wait(lock, [] { return state().hanging == 0; });
}

void FakeNames::resolveToLoopback(const std::string& name) {
  const std::lock_guard lock(state().mutex);
  state().known.insert(name);
}

void FakeNames::hang(const std::string& name) {
  const std::lock_guard lock(state().mutex);
  state().slow.insert(name);
}

void FakeNames::waitForHanging() {
  std::unique_lock lock(state().mutex);
  state().changed.wait(lock, [] { return state().hanging > 0; });
}

}  // namespace seedmote::support

extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** result) {
  using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
  static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "getaddrinfo"));
  const char* const asked = seedmote::support::substituteFor(name);
  return name && !asked ? EAI_NONAME : real(asked, service, hints, result);
}
