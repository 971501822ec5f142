#pragma once

#include <memory>

#include "platform/core/Clock.h"
#include "platform/core/Device.h"
#include "platform/core/Http.h"
#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Screen.h"
#include "platform/core/ScriptedHttp.h"
#include "platform/core/Services.h"
#include "platform/core/Threads.h"
#include "platform/core/Timers.h"
#include "platform/core/UserDefaults.h"

namespace seedmote::support {

// The in-memory twins of the platform, installed for this object's lifetime, with a clock that the test
// drives. An HTTP service of the test's own may stand in for the scripted one.
class TestServices final {
 public:
  explicit TestServices(platform::Http* http = nullptr, platform::Idiom idiom = platform::Idiom::tablet);
  ~TestServices();
  TestServices(const TestServices&) = delete;
  TestServices& operator=(const TestServices&) = delete;

  // Stores a preference specifier with this "Value".
  void setSetting(const char* key, const char* value);

  // Runs the event loop until `done`; a test that never gets there is ended by ctest.
  void spinUntil(const std::function<bool()>& done);
  // Runs what is queued for the main thread now; nothing is after quit().
  void settle();
  // Waits until every background thread has ended, the event loop running.
  void finishThreads();

  platform::ManualClock clock;
  platform::MainThread main;
  platform::Threads threads{clock, main};
  platform::Timers timers{clock, main};
  platform::ScriptedHttp scripted;
  platform::Http& http;
  platform::MemoryUserDefaults defaults;
  platform::Device device;
  platform::Screen screen;

 private:
  platform::ServicesScope scope_{{clock, main, timers, threads, http, defaults, device, screen}};
};

}  // namespace seedmote::support
