#include "platform/core/PlistUserDefaults.h"

#include <sys/stat.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "platform/core/Log.h"

namespace seedmote::platform {
namespace {

constexpr qint64 kLargestFile = qint64{16} << 20;
constexpr auto kOwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

QString toQString(const std::string& path) {
  return QFile::decodeName(QByteArray::fromStdString(path));
}

// Makes the missing folders with mode 0700; empty, or what went wrong.
std::string makeFolder(const QString& folder) {
  if (folder.isEmpty() || QFileInfo::exists(folder)) return {};
  if (std::string trouble = makeFolder(QFileInfo(folder).path()); !trouble.empty()) return trouble;
  if (mkdir(QFile::encodeName(folder).constData(), S_IRWXU) == 0 || errno == EEXIST) return {};
  return std::generic_category().message(errno);
}

// The file's bytes; empty with a reason when it cannot be read.
QByteArray readFile(const QString& path, std::string& reason) {
  const QFileInfo info(path);
  QFile file(path);
  if (!info.isFile()) {  // a pipe would hold the program for ever
    reason = "it is not a file";
  } else if (info.size() > kLargestFile) {
    reason = "it is too large";
  } else if (!file.open(QIODevice::ReadOnly)) {
    reason = file.errorString().toStdString();
  } else {
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) reason = file.errorString().toStdString();
    return bytes;
  }
  return {};
}

std::string unusedName(const std::string& path) {
  const std::string first = path + ".broken";
  std::string name = first;
  for (int number = 2; QFileInfo::exists(toQString(name)); ++number) name = format("%@.%d", first, number);
  return name;
}

}  // namespace

PlistUserDefaults::PlistUserDefaults(std::string path) : path_(std::move(path)) {
  load();
}

void PlistUserDefaults::load() {
  const QString path = toQString(path_);
  if (!QFileInfo::exists(path)) return;
  std::string reason;
  const QByteArray bytes = readFile(path, reason);
  if (!reason.empty()) return setAside(reason);
  PropertyList list =
      PropertyList::parse({bytes.constData(), static_cast<std::size_t>(bytes.size())}, &reason);
  if (list.dictionary() == nullptr) return setAside(reason.empty() ? "it is no dictionary" : reason);
  stored_ = *list.dictionary();
  replaceAll(stored_);
  if (QFile::permissions(path) & ~(kOwnerOnly | QFileDevice::ReadUser | QFileDevice::WriteUser)) {
    QFile::setPermissions(path, kOwnerOnly);
  }
}

void PlistUserDefaults::setAside(const std::string& reason) {
  const std::string aside = unusedName(path_);
  if (std::rename(path_.c_str(), aside.c_str()) == 0) {
    loadProblem_ =
        format("The settings in %@ cannot be read: %@. The file is kept as %@.", path_, reason, aside);
  } else {
    const std::string why = std::generic_category().message(errno);
    loadProblem_ = format(
        "The settings in %@ cannot be read: %@. It cannot be set aside either (%@), so changes are not "
        "stored.",
        path_, reason, why);
    mayOverwrite_ = false;
  }
  setProblem(loadProblem_);
  log("%@", loadProblem_);
}

bool PlistUserDefaults::synchronize() {
  const std::lock_guard lock(writing_);
  PropertyList::Dictionary values = snapshot();
  if (values == stored_ && QFileInfo::exists(toQString(path_))) return true;
  if (!mayOverwrite_) return false;
  const std::string trouble = write(values);
  if (!trouble.empty()) {
    setProblem(format("The settings cannot be stored in %@: %@.", path_, trouble));
    log("%@", problem());
    return false;
  }
  stored_ = std::move(values);
  setProblem(loadProblem_);
  return true;
}

// Empty, or what went wrong.
std::string PlistUserDefaults::write(const PropertyList::Dictionary& values) const {
  const QString path = toQString(path_);
  if (std::string trouble = makeFolder(QFileInfo(path).absolutePath()); !trouble.empty()) return trouble;
  const std::string xml = PropertyList(values).toXml();
  if (PropertyList::parse(xml) != PropertyList(values)) return "a value cannot be written as XML";
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(kOwnerOnly) ||
      file.write(xml.data(), static_cast<qint64>(xml.size())) != static_cast<qint64>(xml.size()) ||
      !file.commit()) {
    return file.errorString().toStdString();
  }
  return {};
}

std::string standardDefaultsPath() {
  QString folder = qEnvironmentVariable("XDG_CONFIG_HOME");
  if (!QDir::isAbsolutePath(folder)) folder = QDir::homePath() + QStringLiteral("/.config");
  return QFile::encodeName(folder + QStringLiteral("/seedmote/defaults.plist")).toStdString();
}

}  // namespace seedmote::platform
