#include <atomic>
#include <thread>

#include "ShellFixture.h"
#include "app/Restart.h"
#include "settings/RVSettingsViewController.h"

namespace seedmote {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class ServerChangeTest : public ShellFixture {
 protected:
  void SetUp() override {
    launch(platform::Idiom::tablet, "7.0");
    for (const auto& [key, value] : {std::pair{"IP Address", "nas"},
                                     {"Port", "9091"},
                                     {"UseSSL", "False"},
                                     {"Username", ""},
                                     {"Password", ""}}) {
      services->setSetting(key, value);
    }
    services->scripted.setHandler([this](const platform::HttpRequest& request) {
      while (held) std::this_thread::yield();
      const bool known = request.headers.at(0).value == "abc";
      return known ? platform::ScriptedHttp::answer(200, R"({"arguments":{"version":"3.00","torrents":[]}})")
                   : platform::ScriptedHttp::answer(409, "<code>X-Transmission-Session-Id: abc</code>");
    });
    delegate->onRestart([this] { ++restarts; });
  }
  void edit(const char* key, const char* value) {
    bar().doSettings();
    services->setSetting(key, value);
    services->defaults.setObject("ServerChanged", "NO");  // as the edit of a time-out leaves it
    bar().settingsViewController()->onCloseBtn();
    advance(0.7);
  }
  std::string question() const { return ui.alerts.message().toStdString(); }
  void answer(int button) {
    ui.alerts.press(button);
    settle();
  }

  std::atomic<bool> held{false};
  int restarts = 0;
};

TEST_F(ServerChangeTest, IsAskedAboutOnceForEachChange) {
  edit("Port", "9090");
  EXPECT_EQ(question(), "") << "it is not in use yet";
  held = true;
  advance(3);
  edit("Port", "9091");
  EXPECT_EQ(question(), "") << "nobody knows yet whether the attempt succeeds";
  held = false;
  services->finishThreads();
  advance(2);
  EXPECT_THAT(question(), HasSubstr("http://nas:9090"));
  answer(0);

  const struct {
    const char* key;
    const char* value;
    const char* asked;  // null: nothing
  } cases[] = {
      {"Timeout", "5", nullptr},  // declined once, and still another
      {"Port", "9090", nullptr}, {"Timeout", "6", nullptr},       {"Password", "s3cret", "login"},
      {"Password", "", nullptr}, {"Password", "s3cret", "login"}, {"UseSSL", "True", "https://nas:9090"},
  };
  for (const auto& c : cases) {
    edit(c.key, c.value);
    EXPECT_EQ(ui.alerts.isShown(), c.asked != nullptr) << c.key << '=' << c.value;
    EXPECT_THAT(question(), HasSubstr(c.asked != nullptr ? c.asked : ""));
    EXPECT_THAT(question(), Not(HasSubstr("s3cret")));
    answer(0);
  }
  EXPECT_EQ(restarts, 0);
  edit("IP Address", "other");
  answer(1);
  EXPECT_EQ(restarts, 1);
}

TEST(Restart, KeepsHowTheProgramLooksAndNothingThatWasToBeDoneOnce) {
  EXPECT_THAT(Restart::keptOptions({"--idiom", "phone", "a.torrent", "--refresh=5", "--snapshot", "p.png",
                                    "--system-version", "6.1", "magnet:?xt=--idiom=x", "--what"}),
              ElementsAre("--idiom", "phone", "--refresh=5", "--system-version", "6.1"));
}

}  // namespace
}  // namespace seedmote
