#include "settings/RVSettingsStore.h"

#include <QFile>
#include <filesystem>
#include <system_error>
#include <utility>

#include "client/RVUtility.h"
#include "platform/core/Http.h"
#include "platform/core/Log.h"
#include "platform/core/Services.h"
#include "platform/core/UserDefaults.h"

namespace seedmote {
namespace {

using platform::PropertyList;
using Dictionary = PropertyList::Dictionary;
namespace fs = std::filesystem;

enum class Dump { no, yes };

platform::UserDefaults& defaults() {
  return platform::services().defaults;
}

std::vector<SettingSection> makeSettingsArray() {
  using Store = RVSettingsStore;
  return {{"Server Preferences",
           {{"IP Address", &Store::ipaddressChanged},
            {"Port", &Store::portChanged},
            {"Username", &Store::usernameChanged},
            {"Password", &Store::passwordChanged},
            {"UseSSL", &Store::usesslChanged},
            {"Timeout", &Store::timeoutChanged}}},
          {"About", {{"Author"}, {"Version"}}}};
}

Dictionary findMissing(const std::vector<SettingSection>& sections) {
  Dictionary missing;
  for (const SettingSection& section : sections) {
    for (const SettingRow& row : section.settings) {
      if (defaults().object(row.settingName).isAbsent()) missing.insert_or_assign(row.settingName, "");
    }
  }
  return missing;
}

PropertyList readRoot(const std::string& bundlePath) {
  const std::string path = bundlePath + "/Root.plist";
  QFile file(QFile::decodeName(path.c_str()));
  std::string error;
  PropertyList root;
  if (file.open(QIODevice::ReadOnly)) {
    root = PropertyList::parse(file.readAll().toStdString(), &error);
  } else {
    error = file.errorString().toStdString();
  }
  if (root.isAbsent()) platform::log("The default settings in %@ cannot be read: %@", path, error);
  return root;
}

void storeDefault(const PropertyList& specifier, const Dictionary& missing) {
  const std::string* title = specifier["Title"].text();
  if (title == nullptr) return;
  if (!missing.contains(*title) && specifier["Update"] != PropertyList("YES")) return;
  Dictionary stored = *specifier.dictionary();
  stored.erase("Value");
  if (!specifier["DefaultValue"].isAbsent()) stored.emplace("Value", specifier["DefaultValue"]);
  defaults().setObject(*title, std::move(stored));
}

Dictionary storedSpecifier(std::string_view key) {
  const PropertyList stored = defaults().object(key);
  return stored.dictionary() == nullptr ? Dictionary() : *stored.dictionary();
}

void change(std::string_view key, const std::string& value, const char* serverChanged, Dump dump) {
  Dictionary specifier = storedSpecifier(key);
  specifier.insert_or_assign("Value", value);
  // Without its specifier the password would not be known as one when it is shown or logged.
  if (key == "Password") specifier.try_emplace("ValueType", "PasswordBox");
  if (dump == Dump::yes) RVUtility::dumpDictionary(specifier);
  defaults().setObject(key, std::move(specifier));
  defaults().setObject("ServerChanged", serverChanged);
  defaults().synchronize();
  platform::services().http.userActed();
}

}  // namespace

RVSettingsStore::RVSettingsStore(std::optional<std::string> bundlePath)
    : bundlePath_(std::move(bundlePath)) {}

void RVSettingsStore::loadUserSetting() {
  settingsArray_ = makeSettingsArray();
  const Dictionary missing = findMissing(settingsArray_);
  platform::log("missing settings = %@", PropertyList(missing).description());
  if (!bundlePath_) {
    platform::log("Could not find Settings.bundle");
    return;
  }
  const PropertyList root = readRoot(*bundlePath_);
  if (const PropertyList::Array* specifiers = root["PreferenceSpecifiers"].array()) {
    for (const PropertyList& specifier : *specifiers) storeDefault(specifier, missing);
  }
  defaults().synchronize();
}

void RVSettingsStore::ipaddressChanged(const ChangedControl& control) {
  change("IP Address", control.text, "YES", Dump::yes);
  platform::log("ipaddressChanged: %@", control.text);
}

void RVSettingsStore::portChanged(const ChangedControl& control) {
  change("Port", control.text, "YES", Dump::no);
  platform::log("portChanged: %@", control.text);
}

void RVSettingsStore::usernameChanged(const ChangedControl& control) {
  change("Username", control.text, "YES", Dump::yes);
  platform::log("usernameChanged: %@", control.text);
}

void RVSettingsStore::passwordChanged(const ChangedControl& control) {
  change("Password", control.text, "YES", Dump::yes);
  platform::log("passwordChanged: %@", platform::Secret{control.text});
}

void RVSettingsStore::usesslChanged(const ChangedControl& control) {
  change("UseSSL", control.on ? "True" : "False", "YES", Dump::no);
}

// Takes effect with the next request without a new connection, so it lowers the flag. Its line in the log
// is the port's.
void RVSettingsStore::timeoutChanged(const ChangedControl& control) {
  change("Timeout", control.text, "NO", Dump::no);
  platform::log("portChanged: %@", control.text);
}

std::optional<std::string> RVSettingsStore::findBundle(std::string_view applicationDirectory) {
  const fs::path start(applicationDirectory);
  for (const char* up : {"..", "../.."}) {
    const fs::path bundle = (start / up / "share/seedmote/RVSettingsData.bundle").lexically_normal();
    std::error_code ignored;
    if (fs::is_directory(bundle, ignored)) return bundle.string();
  }
  return std::nullopt;
}

}  // namespace seedmote
