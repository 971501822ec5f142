#include "settings/RVSettingsStore.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>

#include "platform/core/Log.h"
#include "tests/support/TestServices.h"

namespace seedmote {
namespace {

using platform::PropertyList;
using Dictionary = PropertyList::Dictionary;
namespace fs = std::filesystem;

class RVSettingsStoreTest : public testing::Test {
 protected:
  static RVSettingsStore shipped() {
    return RVSettingsStore(RVSettingsStore::findBundle(QCoreApplication::applicationDirPath().toStdString()));
  }
  RVSettingsStore withSpecifiers(PropertyList specifiers) {
    return withRoot(PropertyList(Dictionary{{"PreferenceSpecifiers", std::move(specifiers)}}).toXml());
  }
  RVSettingsStore withRoot(const std::string& bytes) {
    std::ofstream(folder_.filePath(QStringLiteral("Root.plist")).toStdString()) << bytes;
    return RVSettingsStore(folder_.path().toStdString());
  }
  std::optional<std::string> value(std::string_view key) const {
    return services_.defaults.object(key)["Value"].asText();
  }
  void expectNoPasswordInLog() const {
    for (const std::string& record : log_.records()) EXPECT_EQ(record.find("geheim"), std::string::npos);
  }

  support::TestServices services_;
  platform::LogRecorder log_;
  QTemporaryDir folder_;
};

TEST_F(RVSettingsStoreTest, AFirstStartStoresEveryDefault) {
  RVSettingsStore store = shipped();
  store.loadUserSetting();
  EXPECT_TRUE(
      log_.contains(R"(missing settings = {"Author" = ""; "IP Address" = ""; "Password" = ""; "Port" = ""; )"
                    R"("Timeout" = ""; "UseSSL" = ""; "Username" = ""; "Version" = "";})"));
  const struct {
    const char* key;
    const char* value;
    const char* type;
    std::optional<std::string> keyboard;
  } expected[]{{"IP Address", "127.0.0.1", "EditBox", "URL"},
               {"Port", "9091", "EditBox", "NumberPad"},
               {"Username", "", "EditBox", "Default"},
               {"Password", "", "PasswordBox", "Default"},
               {"UseSSL", "False", "CheckBox", std::nullopt},
               {"Timeout", "30", "EditBox", "NumberPad"},
               {"Author", "author@seedmote.example", "LinkLabel", std::nullopt},
               {"Version", SEEDMOTE_VERSION, "StaticLabel", std::nullopt}};
  for (const auto& e : expected) {
    const PropertyList stored = services_.defaults.object(e.key);
    EXPECT_EQ(stored["Value"].asText(), e.value) << e.key;
    EXPECT_EQ(stored["ValueType"].asText(), e.type) << e.key;
    EXPECT_EQ(stored["KeyboardType"].asText(), e.keyboard) << e.key;
    EXPECT_NE(stored["Label"].asText().value_or(""), "") << e.key;
  }
  EXPECT_EQ(services_.defaults.synchronized(), 1);
  EXPECT_TRUE(services_.defaults.object("ServerChanged").isAbsent());
}

TEST_F(RVSettingsStoreTest, SectionsAndRowsStandInTheirOrder) {
  RVSettingsStore store = shipped();
  store.loadUserSetting();
  store.loadUserSetting();
  std::string shown;
  for (const SettingSection& section : store.settingsArray()) {
    shown += section.sectionName + ":";
    for (const SettingRow& row : section.settings) shown += " " + row.settingName + (row.selector ? "*" : "");
    shown += "\n";
  }
  EXPECT_EQ(shown,
            "Server Preferences: IP Address* Port* Username* Password* UseSSL* Timeout*\n"
            "About: Author Version\n");
}

TEST_F(RVSettingsStoreTest, ALaterStartKeepsWhatIsStoredButForUpdates) {
  RVSettingsStore store = withSpecifiers(PropertyList::Array{
      Dictionary{{"Title", "Port"}, {"DefaultValue", "9091"}, {"Label", "new label"}},
      Dictionary{{"Title", "Timeout"}, {"DefaultValue", "30"}, {"Update", "YES"}, {"Extra", "kept"}},
      Dictionary{{"Title", "Username"}, {"DefaultValue", "me"}, {"Update", "NO"}},
      Dictionary{{"Title", "Unknown"}, {"DefaultValue", "never asked for"}},
      Dictionary{{"Title", "IP Address"}, {"Value", "stale"}},
      Dictionary{{"Type", "Group"}, {"DefaultValue", "no title"}},
      Dictionary{{"Title", PropertyList::integer(5)}},
      "no dictionary",
  });
  services_.setSetting("Port", "8080");
  services_.setSetting("Timeout", "99");
  store.loadUserSetting();
  EXPECT_EQ(services_.defaults.object("Port"),
            PropertyList(Dictionary{{"Title", "Port"}, {"Value", "8080"}}));
  EXPECT_EQ(value("Timeout"), "30");
  EXPECT_EQ(services_.defaults.object("Timeout")["Extra"].asText(), "kept");
  EXPECT_EQ(value("Username"), "me");
  EXPECT_TRUE(services_.defaults.object("Unknown").isAbsent());
  EXPECT_EQ(services_.defaults.object("IP Address"), PropertyList(Dictionary{{"Title", "IP Address"}}));
}

TEST_F(RVSettingsStoreTest, ABrokenOrMissingBundleIsSaidAndDoesNoHarm) {
  services_.setSetting("Port", "8080");
  for (const char* bytes : {"", "garbage", "<plist><dict/></plist>", "<plist><array/></plist>",
                            "<plist><dict><key>PreferenceSpecifiers</key><string/></dict></plist>"}) {
    withRoot(bytes).loadUserSetting();
  }
  RVSettingsStore("/nowhere").loadUserSetting();
  int said = 0;
  for (const std::string& record : log_.records())
    said += record.starts_with("The default settings in ") ? 1 : 0;
  EXPECT_EQ(said, 3);
  const int synchronized = services_.defaults.synchronized();
  RVSettingsStore none(std::nullopt);
  none.loadUserSetting();
  EXPECT_EQ(services_.defaults.synchronized(), synchronized) << "the store stays as it is";
  EXPECT_TRUE(log_.contains("Could not find Settings.bundle"));
  EXPECT_EQ(none.settingsArray().size(), 2u);
  EXPECT_EQ(value("Port"), "8080");
}

TEST_F(RVSettingsStoreTest, EachChangeStoresItsValueAndSaysWhetherToConnectAnew) {
  RVSettingsStore store = shipped();
  store.loadUserSetting();
  using Store = RVSettingsStore;
  const struct {
    SettingRow::Selector operation;
    const char* key;
    ChangedControl control;
    const char* stored;
    const char* serverChanged;
    bool dumped;
    std::string logged;
  } cases[]{
      {&Store::usernameChanged, "Username", {"me"}, "me", "YES", true, "usernameChanged: me"},
      {&Store::passwordChanged, "Password", {"geheim"}, "geheim", "YES", true, "passwordChanged: ••••••••"},
      {&Store::timeoutChanged, "Timeout", {"5"}, "5", "NO", false, "portChanged: 5"},
      {&Store::ipaddressChanged, "IP Address", {" box "}, " box ", "YES", true, "ipaddressChanged:  box "},
      {&Store::portChanged, "Port", {""}, "", "YES", false, "portChanged: "},
      {&Store::usesslChanged, "UseSSL", {.text = "", .on = true}, "True", "YES", false, ""},
      {&Store::usesslChanged, "UseSSL", {.text = "", .on = false}, "False", "YES", false, ""},
  };
  for (const auto& c : cases) {
    const PropertyList label = services_.defaults.object(c.key)["Label"];
    const int synchronized = services_.defaults.synchronized();
    services_.defaults.removeObject("ServerChanged");
    log_.clear();
    (store.*c.operation)(c.control);
    EXPECT_EQ(value(c.key), c.stored);
    EXPECT_EQ(services_.defaults.object(c.key)["Label"], label) << "the rest of the specifier stays";
    EXPECT_EQ(services_.defaults.string("ServerChanged"), c.serverChanged) << c.key;
    EXPECT_EQ(services_.defaults.synchronized(), synchronized + 1);
    EXPECT_EQ(log_.contains("========== Dump Dict ==========="), c.dumped) << c.key;
    const auto records = log_.records();
    EXPECT_EQ(records.empty() ? "" : records.back(), c.logged);
    expectNoPasswordInLog();
  }
}

TEST_F(RVSettingsStoreTest, APasswordWithoutItsSpecifierIsStillOne) {
  RVSettingsStore(std::nullopt).passwordChanged({"geheim"});
  EXPECT_EQ(value("Password"), "geheim");
  expectNoPasswordInLog();
  EXPECT_EQ(services_.defaults.object("Password").description().find("geheim"), std::string::npos);
}

TEST_F(RVSettingsStoreTest, TheBundleIsFoundBesideTheInstalledProgram) {
  const fs::path root = folder_.path().toStdString();
  fs::create_directories(root / "bin");
  EXPECT_EQ(RVSettingsStore::findBundle((root / "bin").string()), std::nullopt);
  const fs::path bundle = root / "share/seedmote/RVSettingsData.bundle";
  fs::create_directories(bundle);
  EXPECT_EQ(RVSettingsStore::findBundle((root / "bin").string()), bundle.string());
}

}  // namespace
}  // namespace seedmote
