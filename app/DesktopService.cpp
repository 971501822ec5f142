#include "app/DesktopService.h"

#include <QByteArray>
#include <QFile>
#include <utility>

#include "app/DesktopServiceCalls.h"
#include "platform/core/Services.h"

namespace seedmote {

DesktopService::DesktopService(Callbacks callbacks)
    : calls_(std::make_unique<DesktopServiceCalls>(std::move(callbacks), platform::services().main)) {
  thread_.setObjectName(QStringLiteral("bus"));
  calls_->moveToThread(&thread_);
}

DesktopService::~DesktopService() {
  if (thread_.isRunning()) {
    QMetaObject::invokeMethod(calls_.get(), &DesktopServiceCalls::finish, Qt::QueuedConnection);
    thread_.wait();
  }
}

DesktopService::Claim DesktopService::claim() {
  Claim claim = Claim::noBus;
  if (busAddress()) {
    thread_.start();
    QMetaObject::invokeMethod(
        calls_.get(), [&] { claim = calls_->claim(); }, Qt::BlockingQueuedConnection);
  }
  return claim;
}

void DesktopService::release() {
  if (thread_.isRunning()) {
    QMetaObject::invokeMethod(calls_.get(), &DesktopServiceCalls::release, Qt::QueuedConnection);
  }
}

// A bus is never started for our sake, as "autolaunch:" would.
std::optional<QString> DesktopService::busAddress() {
  if (!qEnvironmentVariableIsEmpty("SEEDMOTE_ALONE")) {
    return std::nullopt;
  }
  const QString named = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  if (!named.isEmpty()) {
    return named.startsWith(u"autolaunch:") ? std::nullopt : std::optional(named);
  }
  const QByteArray socket = qgetenv("XDG_RUNTIME_DIR") + "/bus";
  if (!socket.startsWith('/') || !QFile::exists(QFile::decodeName(socket))) {
    return std::nullopt;
  }
  return QStringLiteral("unix:path=") + QString::fromLatin1(socket.toPercentEncoding("/", "~"));
}

}  // namespace seedmote
