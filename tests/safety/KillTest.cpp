// Programs are killed at random moments while they write. Run by hand with "--rounds 1000".

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/core/PlistUserDefaults.h"
#include "platform/ui/Inbox.h"

namespace seedmote {
namespace {

namespace fs = std::filesystem;
using platform::Inbox;
using platform::PlistUserDefaults;
using std::chrono::microseconds;

int rounds = 50;

// A process that runs `work` until it is killed, and tells with each call of its argument how far it is.
class Victim {
 public:
  using Work = std::function<void(const std::function<void(int)>&)>;

  explicit Victim(const Work& work) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) std::abort();
    process_ = fork();
    if (process_ == 0) {
      work([&](int reached) {
        if (write(ends[1], &reached, sizeof reached) != sizeof reached) _exit(1);
      });
      _exit(0);
    }
    close(ends[1]);
    told_ = ends[0];
  }
  ~Victim() { close(told_); }
  Victim(const Victim&) = delete;
  Victim& operator=(const Victim&) = delete;

  // Waits until it has told `times` more.
  void await(int times) {
    while (times-- > 0 && read(told_, &reached_, sizeof reached_) == sizeof reached_) {
    }
  }
  // The last that it told; `before` when it told nothing.
  int kill(int before) {
    ::kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    await(std::numeric_limits<int>::max());
    return std::max(reached_, before);
  }

 private:
  pid_t process_ = -1;
  int told_ = -1;
  int reached_ = 0;
};

class KillTest : public testing::Test {
 protected:
  KillTest() {
    char name[] = "/tmp/seedmote-kill-XXXXXX";
    folder_ = mkdtemp(name);
  }
  ~KillTest() override { fs::remove_all(folder_); }

  long upTo(long most) { return std::uniform_int_distribution<long>(0, most)(random_); }
  // Lets it do two things at most, and a part of the next one.
  void letWork(Victim& victim) {
    const auto begin = std::chrono::steady_clock::now();
    const int times = static_cast<int>(upTo(2));
    victim.await(times);
    const auto took = std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now() - begin);
    if (times > 0) takes_ = took / times;
    std::this_thread::sleep_for(microseconds(upTo(takes_.count())));
  }
  static int number(const std::optional<std::string>& text) {
    int value = 0;
    if (text) std::from_chars(text->data(), text->data() + text->size(), value);
    return value;
  }

  fs::path folder_;
  microseconds takes_{1000};
  std::mt19937 random_{static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed())};
};

// Of changing length, so that a mixture of two would show.
std::string longTextOf(int number) {
  return std::string(static_cast<std::size_t>(number % 7) * 3000 + 1, static_cast<char>('a' + number % 26));
}

// Each of two programs has keys of its own in the one file, and leaves the other its turn.
void storeForEver(const fs::path& path, const std::string& prefix, int from,
                  const std::function<void(int)>& tell) {
  PlistUserDefaults defaults(path);
  for (int number = from;; ++number) {
    defaults.setObject(prefix + " number", std::to_string(number));
    defaults.setObject(prefix + " text", longTextOf(number));
    if (defaults.synchronize()) tell(number);
    std::this_thread::sleep_for(microseconds(3000));
  }
}

TEST_F(KillTest, SettingsAreTheOldOrTheNewAndThoseOfTheOtherProgramStay) {
  const fs::path path = folder_ / "defaults.plist";
  const std::vector<std::string> programs{"one", "two"};
  std::vector<int> stored(programs.size(), 0);
  int written = 0;
  for (int round = 0; round < rounds; ++round) {
    std::vector<std::unique_ptr<Victim>> victims;
    for (std::size_t program = 0; program < programs.size(); ++program) {
      victims.push_back(std::make_unique<Victim>(
          [&](const auto& tell) { storeForEver(path, programs[program], stored[program] + 1, tell); }));
    }
    letWork(*victims[static_cast<std::size_t>(round) % victims.size()]);
    for (std::size_t program = 0; program < programs.size(); ++program) {
      const int acknowledged = victims[program]->kill(stored[program]);
      written += acknowledged - stored[program];
      stored[program] = acknowledged;
    }
    const PlistUserDefaults defaults(path);
    ASSERT_EQ(defaults.problem(), "");
    for (std::size_t program = 0; program < programs.size(); ++program) {
      const int found = number(defaults.string(programs[program] + " number"));
      ASSERT_TRUE(found == stored[program] || found == stored[program] + 1)
          << found << " was found and " << stored[program] << " acknowledged, round " << round;
      ASSERT_TRUE(found == 0 || defaults.string(programs[program] + " text") == longTextOf(found));
      stored[program] = found;
    }
    ASSERT_LE(std::distance(fs::directory_iterator(folder_), {}), 2) << "remains pile up";
  }
  EXPECT_GT(written, rounds / 2) << "they were killed before they wrote anything";
}

