#include "platform/core/PlistUserDefaults.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>
#include <vector>

namespace seedmote::platform {
namespace {

namespace fs = std::filesystem;

class PlistUserDefaultsTest : public testing::Test {
 protected:
  PlistUserDefaultsTest() {
    char name[] = "/tmp/seedmote-defaults-XXXXXX";
    folder_ = mkdtemp(name);
    path_ = folder_ / "defaults.plist";
  }
  ~PlistUserDefaultsTest() override {
    fs::permissions(folder_, fs::perms::owner_all);
    fs::remove_all(folder_);
  }

  static void put(const fs::path& path, const std::string& bytes) { std::ofstream(path) << bytes; }
  static unsigned mode(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 0777;
  }

  fs::path folder_;
  fs::path path_;
};

TEST_F(PlistUserDefaultsTest, KeepsValuesForTheNextStartForTheOwnerAlone) {
  const fs::path path = folder_ / "config" / "seedmote" / "defaults.plist";
  const mode_t before = umask(0);
  {
    PlistUserDefaults defaults(path);
    EXPECT_EQ(defaults.problem(), "");
    defaults.setObject("Port", PropertyList::Dictionary{{"Value", "9091"}});
    defaults.setObject("FirstRun", "3");
    defaults.setObject("gone", "x");
    EXPECT_FALSE(fs::exists(path));
    EXPECT_TRUE(defaults.synchronize());
    defaults.removeObject("gone");
    EXPECT_TRUE(defaults.synchronize());
  }
  umask(before);
  EXPECT_EQ(mode(path), 0600u);
  EXPECT_EQ(mode(path.parent_path()), 0700u);
  PlistUserDefaults again(path);
  EXPECT_EQ(again.object("Port")["Value"].asText(), "9091");
  EXPECT_EQ(again.string("FirstRun"), "3");
  EXPECT_TRUE(again.object("gone").isAbsent());
  EXPECT_EQ(again.string("Port"), std::nullopt);
}

TEST_F(PlistUserDefaultsTest, AFileOpenToOthersIsClosedToThem) {
  put(path_, PropertyList(PropertyList::Dictionary{{"FirstRun", "2"}}).toXml());
  fs::permissions(path_, fs::perms(0644));
  PlistUserDefaults defaults(path_);
  EXPECT_EQ(mode(path_), 0600u);
  fs::permissions(path_, fs::perms(0644));
  defaults.setObject("FirstRun", "3");
  EXPECT_TRUE(defaults.synchronize());
  EXPECT_EQ(mode(path_), 0600u);
}

TEST_F(PlistUserDefaultsTest, ManyThreadsLeaveAWholeFile) {
  PlistUserDefaults defaults(path_);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&defaults, t] {
      for (int i = 0; i < 10; ++i) {
        defaults.setObject("key " + std::to_string(t), std::to_string(i));
        EXPECT_TRUE(defaults.synchronize());
      }
    });
  }
  for (auto& thread : threads) thread.join();
  const PlistUserDefaults again(path_);
  for (int t = 0; t < 4; ++t) EXPECT_EQ(again.string("key " + std::to_string(t)), "9");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1);
}

TEST(StandardDefaultsPath, FollowsTheEnvironment) {
  setenv("XDG_CONFIG_HOME", "/somewhere/config", 1);
  EXPECT_EQ(standardDefaultsPath(), "/somewhere/config/seedmote/defaults.plist");
  for (const char* useless : {"", "not/absolute"}) {
    setenv("XDG_CONFIG_HOME", useless, 1);
    EXPECT_TRUE(standardDefaultsPath().ends_with("/.config/seedmote/defaults.plist"));
    EXPECT_TRUE(standardDefaultsPath().starts_with("/"));
  }
}

}  // namespace
}  // namespace seedmote::platform
