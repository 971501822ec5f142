#include "app/DesktopService.h"

#include <utility>

#include "app/DesktopServiceCalls.h"
#include "app/SessionBus.h"
#include "platform/core/Services.h"

namespace seedmote {

DesktopService::DesktopService(Callbacks callbacks)
    : calls_(std::make_unique<DesktopServiceCalls>(std::move(callbacks), platform::services().main)) {
  thread_.setObjectName(QStringLiteral("bus"));
  calls_->moveToThread(&thread_);
}

DesktopService::~DesktopService() {
  if (thread_.isRunning()) {
    QMetaObject::invokeMethod(calls_.get(), "finish", Qt::QueuedConnection);
    thread_.wait();
  }
}

DesktopService::Claim DesktopService::claim() {
  if (!SessionBus::address()) {
    return Claim::noBus;
  }
  thread_.start();
  QMetaObject::invokeMethod(calls_.get(), "claim", Qt::BlockingQueuedConnection);
  return calls_->claimed();
}

void DesktopService::release() {
  if (thread_.isRunning()) {
    QMetaObject::invokeMethod(calls_.get(), "release", Qt::QueuedConnection);
  }
}

}  // namespace seedmote
