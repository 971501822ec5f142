// What was handed over, from the inbox to the daemon.
#include <QTemporaryDir>
#include <fstream>

#include "AppFixture.h"
#include "app/InboxCourier.h"
#include "tests/support/LoopbackDaemon.h"

namespace seedmote {
namespace {

using support::RecordedRequest;
using support::Reply;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class InboxCourierTest : public AppFixture {
 protected:
  ~InboxCourierTest() override {
    services->finishThreads();
    courier.reset();
  }

  void SetUp() override {
    daemon.setHandler([this](const RecordedRequest& request) { return answer(request); });
    install(platform::Idiom::tablet);
    confirmSettings(daemon.port());
  }
  // On a thread of the daemon: notes what the daemon has dealt with.
  Reply answer(const RecordedRequest& request) {
    const Reply reply = daemon.model().reply(request);
    const bool isAdd = request.body.find("torrent-add") != std::string::npos;
    if (!isAdd || request.header("X-Transmission-Session-Id") != daemon.sessionId()) return reply;
    if (request.body.find("413") != std::string::npos) return support::replies::answer(413, "too large");
    const std::lock_guard lock(mutex);
    const std::size_t end = request.body.rfind('"');
    added.push_back(request.body.substr(end - kTail, kTail));
    return result.empty() ? reply : support::replies::answer(200, result);
  }
  void start() {
    open();
    courier = std::make_unique<InboxCourier>(inbox, *delegate);
  }
  void connect() {
    advance(3);
    services->finishThreads();
    letMessagesGo();
  }
  // Turns of the clock until the inbox has nothing more to do.
  void turn(int seconds) {
    for (int second = 0; second < seconds; ++second) {
      duringWait([this] { return isAsleep(); }, [this] { services->clock.advanceSeconds(3); });
      advance(1);
      services->finishThreads();
      settle();
    }
  }
  std::string file(const std::string& name) {
    const std::string path = folder.filePath(QString::fromStdString(name)).toStdString();
    std::ofstream(path) << "d4:infod4:name3:" << name << "ee";
    return path;
  }
  std::vector<std::string> arrived() {
    const std::lock_guard lock(mutex);
    return added;
  }
  QString notice() { return delegate->mainViewController().inboxNotice()->text(); }

  static constexpr std::size_t kTail = 4;
  support::LoopbackDaemon daemon;
  QTemporaryDir folder;
  platform::Inbox inbox{folder.filePath(QStringLiteral("inbox")).toStdString(), [this] {
                          platform::services().main.post([this] {
                            if (courier) courier->look();
                          });
                        }};
  std::unique_ptr<InboxCourier> courier;
  std::mutex mutex;
  std::vector<std::string> added;  // the ends of what was added
  std::string result;              // the daemon's answer to an add; empty: the model's
};

TEST_F(InboxCourierTest, EverythingArrivesOnceAndInOrder) {
  start();
  inbox.take({"magnet:?1111"});
  turn(2);
  EXPECT_THAT(arrived(), ElementsAre()) << "it is not connected yet";
  EXPECT_THAT(notice().toStdString(), StartsWith("magnet:?1111 waits to be added."));
  connect();
  turn(2);
  inbox.take({"magnet:?2222", file("aaa"), "magnet:?3333", file("bbb"), file("ccc"), file("ddd")});
  daemon.changeSessionId();
  turn(12);
  EXPECT_TRUE(inbox.waiting().empty());
  const std::vector<std::string> all = arrived();
  ASSERT_EQ(all.size(), 7U);
  EXPECT_THAT(std::vector(all.begin(), all.begin() + 2), ElementsAre("1111", "2222"));
  EXPECT_EQ(all[3], "3333");
  EXPECT_TRUE(notice().isEmpty());
}

TEST_F(InboxCourierTest, WhatDidNotArriveIsKeptAndTriedAgain) {
  start();
  connect();
  daemon.stopListening();
  daemon.dropConnections();
  inbox.take({"magnet:?1111", file("aaa")});
  turn(12);
  EXPECT_EQ(inbox.waiting().size(), 2U);
  EXPECT_THAT(notice().toStdString(), HasSubstr("2 torrents wait to be added.\nNobody listens"));
  daemon.listenAgain();
  turn(15);
  EXPECT_TRUE(inbox.waiting().empty());
  EXPECT_EQ(arrived().size(), 2U);
}

TEST_F(InboxCourierTest, WhatNeverArrivesLetsTheOthersThrough) {
  start();
  connect();
  inbox.take({"magnet:?413", "magnet:?2222"});
  turn(10);
  EXPECT_THAT(arrived(), ElementsAre());
  turn(30);
  EXPECT_THAT(arrived(), ElementsAre("2222"));
  EXPECT_THAT(notice().toStdString(), StartsWith("magnet:?413 waits to be added."));
}

TEST_F(InboxCourierTest, WhatTheDaemonDoesNotTakeIsTold) {
  start();
  connect();
  result = R"({"arguments":{},"result":"invalid or corrupt torrent file"})";
  inbox.take({file("aaa")});
  turn(4);
  EXPECT_TRUE(inbox.waiting().empty());
  EXPECT_EQ(ui.alerts.title().toStdString(), "Not added");
  EXPECT_EQ(ui.alerts.message().toStdString(), "aaa: invalid or corrupt torrent file");
  ui.alerts.press(0);
  settle();
  inbox.take({file("aaa"), file("bbb")});
  turn(4);
  EXPECT_EQ(
      ui.alerts.message().toStdString(),
      "2 torrents were not added:\naaa: invalid or corrupt torrent file\nbbb: invalid or corrupt torrent file");
}

TEST_F(InboxCourierTest, WhatWaitsCanBeDropped) {
  start();
  inbox.take({"magnet:?1111"});
  turn(2);
  delegate->mainViewController().inboxNotice()->drop();
  settle();
  EXPECT_EQ(ui.alerts.message().toStdString(), "magnet:?1111");
  ui.alerts.press(1);
  settle();
  EXPECT_TRUE(inbox.waiting().empty());
  EXPECT_TRUE(notice().isEmpty());
}

}  // namespace
}  // namespace seedmote
