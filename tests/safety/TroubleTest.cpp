#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <sstream>

#include "platform/core/PlistUserDefaults.h"
#include "tests/support/RealProgram.h"

namespace seedmote {
namespace {

namespace fs = std::filesystem;
using platform::PlistUserDefaults;
using platform::PropertyList;
using testing::HasSubstr;

constexpr uid_t kNobody = 65534;

// Root may write anywhere, so it is not root who tries.
void becomeNobody() {
  if (geteuid() == 0 && setuid(kNobody) != 0) _exit(126);
}

void write(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string read(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

class TroubleTest : public testing::Test {
 protected:
  TroubleTest() {
    fs::create_directories(folder());
    give(program.home());
  }
  ~TroubleTest() override {
    umount2(folder().c_str(), MNT_DETACH);
    if (fs::is_directory(folder())) fs::permissions(folder(), fs::perms::owner_all);
  }

  fs::path folder() const { return program.settings().parent_path(); }
  // To nobody, where it is root who tests.
  static void give(const fs::path& top) {
    if (geteuid() != 0) return;
    EXPECT_EQ(lchown(top.c_str(), kNobody, kNobody), 0);
    for (const auto& entry : fs::recursive_directory_iterator(top)) {
      EXPECT_EQ(lchown(entry.path().c_str(), kNobody, kNobody), 0);
    }
  }
  int set(const char* value, const std::function<void()>& inChild = becomeNobody) {
    return program.run({"--set", std::string("Refresh=") + value}, {}, inChild);
  }
  std::optional<std::string> stored() const {
    return PlistUserDefaults(program.settings()).string("Refresh");
  }

  RealProgram program;
};

TEST_F(TroubleTest, WhatStandsInTheSettingsPlaceIsKeptAsideAndNamed) {
  const auto file = program.settings();
  const std::pair<const char*, std::function<void()>> cases[] = {
      {"nothing in it", [&] { write(file, ""); }},
      {"no settings", [&] { write(file, std::string(5000, '\x9c')); }},
      {"settings of another kind", [&] { write(file, "<plist><array/></plist>"); }},
      {"cut", [&] { write(file, "<plist><dict><key>cut"); }},
      {"huge", [&] { write(file, ""), fs::resize_file(file, std::uintmax_t{1} << 40); }},
      {"a pipe", [&] { ASSERT_EQ(mkfifo(file.c_str(), 0600), 0); }},
      {"a folder", [&] { fs::create_directories(file / "a folder"); }},
      {"a device behind a link", [&] { fs::create_symlink("/dev/zero", file); }},
      {"somebody else's", [&] { write(file, "secret"), fs::permissions(file, fs::perms::none); }},
  };
  int number = 0;
  for (const auto& [name, prepare] : cases) {
    fs::remove(file);
    prepare();
    if (std::string(name) != "somebody else's") give(folder());
    const std::string before = fs::is_regular_file(file) && fs::file_size(file) < 9999 ? read(file) : "";
    const std::string aside =
        file.filename().string() + ".broken" + (++number == 1 ? "" : "." + std::to_string(number));
    EXPECT_EQ(set("5"), 0) << name;
    EXPECT_THAT(program.errors, HasSubstr(aside)) << name;
    EXPECT_TRUE(fs::exists(fs::symlink_status(folder() / aside))) << name;
    EXPECT_TRUE(before.empty() || read(folder() / aside) == before) << name;
    EXPECT_EQ(stored(), "5") << name;
  }
}

TEST_F(TroubleTest, LinksAreKeptAndWrittenThrough) {
  const fs::path elsewhere = program.home() / "elsewhere.plist";
  fs::create_symlink("../../elsewhere.plist", program.settings());
  for (const char* value : {"5", "6"}) {  // the first finds nothing behind the link
    EXPECT_EQ(set(value), 0) << program.errors;
    EXPECT_TRUE(fs::is_symlink(program.settings()));
    EXPECT_EQ(PlistUserDefaults(elsewhere).string("Refresh"), value);
  }
}

// Each store fails with a reason, exit code 1, and the old settings as they were.
TEST_F(TroubleTest, AStoreThatFailsSaysWhyAndKeepsTheOldSettings) {
  const auto file = program.settings();
  ASSERT_EQ(set("5"), 0);
  const std::string before = read(file);
  struct Case {
    const char* says;
    std::function<void()> inChild;
  };
  const auto expectFailure = [&](const Case& c) {
    EXPECT_EQ(set("6", c.inChild), 1) << c.says;
    EXPECT_THAT(program.errors, HasSubstr(c.says));
    EXPECT_TRUE(read(file) == before) << c.says;
    EXPECT_EQ(std::distance(fs::directory_iterator(folder()), {}), 1) << c.says;
  };
  expectFailure({"File too large", [] {
                   const rlimit limit{1000, 1000};
                   setrlimit(RLIMIT_FSIZE, &limit);
                   becomeNobody();
                 }});
  fs::permissions(file, fs::perms(0444));
  EXPECT_TRUE(geteuid() != 0 || lchown(file.c_str(), 0, 0) == 0);
  expectFailure({"Permission denied", becomeNobody});  // another user's, who lets us read
  fs::permissions(folder(), fs::perms::owner_read | fs::perms::owner_exec);
  give(folder());
  fs::permissions(file, fs::perms(0600));
  expectFailure({"Permission denied", becomeNobody});
}

TEST_F(TroubleTest, AFullDiskOrOneThatOnlyReadsIsTold) {
  if (mount("tmpfs", folder().c_str(), "tmpfs", 0, "size=16k,mode=0777") != 0) {
    GTEST_SKIP() << "only root may mount a small disk";
  }
  ASSERT_EQ(set("5"), 0) << program.errors;
  std::string before = read(program.settings());
  write(folder() / "filler", std::string(16384, 'x'));
  EXPECT_EQ(set("6"), 1);
  EXPECT_THAT(program.errors, HasSubstr("No space left on device"));
  EXPECT_TRUE(read(program.settings()) == before);

  PlistUserDefaults open(program.settings());
  open.setObject("FirstRun", "2");
  EXPECT_FALSE(open.synchronize());

  program.start({});  // what it has to say stands in the log as well as in the window
  EXPECT_TRUE(program.hasSaid("Seedmote Start"));
  EXPECT_EQ(program.end(), 0);
  fs::remove(folder() / "filler");
  EXPECT_TRUE(open.synchronize()) << "what could not be stored is made up for";
  EXPECT_EQ(PlistUserDefaults(program.settings()).string("FirstRun"), "2");
  before = read(program.settings());
  ASSERT_EQ(mount(nullptr, folder().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
  EXPECT_EQ(set("6"), 1);
  EXPECT_THAT(program.errors, HasSubstr("Read-only file system"));
  EXPECT_TRUE(read(program.settings()) == before);
  program.start({});
  EXPECT_TRUE(program.hasSaid("The settings cannot be stored")) << program.errors;
  EXPECT_EQ(program.end(), 0);
}

// A program that stands still has its turn.
TEST_F(TroubleTest, NobodyWaitsForEverForTheOthersTurn) {
  ASSERT_EQ(set("5"), 0);
  const platform::PrivateFile file(program.settings());
  const platform::PrivateFile::Turn turn(file);
  ASSERT_TRUE(turn.isOurs());
  EXPECT_EQ(set("6"), 0) << program.errors;
  EXPECT_EQ(stored(), "6");
}

TEST_F(TroubleTest, WhatIsSetMeanwhileIsNotOverwritten) {
  ASSERT_EQ(program.run({"--set", "Username=old", "--set", "Refresh=5"}), 0);
  PlistUserDefaults open(program.settings());
  ASSERT_EQ(program.run({"--set", "Username=new", "--set", "Refresh="}), 0);
  open.setObject("FirstRun", "2");
  EXPECT_TRUE(open.synchronize());
  EXPECT_EQ(open.object("Username")["Value"].asText(), "new");
  EXPECT_EQ(open.string("Refresh"), std::nullopt);
  const PlistUserDefaults now(program.settings());
  EXPECT_EQ(now.object("Username")["Value"].asText(), "new");
  EXPECT_EQ(stored(), std::nullopt);
  EXPECT_EQ(now.string("FirstRun"), "2");
}

}  // namespace
}  // namespace seedmote
