#pragma once

namespace seedmote::platform {

class Pasteboard;
class UrlOpener;
class Alerts;

// What the system gives a program with a window, beside Services. Main chooses the real ones, tests the
// in-memory ones.
struct UiServices {
  Pasteboard& pasteboard;
  UrlOpener& urlOpener;
  Alerts& alerts;
};

// The services in use. Main thread; ends the program with a message when none are installed.
const UiServices& uiServices();

// Installs services for its lifetime. One at a time.
class UiServicesScope final {
 public:
  explicit UiServicesScope(const UiServices& services);
  ~UiServicesScope();
  UiServicesScope(const UiServicesScope&) = delete;
  UiServicesScope& operator=(const UiServicesScope&) = delete;

 private:
  UiServices services_;
};

}  // namespace seedmote::platform
