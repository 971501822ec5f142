#include "app/StorageNotice.h"

#include <string>

#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/core/UserDefaults.h"
#include "platform/ui/Alerts.h"
#include "platform/ui/UiServices.h"

namespace seedmote {

namespace {

void tell(const std::string& problem) {
  platform::uiServices().alerts.show(
      {.title = "Settings", .message = problem, .buttons = {"OK"}, .dismissed = nullptr});
}

}  // namespace

StorageNotice::StorageNotice() {
  platform::services().defaults.onProblem([](const std::string& problem) {
    platform::services().main.post([problem] { tell(problem); }, platform::MainThread::Lane::ordinary,
                                   "settings");
  });
}

StorageNotice::~StorageNotice() {
  platform::services().defaults.onProblem({});
}

}  // namespace seedmote
