#include "widgets/RaisedMessage.h"

#include <exception>

#include "platform/core/MainThread.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

void showWhatIsRaised(platform::MainThread& main) {
  main.setRaisedHandler([](const std::exception_ptr&) {
    if (OvProgressHUD::isVisible()) {
      OvProgressHUD::dismissWithError("The daemon's answer could not be used.\nPlease try again.");
    }
  });
}

}  // namespace seedmote
