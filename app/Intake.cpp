#include "app/Intake.h"

#include <utility>

#include "app/InboxCourier.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"

namespace seedmote {

using platform::MainThread;
using platform::services;

Intake::Intake()
    : inbox_(platform::standardInboxFolder(), [this] {
        services().main.post(
            [this] {
              if (courier_) {
                courier_->look();
              }
            },
            MainThread::Lane::ordinary, "inbox");
      }) {}

Intake::~Intake() = default;

void Intake::take(const std::vector<std::string>& given) {
  tell(inbox_.take(given));
}

void Intake::tell(std::vector<platform::Refusal> refusals) {
  if (!refusals.empty()) {
    services().main.post([refusals = std::move(refusals)] { InboxCourier::tell(refusals); },
                         MainThread::Lane::ordinary, "inbox");
  }
}

void Intake::deliverTo(RVAppDelegate& delegate) {
  courier_ = std::make_unique<InboxCourier>(inbox_, delegate);
}

void Intake::stopDelivering() {
  courier_.reset();
}

}  // namespace seedmote
