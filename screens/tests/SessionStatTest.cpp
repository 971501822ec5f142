#include <gmock/gmock.h>

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest/QTest>

#include "client/tests/ClientFixture.h"
#include "platform/ui/LayoutLoader.h"
#include "screens/LabelPairCell.h"
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
    status.torrentCount = 123456;
    status.activeTorrentCount = 9223372036854775807;
    status.rpcversion = 16;
    for (RVStatusDetail* detail : {status.cumStats.get(), status.curStats.get()}) {
      detail->uploadedBytes = 9223372036854775807;
      detail->downloadedBytes = 1125899906842624;
      detail->filesAdded = 1234567;
      detail->sessionCount = 12;
      detail->secondsActive = 1234 * 86400 + 86399;
    }
    panel.sessionStatListController()->updateSessionStauts(status);
  }

  void show() {
    window.setColor(QColor(240, 250, 254));
    window.resize(panel.view()->frame().size().toSize());
    window.contentItem()->setTransformOrigin(QQuickItem::TopLeft);
    loader.load(QStringLiteral("RVSessionStatController_iPad"), panel, window.contentItem());
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    settle();
  }
  void settle() {
    do {
      services.settle();
      window.grabWindow();
    } while (panel.sessionStatListController()->table()->isReloading());
  }
  void keepPicture(const std::string& name) {
    const QString folder = qEnvironmentVariable("SEEDMOTE_PICTURES");
    for (const int scale : {1, 2}) {
      window.contentItem()->setScale(scale);
      window.resize(panel.view()->frame().size().toSize() * scale);
      if (!folder.isEmpty()) {
        QTest::qWait(50);
        window.grabWindow().save(
            QStringLiteral("%1/%2@%3.png").arg(folder, QString::fromStdString(name)).arg(scale));
      }
    }
  }

  RVSessionStatController panel;
  QQmlEngine engine;
  platform::LayoutLoader loader{engine};
  QQuickWindow window;
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

TEST_F(SessionStatTest, APollCostsTwoFramesAtMost) {
  connect();
  show();
  services.clock.advanceSeconds(5);
  services.finishThreads();
  settle();
  int frames = 0;
  QObject::connect(
      &window, &QQuickWindow::afterRendering, &window, [&] { ++frames; }, Qt::DirectConnection);
  services.clock.advanceSeconds(10);
  services.finishThreads();
  settle();
  QTest::qWait(200);
  EXPECT_LE(frames, 2);
}

TEST_F(SessionStatTest, Pictures) {
  show();
  keepPicture("statistics-first");
  showLongest();
  for (const int width : {244, 204, 168}) {
    panel.view()->setFrame({0, 0, static_cast<double>(width), 600});
    settle();
    for (QQuickItem* item : window.contentItem()->findChildren<QQuickItem*>()) {
      EXPECT_FALSE(item->property("truncated").toBool()) << item->property("text").toString().toStdString();
    }
    keepPicture("statistics" + std::to_string(width));
  }
}

}  // namespace
}  // namespace seedmote
