#include "client/RVDownload.h"

#include <atomic>
#include <utility>

#include "platform/core/Http.h"
#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/core/Shared.h"
#include "platform/core/Threads.h"

namespace seedmote {

using platform::log;

namespace {
constexpr double kLookEvery = 1;  // seconds
}

struct RVDownload::State {
  void finish(platform::HttpAnswer answer) {
    if (answer.error != platform::HttpError::none) {
      log("Error = %@", answer.message);
    } else if (answer.body.empty()) {
      log("Nothing was downloaded.");
    } else {
      const std::size_t length = answer.body.size();
      resData.set(std::move(answer.body));
      log("Download finished, lenght = %ld\n", length);
      blocking = false;
    }
  }

  std::atomic<bool> blocking{true};
  platform::Shared<std::optional<std::string>> resData;
};

RVDownload::RVDownload() : state_(std::make_shared<State>()) {}

void RVDownload::downloadFile(const std::string& url) {
  log("Download started");
  state_->blocking = true;
  platform::HttpRequest request;
  request.url = url;
  platform::services().threads.start(
      "download", [state = state_, request] { state->finish(platform::services().http.exchange(request)); });
}

std::optional<std::string> RVDownload::getDownloadFile() {
  const platform::Services& services = platform::services();
  while (state_->blocking) {
    if (!services.main.wait([&services] { return services.threads.sleep(kLookEvery); })) {
      break;
    }
    log("waiting for downloading file\n");
  }
  return resData();
}

bool RVDownload::blocking() const {
  return state_->blocking;
}

std::optional<std::string> RVDownload::resData() const {
  return state_->resData.get();
}

}  // namespace seedmote
