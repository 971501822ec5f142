#pragma once

#include "platform/core/MainThread.h"
#include "platform/ui/Alerts.h"
#include "platform/ui/InputMethodKeyboard.h"
#include "platform/ui/Pasteboard.h"
#include "platform/ui/UiServices.h"
#include "platform/ui/UrlOpener.h"

namespace seedmote {

// Tells the waits of `main` what goes on in the window: when something in front of the screens takes all
// touches, and when the window is to close. `alerts` outlives the last wait. Main thread.
void connectWaits(platform::MainThread& main, const platform::Alerts& alerts);

// What the system gives a program with a window, installed for this object's lifetime. Beside RealServices;
// made on the main thread after a QGuiApplication.
class RealUiServices final {
 public:
  RealUiServices();

 private:
  platform::SystemPasteboard pasteboard_;
  platform::SystemUrlOpener urlOpener_;
  platform::Alerts alerts_;
  platform::InputMethodKeyboard keyboard_;
  platform::UiServicesScope scope_{{pasteboard_, urlOpener_, alerts_}};
};

}  // namespace seedmote
