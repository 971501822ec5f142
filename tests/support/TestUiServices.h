#pragma once

#include "platform/ui/Alerts.h"
#include "platform/ui/Pasteboard.h"
#include "platform/ui/UiServices.h"
#include "platform/ui/UrlOpener.h"

namespace seedmote::support {

// The in-memory twins of what a program with a window has, installed for this object's lifetime. Beside
// TestServices.
struct TestUiServices {
  platform::MemoryPasteboard pasteboard;
  platform::MemoryUrlOpener urlOpener;
  platform::Alerts alerts;

 private:
  platform::UiServicesScope scope_{{pasteboard, urlOpener, alerts}};
};

}  // namespace seedmote::support
