#include <gmock/gmock.h>

#include "PanelScene.h"
#include "client/tests/ClientFixture.h"
#include "screens/RVSessionStatController.h"

namespace seedmote {
namespace {

using testing::ElementsAre;

class SessionStatTest : public ClientFixture {
 protected:
  SessionStatTest() {
    answerLikeADaemon();
    panel.view()->setFrame({0, 0, 244, 600});
    panel.viewDidLoad();
  }

  // Each section's title and rows, in one text.
  std::vector<std::string> sections() {
    RVSessionStatListController& list = *panel.sessionStatListController();
    std::vector<std::string> found;
    for (int section = 0; section < list.numberOfSectionsInTableView(); ++section) {
      std::string text = list.titleForHeaderInSection(section).value_or("(none)");
      for (int row = 0; row < list.numberOfRowsInSection(section); ++row) {
        text += "; " + list.cellForRowAtIndexPath({section, row})->accessibleName().toStdString();
      }
      found.push_back(text);
    }
    return found;
  }

  void showLongest() {
    RVSessionStatus status;
    status.ipaddress.set("192.168.100.100:65535");
    status.daemonversion.set("3.00 (bb6b5a062e)");
    status.activeTorrentCount = 9223372036854775807;
    status.cumStats->uploadedBytes = 9223372036854775807;
    status.cumStats->downloadedBytes = 1125899906842624;
    status.cumStats->secondsActive = 1234 * 86400 + 86399;
    panel.sessionStatListController()->updateSessionStauts(status);
  }

  void show() {
    scene.show("RVSessionStatController_iPad", panel, panel.view()->frame().size());
    settle();
  }
  void settle() {
    do {
      services.settle();
      scene.window.grabWindow();
    } while (panel.sessionStatListController()->table()->isReloading());
  }

  RVSessionStatController panel;
  PanelScene scene;
};

TEST_F(SessionStatTest, TextsOfTheTable) {
  EXPECT_THAT(sections(), ElementsAre("(none); "));
  RVSessionStatListController& list = *panel.sessionStatListController();
  RVSessionStatus status;
  const char* const nothing =
      "; Uploaded bytes, 0B; Downloaded bytes, 0B; Added files, 0; Session count, 0; "
      "Active time, 0day 0hour 0min 0sec";
  list.updateSessionStauts(status);
  EXPECT_THAT(sections(),
              ElementsAre("Global", std::string("Cumulative") + nothing, std::string("Current") + nothing))
      << "no address";
  status.ipaddress.set("10.0.0.7:9091");
  status.curStats = nullptr;
  status.cumStats->uploadedBytes = 1025;
  status.cumStats->secondsActive = 90061;
  list.updateSessionStauts(status);
  EXPECT_THAT(
      sections(),
      ElementsAre("Global; IP address/port, 10.0.0.7:9091; Torrent count, 0; Active torrent count, 0; "
                  "Paused torrent count, 0",
                  "Cumulative; Uploaded bytes, 1.0KB; Downloaded bytes, 0B; Added files, 0; "
                  "Session count, 0; Active time, 1day 1hour 1min 1sec",
                  std::string("Current") + nothing))
      << "no version";
}

TEST_F(SessionStatTest, PollsOnceAfterFiveSecondsAndThenEveryTen) {
  const auto polls = [this](double seconds) {
    const int before = lines.count("updateSessionStauts");
    services.clock.advanceSeconds(seconds);
    services.finishThreads();
    return lines.count("updateSessionStauts") - before;
  };
  EXPECT_EQ(polls(5), 0) << "not connected";
  EXPECT_EQ(panel.uploadSpeed(), QStringLiteral("–"));
  connect();
  EXPECT_EQ(polls(4.9), 0);
  EXPECT_EQ(polls(0.2), 1);
  EXPECT_EQ(polls(5), 0);
  EXPECT_EQ(polls(5), 1);
  EXPECT_EQ(panel.uploadSpeed(), QStringLiteral("1000B/sec"));
  EXPECT_EQ(panel.downloadSpeed(), QStringLiteral("2.0KB/sec"));
}

TEST_F(SessionStatTest, ASilentDaemonHoldsNobodyAndIsAskedOnce) {
  connect();
  services.scripted.forgetRequests();
  services.scripted.hold();
  for (int tick = 0; tick < 4; ++tick) {
    services.clock.advanceSeconds(10);
    services.settle();
    EXPECT_FALSE(services.main.isWaiting());
  }
  EXPECT_TRUE(services.scripted.waitForRequests(1, std::chrono::minutes(1)));
  EXPECT_EQ(bodies(), std::vector<std::string>{kStats});
  services.scripted.release();
  services.finishThreads();
  EXPECT_EQ(lines.count("updateSessionStauts"), 1);
}

TEST_F(SessionStatTest, TheLongestValuesFit) {
  show();
  showLongest();
  for (const int width : {244, 204, 168}) {
    panel.view()->setFrame({0, 0, static_cast<double>(width), 600});
    settle();
    for (QQuickItem* item : scene.window.contentItem()->findChildren<QQuickItem*>()) {
      EXPECT_FALSE(item->property("truncated").toBool()) << item->property("text").toString().toStdString();
    }
  }
}

}  // namespace
}  // namespace seedmote