std::string linkOf(int number) {
  return "magnet:?xt=" + std::to_string(number) + "&dn=" + longTextOf(number);
}

TEST_F(KillTest, TheInboxHasAllThatItAcknowledgedWholeAndInOrder) {
  const fs::path inbox = folder_ / "inbox";
  const fs::path file = folder_ / "one.torrent";
  const std::string contents = "d8:announce4:http4:infod4:name20000:" + std::string(20000, 'x') + "ee";
  std::ofstream(file) << contents;
  std::set<std::string> outstanding;
  int last = 0;
  for (int round = 0; round < rounds; ++round) {
    Victim victim([&](const auto& tell) {
      Inbox box(inbox, [] {});
      for (int number = last + 1;; number += 2) {
        if (box.take({linkOf(number), file, linkOf(number + 1)}).empty()) tell(number + 1);
      }
    });
    letWork(victim);
    const int acknowledged = victim.kill(last);
    Inbox box(inbox, [] {});
    int expected = last;
    for (const Inbox::Item& item : box.waiting()) {
      if (item.kind == Inbox::Item::Kind::link) {
        ASSERT_EQ(item.name, linkOf(++expected)) << "round " << round;
      } else {
        ASSERT_EQ(fs::file_size(item.path), contents.size()) << "round " << round;
      }
    }
    ASSERT_GE(expected, acknowledged) << "round " << round;
    last = expected;
    ASSERT_TRUE(box.mayDeliver());
    const auto items = box.waiting();
    for (const Inbox::Item& item : items) box.drop(item);
    ASSERT_EQ(std::distance(fs::directory_iterator(inbox), {}), 1) << "remains pile up beside the lock";
  }
  EXPECT_GT(last, rounds / 4) << "they were killed before they kept anything";
}

void setBoth(const fs::path& home, int number) {
  setenv("XDG_CONFIG_HOME", home.c_str(), 1);
  const std::string text = std::to_string(number);
  execl(SEEDMOTE_PROGRAM, "seedmote", "--set", ("Username=" + text).c_str(), "--set",
        ("Timeout=" + text).c_str(), nullptr);
  _exit(127);
}

TEST_F(KillTest, TheProgramStoresSettingsTogetherOrNone) {
  const fs::path path = folder_ / "seedmote/defaults.plist";
  const auto value = [&](const char* key) {
    const PlistUserDefaults defaults(path);
    EXPECT_EQ(defaults.problem(), "");
    return number(defaults.object(key)["Value"].asText());
  };
  const auto begin = std::chrono::steady_clock::now();
  Victim undisturbed([&](const auto&) { setBoth(folder_, 1); });
  while (value("Timeout") != 1 && std::chrono::steady_clock::now() < begin + std::chrono::seconds(20)) {
    std::this_thread::sleep_for(microseconds(500));
  }
  const auto time = std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now() - begin);
  undisturbed.kill(0);
  ASSERT_EQ(value("Username"), 1);
  int stored = 0;
  for (int round = 2, before = 1; round < rounds / 2 + 2; ++round) {
    Victim victim([&](const auto&) { setBoth(folder_, round); });
    std::this_thread::sleep_for(time / 2);
    std::this_thread::sleep_for(microseconds(upTo(time.count())));
    victim.kill(0);
    const int found = value("Username");
    ASSERT_TRUE(found == before || found == round);
    ASSERT_EQ(value("Timeout"), found);
    stored += found == round ? 1 : 0;
    before = found;
  }
  RecordProperty("stored", stored);
}

}  // namespace
}  // namespace seedmote

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc == 3 && std::string(argv[1]) == "--rounds") seedmote::rounds = std::max(1, std::atoi(argv[2]));
  return RUN_ALL_TESTS();
}
