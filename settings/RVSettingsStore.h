#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace seedmote {

class RVSettingsStore;

// What a control of the settings screen holds when it tells of a change.
struct ChangedControl {
  std::string text;  // of a text field
  bool on = false;   // of a switch
};

struct SettingRow {
  using Selector = void (RVSettingsStore::*)(const ChangedControl&);

  std::string settingName;
  Selector selector = nullptr;  // the change operation; null for a row that cannot be edited
};

struct SettingSection {
  std::string sectionName;
  std::vector<SettingRow> settings;
};

// The user's settings in the stored defaults: each is a preference specifier, a dictionary stored under its
// title with the current value in "Value". Format of the defaults: the property list "Root.plist" of a
// settings bundle, its specifiers under "PreferenceSpecifiers". Main thread.
class RVSettingsStore {
 public:
  // `bundlePath`: the settings bundle's folder; absent when there is none.
  explicit RVSettingsStore(std::optional<std::string> bundlePath);

  // Builds settingsArray() and stores the default of each setting that is missing or is to be updated.
  void loadUserSetting();

  const std::vector<SettingSection>& settingsArray() const { return settingsArray_; }

  // Each stores the control's value and says in "ServerChanged" whether the daemon must be connected anew.
  void ipaddressChanged(const ChangedControl& control);
  void portChanged(const ChangedControl& control);
  void usernameChanged(const ChangedControl& control);
  void passwordChanged(const ChangedControl& control);
  void usesslChanged(const ChangedControl& control);
  void timeoutChanged(const ChangedControl& control);

  // The bundle beside the program in `applicationDirectory`, installed or in the build tree; absent when
  // there is none.
  static std::optional<std::string> findBundle(std::string_view applicationDirectory);

 private:
  std::optional<std::string> bundlePath_;
  std::vector<SettingSection> settingsArray_;
};

}  // namespace seedmote
