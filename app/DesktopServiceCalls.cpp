#include "app/DesktopServiceCalls.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QThread>
#include <algorithm>
#include <exception>
#include <utility>

#include "app/SessionBus.h"
#include "platform/core/Log.h"
#include "platform/core/MainThread.h"

namespace seedmote {

using platform::MainThread;

namespace {

constexpr int kReleasePatience = 300;  // milliseconds

std::string tokenIn(const QVariantMap& platformData) {
  const QString token = platformData.value(QStringLiteral("activation-token")).toString();
  return (token.isEmpty() ? platformData.value(QStringLiteral("desktop-startup-id")).toString() : token)
      .toStdString();
}

}  // namespace

DesktopServiceCalls::DesktopServiceCalls(DesktopService::Callbacks callbacks, MainThread& main)
    : callbacks_(std::move(callbacks)), main_(main) {}

DesktopServiceCalls::~DesktopServiceCalls() = default;

// The object stands on the bus before the name does: who finds the name finds the object.
bool DesktopServiceCalls::connectToBus() {
  if (connected_) {
    return true;
  }
  const std::optional<QString> address = SessionBus::address();
  if (!address) {
    return false;
  }
  QDBusConnection bus = QDBusConnection::connectToBus(*address, connectionName_);
  connected_ = bus.isConnected() && bus.registerObject(QString::fromLatin1(DesktopService::kPath), this,
                                                       QDBusConnection::ExportAllSlots);
  if (!connected_) {
    QDBusConnection::disconnectFromBus(connectionName_);
  }
  return connected_;
}

DesktopService::Claim DesktopServiceCalls::askForName() {
  using Interface = QDBusConnectionInterface;
  if (!connectToBus()) {
    return DesktopService::Claim::noBus;
  }
  const QDBusReply<Interface::RegisterServiceReply> reply =
      QDBusConnection(connectionName_)
          .interface()
          ->registerService(QString::fromLatin1(DesktopService::kName), Interface::DontQueueService,
                            Interface::DontAllowReplacement);
  if (!reply.isValid()) {
    platform::log("The session bus gives no name: %@\n", reply.error().message().toStdString());
    return DesktopService::Claim::noBus;
  }
  return reply.value() == Interface::ServiceRegistered ? DesktopService::Claim::mine
                                                       : DesktopService::Claim::elsewhere;
}

void DesktopServiceCalls::claim() {
  claimed_ = askForName();
}

// A bus that hangs must not keep the program from ending.
void DesktopServiceCalls::release() {
  if (claimed_.exchange(DesktopService::Claim::noBus) == DesktopService::Claim::mine) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReleaseName"));
    call << QString::fromLatin1(DesktopService::kName);
    QDBusConnection(connectionName_).call(call, QDBus::Block, kReleasePatience);
  }
}

// While the name is given back calls still come in; they are queued before the last step.
void DesktopServiceCalls::finish() {
  release();
  const auto end = [this] {
    QDBusConnection::disconnectFromBus(connectionName_);
    thread()->quit();
  };
  QMetaObject::invokeMethod(this, end, Qt::QueuedConnection);
}

void DesktopServiceCalls::Activate(const QVariantMap& platformData) {
  main_.post([activate = callbacks_.activate, token = tokenIn(platformData)] { activate(token); },
             MainThread::Lane::overlay, "Activate");
}

void DesktopServiceCalls::Open(const QStringList& uris, const QVariantMap& platformData) {
  std::vector<std::string> list;
  for (const QString& uri : uris) {
    list.push_back(uri.toStdString());
  }
  try {
    callbacks_.open(std::move(list));
  } catch (const std::exception& problem) {
    platform::log("Raised in Open: %@\n", problem.what());
    sendErrorReply(QDBusError::Failed, QString::fromUtf8(problem.what()));
  }
  Activate(platformData);
}

void DesktopServiceCalls::ActivateAction(const QString& name, const QVariantList& /*parameters*/,
                                         const QVariantMap& platformData) {
  const std::string action = name.toStdString();
  if (std::ranges::find(callbacks_.actions, action) == callbacks_.actions.end()) {
    sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no action \"%1\"").arg(name));
    return;
  }
  main_.post([run = callbacks_.action, action, token = tokenIn(platformData)] { run(action, token); },
             MainThread::Lane::ordinary, "ActivateAction");
}

}  // namespace seedmote
