#include "app/HandOver.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QStringList>
#include <QVariantMap>
#include <filesystem>
#include <system_error>

#include "app/DesktopService.h"
#include "app/SessionBus.h"
#include "platform/ui/HandedOver.h"

namespace seedmote {

namespace {

const QString& connectionName() {
  static const QString name = QStringLiteral("seedmote-hand-over");
  return name;
}

// The launcher's permission to come to the front goes to the window that is there.
QVariantMap platformData() {
  QVariantMap data;
  for (const auto& [variable, key] : {std::pair{"XDG_ACTIVATION_TOKEN", "activation-token"},
                                      std::pair{"DESKTOP_STARTUP_ID", "desktop-startup-id"}}) {
    if (!qEnvironmentVariableIsEmpty(variable)) {
      data.insert(QString::fromLatin1(key), qEnvironmentVariable(variable));
    }
  }
  return data;
}

QDBusMessage callFor(const std::vector<std::string>& uris) {
  QDBusMessage call = QDBusMessage::createMethodCall(
      QString::fromLatin1(DesktopService::kName), QString::fromLatin1(DesktopService::kPath),
      QString::fromLatin1(DesktopService::kInterface),
      uris.empty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
  call.setAutoStartService(false);  // else the bus would start the program that this one is about to be
  if (!uris.empty()) {
    QStringList list;
    for (const std::string& uri : uris) {
      list << QString::fromStdString(uri);
    }
    call << list;
  }
  return call << platformData();
}

HandOver::Result resultOf(const QDBusMessage& reply) {
  if (reply.type() == QDBusMessage::ReplyMessage) {
    return {HandOver::Outcome::taken, {}};
  }
  const QString error = reply.errorName();
  const bool nobody = error == u"org.freedesktop.DBus.Error.ServiceUnknown" ||
                      error == u"org.freedesktop.DBus.Error.NameHasNoOwner" ||
                      error == u"org.freedesktop.DBus.Error.Disconnected";
  return nobody ? HandOver::Result{}
                : HandOver::Result{HandOver::Outcome::refused, reply.errorMessage().toStdString()};
}

// A Seedmote that ends in the middle of a call answers nothing either, and has left its name.
HandOver::Result send(const QDBusConnection& bus, const QDBusMessage& call) {
  QElapsedTimer elapsed;
  elapsed.start();
  for (qint64 left = HandOver::kPatience; left > 0; left = HandOver::kPatience - elapsed.elapsed()) {
    const QDBusMessage reply = bus.call(call, QDBus::Block, static_cast<int>(left));
    if (reply.errorName() != u"org.freedesktop.DBus.Error.NoReply") {
      return resultOf(reply);
    }
  }
  return {HandOver::Outcome::noAnswer, {}};
}

// A file's name may have a colon in it, too.
bool isLink(const std::string& given) {
  const std::string scheme = platform::schemeOf(given);
  return scheme == "magnet" || scheme == "file" ||
         (!scheme.empty() && given.compare(scheme.size(), 3, "://") == 0);
}

}  // namespace

HandOver::Result HandOver::give(const std::vector<std::string>& uris) {
  const std::optional<QString> address = SessionBus::address();
  if (!address) {
    return {};
  }
  Result result;
  {
    const QDBusConnection bus = QDBusConnection::connectToBus(*address, connectionName());
    if (bus.isConnected()) {
      result = send(bus, callFor(uris));
    }
  }
  QDBusConnection::disconnectFromBus(connectionName());
  return result;
}

// The bytes of a path need not be UTF-8, and stay what they are.
std::string HandOver::uriOf(const std::string& given) {
  if (isLink(given)) {
    return given;
  }
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(given, error);
  const std::string whole = error ? given : path.string();
  return "file://" + QByteArray::fromStdString(whole).toPercentEncoding("/").toStdString();
}

}  // namespace seedmote
