#pragma once

#include "platform/ui/Alerts.h"
#include "platform/ui/InputMethodKeyboard.h"
#include "platform/ui/Pasteboard.h"
#include "platform/ui/UiServices.h"
#include "platform/ui/UrlOpener.h"

namespace seedmote {

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
