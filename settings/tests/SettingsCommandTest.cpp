#include "settings/SettingsCommand.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <algorithm>
#include <sstream>

#include "tests/support/TestServices.h"

namespace seedmote {
namespace {

using Assignments = std::vector<std::string>;

class SettingsCommandTest : public testing::Test {
 protected:
  int run(const Assignments& assignments, const std::string& input = "") {
    std::istringstream in(input);
    errors_.str("");
    RVSettingsStore store(RVSettingsStore::findBundle(QCoreApplication::applicationDirPath().toStdString()));
    return SettingsCommand(store, in, errors_).run(assignments);
  }
  std::optional<std::string> stored(std::string_view key) const {
    const platform::PropertyList object = services_.defaults.object(key);
    return object.dictionary() == nullptr ? object.asText() : object["Value"].asText();
  }

  support::TestServices services_;
  std::ostringstream errors_;
};

TEST_F(SettingsCommandTest, GoodValuesAreStoredAsTheScreenStoresThem) {
  const struct {
    const char* assignment;
    const char* key;
    const char* value;
    const char* serverChanged;
  } cases[]{
      {"IP Address=[::1]", "IP Address", "[::1]", "YES"},
      {"IP Address=bücher.example", "IP Address", "bücher.example", "YES"},
      {"Port=1", "Port", "1", "YES"},
      {"Port=65535", "Port", "65535", "YES"},
      {"Username=", "Username", "", "YES"},
      {"Password=a=b = c", "Password", "a=b = c", "YES"},
      {"UseSSL=True", "UseSSL", "True", "YES"},
      {"UseSSL=False", "UseSSL", "False", "YES"},
      {"Timeout=0", "Timeout", "0", "NO"},
      {"ServerChanged=NO", "ServerChanged", "NO", "NO"},
      {"SavedVersion=0.1.0", "SavedVersion", "0.1.0", "-"},
      {"FirstRun=3", "FirstRun", "3", "-"},
      {"Refresh=2.5", "Refresh", "2.5", "-"},
  };
  for (const auto& c : cases) {
    services_.defaults.setObject("ServerChanged", "-");
    EXPECT_EQ(run({c.assignment}), SettingsCommand::kStored) << c.assignment << errors_.str();
    EXPECT_EQ(errors_.str(), "");
    EXPECT_EQ(stored(c.key), c.value) << c.assignment;
    EXPECT_EQ(stored("ServerChanged"), c.serverChanged) << c.assignment;
  }
  EXPECT_EQ(services_.defaults.object("Password")["ValueType"].asText(), "PasswordBox");
}

TEST_F(SettingsCommandTest, RefreshIsSwitchedOffByNothingOrZero) {
  for (const char* off : {"Refresh=", "Refresh=0", "Refresh=0.0"}) {
    EXPECT_EQ(run({"Refresh=5"}), SettingsCommand::kStored);
    EXPECT_EQ(run({off}), SettingsCommand::kStored);
    EXPECT_EQ(stored("Refresh"), std::nullopt) << off;
  }
}

TEST_F(SettingsCommandTest, BadValuesStoreNothingAndAreNamed) {
  const std::pair<std::string, Assignments> cases[]{
      {"Port", {"0", "65536", "-1", "80a", " 80", "", "99999999999999999999"}},
      {"Timeout", {"-1", "1.5", ""}},
      {"UseSSL", {"true", "YES"}},
      {"FirstRun", {"1"}},
      {"ServerChanged", {""}},
      {"Refresh", {"-1", "inf", "nan", "1s"}},
      {"IP Address", {"", "http://box", "box/path", "me@box", "box:9091", "::1", "my box", "box\r\nX: y"}},
      {"Username", {"a\nb"}},
      {"Password", {"\xff"}},
      {"Author", {"me@here.example"}},
      {"Version", {"9"}},
      {"port", {"9091"}},
      {"", {"x"}},
  };
  Assignments bad{"Port", ""};
  for (const auto& [key, values] : cases) {
    for (const std::string& value : values) bad.push_back(key + "=" + value);
  }
  for (const std::string& assignment : bad) {
    EXPECT_EQ(run({"FirstRun=3", assignment, "UseSSL=True"}), SettingsCommand::kWrongUse) << assignment;
    const std::string said = errors_.str();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << assignment;
  }
  EXPECT_EQ(services_.defaults.synchronized(), 0);
  for (const char* key : {"FirstRun", "UseSSL", "Port"}) EXPECT_EQ(stored(key), std::nullopt);
}

TEST_F(SettingsCommandTest, ADashReadsALineOfStandardInput) {
  EXPECT_EQ(run({"Username=-", "Password=-", "Port=9092"}, "me\n ge heim-\nnot read"),
            SettingsCommand::kStored);
  EXPECT_EQ(stored("Username"), "me");
  EXPECT_EQ(stored("Password"), " ge heim-");
  EXPECT_EQ(stored("Port"), "9092");
  EXPECT_EQ(run({"Password=-"}, "without line feed"), SettingsCommand::kStored);
  EXPECT_EQ(stored("Password"), "without line feed");
  EXPECT_EQ(run({"Password=-"}, "\n"), SettingsCommand::kStored);
  EXPECT_EQ(stored("Password"), "");
  EXPECT_EQ(run({"Password=-"}, ""), SettingsCommand::kWrongUse);
}

TEST_F(SettingsCommandTest, NeitherTheLogNorAnErrorTellsAPassword) {
  platform::LogRecorder log;
  EXPECT_EQ(run({"Password=geheim", "Port=x"}), SettingsCommand::kWrongUse);
  EXPECT_EQ(run({"Password=geheim\x01"}), SettingsCommand::kWrongUse);
  EXPECT_EQ(errors_.str().find("geheim"), std::string::npos);
  EXPECT_EQ(run({"Password=geheim"}), SettingsCommand::kStored);
  for (const std::string& record : log.records())
    EXPECT_EQ(record.find("geheim"), std::string::npos) << record;
}

}  // namespace
}  // namespace seedmote
