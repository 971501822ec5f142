#include "platform/core/PlistUserDefaults.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <thread>
#include <vector>

#include "platform/core/Log.h"

namespace seedmote::platform {
namespace {

namespace fs = std::filesystem;

// Root reads and writes whatever it likes, so tests of permissions run as nobody.
class Nobody {
 public:
  explicit Nobody(const fs::path& folder) {
    if (geteuid() != 0) return;
    EXPECT_EQ(chown(folder.c_str(), kNobody, kNobody), 0);
    for (const auto& entry : fs::directory_iterator(folder)) {
      EXPECT_EQ(lchown(entry.path().c_str(), kNobody, kNobody), 0);
    }
    changed_ = seteuid(kNobody) == 0;
  }
  ~Nobody() {
    if (changed_ && seteuid(0) != 0) std::abort();
  }

 private:
  static constexpr uid_t kNobody = 65534;
  bool changed_ = false;
};

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
  static std::string get(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
  }
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

TEST_F(PlistUserDefaultsTest, AWriteThatFailsKeepsTheOldFileAndIsMadeUpFor) {
  const std::string old = PropertyList(PropertyList::Dictionary{{"FirstRun", "2"}}).toXml();
  put(path_, old);
  const Nobody nobody(folder_);
  PlistUserDefaults defaults(path_);
  defaults.setObject("FirstRun", "3");
  fs::permissions(folder_, fs::perms(0500));
  LogRecorder recorder;
  EXPECT_FALSE(defaults.synchronize());
  EXPECT_NE(defaults.problem(), "");
  EXPECT_TRUE(recorder.contains(defaults.problem()));
  EXPECT_EQ(get(path_), old);
  fs::permissions(folder_, fs::perms(0700));
  EXPECT_TRUE(defaults.synchronize());
  EXPECT_EQ(defaults.problem(), "");
  EXPECT_EQ(PlistUserDefaults(path_).string("FirstRun"), "3");
}

TEST_F(PlistUserDefaultsTest, AnUnreadableFileThatCannotBeSetAsideIsNotOverwritten) {
  put(path_, "broken");
  const Nobody nobody(folder_);
  fs::permissions(folder_, fs::perms(0500));
  PlistUserDefaults defaults(path_);
  fs::permissions(folder_, fs::perms(0700));
  defaults.setObject("FirstRun", "2");
  EXPECT_FALSE(defaults.synchronize());
  EXPECT_NE(defaults.problem(), "");
  EXPECT_EQ(get(path_), "broken");
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
