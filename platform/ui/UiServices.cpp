#include "platform/ui/UiServices.h"

#include <cstdio>
#include <cstdlib>

namespace seedmote::platform {

namespace {
const UiServices* installed = nullptr;
}  // namespace

const UiServices& uiServices() {
  if (installed == nullptr) {
    std::fputs("seedmote: no user interface services are installed\n", stderr);
    std::abort();
  }
  return *installed;
}

UiServicesScope::UiServicesScope(const UiServices& services) : services_(services) {
  installed = &services_;
}

UiServicesScope::~UiServicesScope() {
  installed = nullptr;
}

}  // namespace seedmote::platform
