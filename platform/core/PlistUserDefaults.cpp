#include "platform/core/PlistUserDefaults.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "platform/core/Log.h"

namespace seedmote::platform {
namespace {

namespace fs = std::filesystem;

std::string unusedName(const std::string& path) {
  const std::string first = path + ".broken";
  std::string name = first;
  std::error_code ignored;
  for (int number = 2; fs::exists(fs::symlink_status(name, ignored)); ++number) {
    name = format("%@.%d", first, number);
  }
  return name;
}

}  // namespace

PlistUserDefaults::PlistUserDefaults(std::string path) : file_(std::move(path)) {
  const PrivateFile::Turn turn(file_);
  read();
}

// Without a file, what was stored last is kept to be written again.
void PlistUserDefaults::read() {
  const std::optional<PrivateFile::Identity> identity = file_.identity();
  if (identity == seen_) return;
  seen_ = identity;
  mayOverwrite_ = true;
  if (!identity) return;
  const PrivateFile::Reading reading = file_.read();
  std::string reason = reading.trouble;
  const PropertyList list = reading.bytes ? PropertyList::parse(*reading.bytes, &reason) : PropertyList();
  if (list.dictionary() != nullptr) {
    takeOver(stored_, *list.dictionary());
    stored_ = *list.dictionary();
    file_.closeToOthers();
    seen_ = file_.identity();
  } else if (reading.isPassing) {
    mayOverwrite_ = false;
    seen_.reset();  // so that it is read at the next occasion
    loadProblem_ = format("The settings in %@ cannot be read: %@.", path(), reason);
    fail(loadProblem_);
  } else {
    setAside(reason.empty() ? "it is no dictionary" : reason);
  }
}

void PlistUserDefaults::setAside(const std::string& reason) {
  const std::string aside = unusedName(path());
  if (std::rename(path().c_str(), aside.c_str()) == 0) {
    loadProblem_ =
        format("The settings in %@ cannot be read: %@. The file is kept as %@.", path(), reason, aside);
    seen_.reset();
  } else {
    const std::string why = std::generic_category().message(errno);
    loadProblem_ = format(
        "The settings in %@ cannot be read: %@. It cannot be set aside either (%@), so changes are not "
        "stored.",
        path(), reason, why);
    mayOverwrite_ = false;
  }
  fail(loadProblem_);
}

bool PlistUserDefaults::fail(const std::string& trouble) {
  setProblem(trouble);
  log("%@", trouble);
  return false;
}

bool PlistUserDefaults::isUpToDate() const {
  return seen_ && snapshot() == stored_ && file_.identity() == seen_;
}

bool PlistUserDefaults::store() {
  const std::lock_guard lock(writing_);
  if (isUpToDate()) return true;
  if (const std::string trouble = file_.makeFolder(); !trouble.empty()) {
    return fail(format("The settings cannot be stored in %@: %@.", path(), trouble));
  }
  const PrivateFile::Turn turn(file_);
  read();
  if (isUpToDate()) {
    setProblem(loadProblem_);
    return true;
  }
  return mayOverwrite_ && write(turn);
}

bool PlistUserDefaults::write(const PrivateFile::Turn& turn) {
  PropertyList::Dictionary values = snapshot();
  const std::string xml = PropertyList(values).toXml();
  const std::string trouble = PropertyList::parse(xml) == PropertyList(values)
                                  ? file_.replace(xml, turn)
                                  : "a value cannot be written as XML";
  if (!trouble.empty()) return fail(format("The settings cannot be stored in %@: %@.", path(), trouble));
  stored_ = std::move(values);
  seen_ = file_.identity();
  setProblem(loadProblem_);
  return true;
}

std::string standardDefaultsPath() {
  QString folder = qEnvironmentVariable("XDG_CONFIG_HOME");
  if (!QDir::isAbsolutePath(folder)) folder = QDir::homePath() + QStringLiteral("/.config");
  return QFile::encodeName(folder + QStringLiteral("/seedmote/defaults.plist")).toStdString();
}

}  // namespace seedmote::platform
