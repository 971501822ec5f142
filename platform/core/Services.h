#pragma once

namespace seedmote::platform {

class Clock;
class MainThread;
class Timers;
class Threads;
class Http;
class UserDefaults;
class Device;
class Screen;

// The operating system as the program sees it. Main chooses the real services, tests the in-memory ones.
struct Services {
  Clock& clock;
  MainThread& main;
  Timers& timers;
  Threads& threads;
  Http& http;
  UserDefaults& defaults;
  Device& device;
  Screen& screen;
};

// The services in use. Any thread; ends the program with a message when none are installed.
const Services& services();

// Installs services for its lifetime. One at a time.
class ServicesScope final {
 public:
  explicit ServicesScope(const Services& services);
  ~ServicesScope();
  ServicesScope(const ServicesScope&) = delete;
  ServicesScope& operator=(const ServicesScope&) = delete;

 private:
  Services services_;
};

}  // namespace seedmote::platform
