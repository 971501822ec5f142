#include "app/SessionBus.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <QFile>
#include <QStringList>
#include <cerrno>
#include <cstddef>
#include <cstring>

namespace seedmote {

namespace {

constexpr const char* kVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr const char* kNoBus = "disabled:";  // what every D-Bus library takes for a bus that is not there

struct Place {
  sockaddr_un name{};
  socklen_t length = 0;
};

// Of the first address, when that is a socket of this machine.
std::optional<Place> placeOf(const QString& addresses) {
  const QString first = addresses.section(u';', 0, 0);
  if (!first.startsWith(u"unix:")) {
    return std::nullopt;
  }
  for (const QString& part : first.mid(5).split(u',')) {
    const bool isAbstract = part.startsWith(u"abstract=");
    if (!isAbstract && !part.startsWith(u"path=")) {
      continue;
    }
    const QByteArray path = QByteArray::fromPercentEncoding(part.section(u'=', 1).toUtf8());
    const QByteArray name = isAbstract ? QByteArray(1, '\0') + path : path + '\0';
    Place place;
    if (static_cast<std::size_t>(name.size()) > sizeof(place.name.sun_path)) {
      return std::nullopt;
    }
    place.name.sun_family = AF_UNIX;
    std::memcpy(place.name.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    place.length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path)) + static_cast<socklen_t>(name.size());
    return place;
  }
  return std::nullopt;
}

// Whether nothing comes back for the first words of D-Bus's protocol, to which every bus has an answer.
bool isSilent(int connection, const Place& place, std::chrono::milliseconds patience) {
  if (connect(connection, reinterpret_cast<const sockaddr*>(&place.name), place.length) != 0) {
    return errno == EAGAIN;  // more wait already than it has room for
  }
  const QByteArray words =
      QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(getuid()).toHex() + "\r\n";
  send(connection, words.constData(), static_cast<std::size_t>(words.size()), MSG_NOSIGNAL);
  pollfd answer{connection, POLLIN, 0};
  return poll(&answer, 1, static_cast<int>(patience.count())) == 0;
}

std::optional<QString> addressOfSession() {
  const QString named = qEnvironmentVariable(kVariable);
  if (!named.isEmpty()) {
    const bool isNone = named.startsWith(u"autolaunch:") || named == QLatin1String(kNoBus);
    return isNone ? std::nullopt : std::optional(named);
  }
  const QByteArray socket = qgetenv("XDG_RUNTIME_DIR") + "/bus";
  if (!socket.startsWith('/') || !QFile::exists(QFile::decodeName(socket))) {
    return std::nullopt;
  }
  return QStringLiteral("unix:path=") + QString::fromLatin1(socket.toPercentEncoding("/", "~"));
}

}  // namespace

// A bus is never started for our sake, as "autolaunch:" would.
std::optional<QString> SessionBus::address() {
  return qEnvironmentVariableIsEmpty("SEEDMOTE_ALONE") ? addressOfSession() : std::nullopt;
}

bool SessionBus::leaveWhenDeaf(std::chrono::milliseconds patience) {
  const std::optional<QString> address = addressOfSession();
  const std::optional<Place> place = address ? placeOf(*address) : std::nullopt;
  if (!place) {
    return false;
  }
  const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  const bool isDeaf = connection >= 0 && isSilent(connection, *place, patience);
  if (connection >= 0) {
    close(connection);
  }
  if (isDeaf) {
    qputenv(kVariable, kNoBus);
  }
  return isDeaf;
}

}  // namespace seedmote
