// The window while the main thread waits: it goes on painting, and what is done to it meanwhile happens in
// its time or not at all.
#include <QTemporaryDir>
#include <atomic>
#include <fstream>

#include "AppFixture.h"
#include "tests/support/LoopbackDaemon.h"

namespace seedmote {
namespace {

using support::RecordedRequest;

constexpr const char* kDetail = "\"ids\":[";

class NeverFrozenTest : public AppFixture {
 protected:
  ~NeverFrozenTest() override { release(); }

  void SetUp() override {
    daemon.model().setTorrents(
        R"({"arguments":{"torrents":[{"id":1,"name":"one"},{"id":2,"name":"two"}]},"result":"success"})");
    daemon.model().setDetail(R"({"arguments":{"torrents":[{"files":[]}]},"result":"success"})");
    install(platform::Idiom::tablet);
    confirmSettings(daemon.port());
    store.timeoutChanged({"300"});
    openConnected();
    for (const QQuickItem* item : window().contentItem()->findChildren<QQuickItem*>()) {
      if (item->property("spinning").isValid()) spinner_ = item;
    }
    QObject::connect(&window(), &QQuickWindow::frameSwapped, &window(), [this] {
      ++frames_;
      turns_ += std::exchange(angle_, spinner_->rotation()) != angle_ ? 1 : 0;
    });
  }

  // From now on a request with `part` in it is answered when it is released, and not before.
  void hold(const std::string& part) {
    held_ = true;
    daemon.forgetRequests();
    daemon.setHandler([this, part](const RecordedRequest& request) {
      if (request.body.find(part) != std::string::npos) held_.wait(true);
      return daemon.model().reply(request);
    });
  }
  void release() {
    held_ = false;
    held_.notify_all();
  }
  std::size_t sent(const std::string& part) const {
    const std::vector<RecordedRequest> all = daemon.requests();
    return std::count_if(all.begin(), all.end(), [&](const RecordedRequest& request) {
      return request.body.find(part) != std::string::npos;
    });
  }
  std::function<bool()> isAsking(const char* part) {
    return [this, part] { return services->clock.sleeping() > 0 && sent(part) > 0; };
  }
  // A click on a row that waits in the window system's queue.
  void click(int row) {
    support::Hand([this]() -> QWindow& { return window(); }, false).tap(QPoint(400, 20 + 78 * row + 39));
  }

  // How many frames are painted in half a second.
  int paint() {
    frames_ = turns_ = 0;
    bool over = false;
    QTimer::singleShot(500, &window(), [&over] { over = true; });
    until("time goes on", [&over] { return over; });
    return frames_;
  }
  // How fast the message moves with nobody waiting.
  void measureMessage() {
    OvProgressHUD::showWithStatus("Look");
    paint();
    usual_ = paint();
    ASSERT_GT(usual_, 0);
    OvProgressHUD::dismiss();
    letMessagesGo();
  }
  // Half of that will do: the machine may have become busy with other things.
  void expectPainting() {
    ASSERT_TRUE(overlay().spinnerView().spinning);
    until("the window paints as always", [this] { return paint() * 2 >= usual_ && turns_ * 2 >= frames_; });
    EXPECT_TRUE(services->main.isWaiting()) << "all the time";
  }

  support::LoopbackDaemon daemon;

 private:
  std::atomic<bool> held_{false};
  const QQuickItem* spinner_ = nullptr;
  double angle_ = 0;
  int frames_ = 0;
  int turns_ = 0;  // of the spinner, from one frame to the next
  int usual_ = 0;
};

TEST_F(NeverFrozenTest, ARequestThatHangsCountsDownAndSwallowsTouches) {
  measureMessage();
  const int ticks = lines.count("Detailview torrent update finished");
  hold("torrent-add");
  duringWait(isAsking("torrent-add"), [this] {
    expectPainting();
    for (int left = 300; left > 295; --left) {
      until("the seconds are shown", [&] {
        return overlay().stringTimeout().text == QString::number(left) && services->clock.sleeping() > 0;
      });
      services->clock.advanceSeconds(1);
    }
    click(0);
    services->clock.advanceSeconds(20);
    release();
  });
  delegate->handleOpenURL("magnet:?xt=urn:btih:x");
  settle();
  EXPECT_EQ(lines.count("Detailview torrent update finished"), ticks + 1) << "a timer makes up for nothing";
  letMessagesGo();
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1);
  EXPECT_EQ(sent(kDetail), 0U);
}

TEST_F(NeverFrozenTest, TheSleepsAfterAStartAndAFilePaint) {
  measureMessage();
  const QTemporaryDir folder;
  const std::string file = folder.filePath(QStringLiteral("some.torrent")).toStdString();
  std::ofstream(file) << "d4:infodee";
  for (const double seconds : {1.0, 3.0}) {
    bool looked = false;
    duringWait([this] { return isAsleep(); },
               [&] {
                 for (const double part : {seconds - 0.1, 0.1}) {
                   expectPainting();
                   EXPECT_EQ(services->clock.sleeping(), 1);
                   services->clock.advanceSeconds(part);
                 }
                 looked = true;
               });
    seconds == 1 ? tap("Start") : void(delegate->openURL(file, {}, {}));
    settle();
    EXPECT_TRUE(looked);
    EXPECT_EQ(message(), seconds == 1 ? "Started!" : "Torrent is added!");
  }
}

TEST_F(NeverFrozenTest, ATapBesideNoMessageWaitsAndThenHappens) {
  hold(kDetail);
  duringWait(isAsking(kDetail), [this] {
    click(1);
    paint();
    EXPECT_EQ(RVTrans::getTorrentSelection(), 1);
    EXPECT_EQ(sent(kDetail), 1U);
    release();
  });
  tap("one");
  until("the second tap has come", [this] { return RVTrans::getTorrentSelection() == 2; });
}

class ClosingTest : public NeverFrozenTest,
                    public testing::WithParamInterface<std::pair<const char*, const char*>> {};

// With a message that moves, and with nothing that is painted.
INSTANTIATE_TEST_SUITE_P(During, ClosingTest,
                         testing::Values(std::pair("Start", "torrent-start"), std::pair("one", kDetail)));

TEST_P(ClosingTest, EndsTheWaitAndSendsNothingMore) {
  const auto [name, part] = GetParam();
  hold(part);
  QElapsedTimer ending;
  duringWait(isAsking(part), [&] {
    ending.start();
    hand().closeWindow();
  });
  tap(name);
  ASSERT_TRUE(ending.isValid());
  EXPECT_LT(ending.elapsed(), 1000);
  EXPECT_TRUE(services->main.isQuitting());
  release();
  services->threads.join(std::chrono::minutes(1));
  EXPECT_EQ(daemon.requests().size(), 1U);
}

}  // namespace
}  // namespace seedmote
