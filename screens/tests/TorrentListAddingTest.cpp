#include "ListFixture.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {
namespace {

class TorrentListAdding : public ListFixture {
 protected:
  explicit TorrentListAdding(platform::Idiom idiom) : ListFixture(idiom) {}

  void pullTo(double offset) {
    controller->scrollViewWillBeginDragging(0);
    controller->scrollViewDidScroll(offset);
    controller->scrollViewDidEndDragging(offset, true);
  }
  // The threshold itself still says "pull", and is enough.
  void expectThreshold(double threshold) {
    controller->viewDidLoad();
    ui.pasteboard.text = "a link";
    struct Case {
      double offset;
      const char* log;
      bool asks;
    };
    for (const Case& wanted :
         {Case{threshold + 0.1, "pull to add\n", false}, Case{threshold, "pull to add\n", true},
          Case{threshold - 0.1, "release to add\n", true}, Case{0, "Start dragging\n", false}}) {
      lines.clear();
      pullTo(wanted.offset);
      EXPECT_TRUE(lines.contains(wanted.log)) << wanted.offset;
      EXPECT_EQ(ui.alerts.isShown(), wanted.asks) << wanted.offset;
      ui.alerts.press(0);
      settle();
    }
    controller->scrollViewDidScroll(threshold - 1);
    EXPECT_EQ(lines.count("release to add\n"), 0) << "nobody drags";
    ui.pasteboard.text.reset();
    pullTo(threshold);
    EXPECT_FALSE(ui.alerts.isShown());
  }
  // Answers "torrent-add" with this.
  void answerAdd(int code, const std::string& body) {
    services.scripted.setHandler([=, this](const platform::HttpRequest& request) {
      const bool isAdd = request.body.find("torrent-add") != std::string::npos;
      return isAdd ? platform::ScriptedHttp::answer(code, body) : answer(request);
    });
  }
  std::string lastBody() { return services.scripted.requests().back().body; }
  std::string message() { return OvProgressHUD::sharedView()->text().toStdString(); }
};

class TorrentListAddingTest : public TorrentListAdding {
 protected:
  TorrentListAddingTest() : TorrentListAdding(platform::Idiom::tablet) {}
};

class PhoneAddingTest : public TorrentListAdding {
 protected:
  PhoneAddingTest() : TorrentListAdding(platform::Idiom::phone) {}
};

TEST_F(TorrentListAddingTest, PullsFurtherOnATablet) {
  expectThreshold(-80);
}

TEST_F(PhoneAddingTest, PullsLessOnAPhone) {
  expectThreshold(-60);
}

TEST_F(TorrentListAddingTest, AddsWhatThePasteboardHoldsWhenOkIsPressed) {
  show(100);
  answerAdd(200, R"({"result":"success","arguments":{}})");
  ui.pasteboard.text = "seen";
  pullTo(-90);
  EXPECT_EQ(ui.alerts.title(), QStringLiteral("Add torrent"));
  EXPECT_EQ(ui.alerts.buttons(), (QStringList{QStringLiteral("Cancel"), QStringLiteral("OK")}));
  ui.pasteboard.text = "magnet:?dn=a b&tr=http%3A%2F%2Fx";
  ui.alerts.press(1);
  settle();
  EXPECT_NE(lastBody().find("magnet:?dn=a%20b&tr=http%3A%2F%2Fx\""), std::string::npos) << lastBody();
  EXPECT_EQ(message(), "Success!");
  EXPECT_EQ(table().selectedRow(), 3) << "the last row as it was";
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1);

  const auto requests = services.scripted.requests().size();
  pullTo(-90);
  ui.alerts.press(0);
  settle();
  EXPECT_TRUE(lines.contains("cancel"));
  EXPECT_EQ(services.scripted.requests().size(), requests);
}

TEST_F(TorrentListAddingTest, SaysHowAddingALinkEnded) {
  std::vector<std::string> messages;
  QObject::connect(OvProgressHUD::sharedView(), &OvProgressHUD::changed, controller.get(),
                   [&] { messages.push_back(message()); });
  controller->addRemoteTorrent("x");
  services.finishThreads();
  EXPECT_THAT(messages, testing::Contains("ERROR\n(null)\nerror code:(null)")) << "not connected";
  torrents.clear();
  show();
  struct Case {
    int code;
    const char* body;
    const char* message;
  };
  for (const Case& wanted :
       {Case{200, R"({"result":"success"})", "Success!"},
        Case{200, R"({"result":"unrecognized info"})", "ERROR\nunrecognized info\nerror code:200"},
        Case{500, "no JSON", "ERROR\n(null)\nerror code:500"}}) {
    answerAdd(wanted.code, wanted.body);
    controller->addRemoteTorrent("x");
    settle();
    EXPECT_EQ(message(), wanted.message) << "with no row to select";
    services.clock.advanceSeconds(5);
    settle();
    EXPECT_FALSE(OvProgressHUD::isVisible());
  }
}

TEST_F(TorrentListAddingTest, AFileIsSaidToBeAddedThreeSecondsLater) {
  show();
  answerAdd(500, "");
  double passed = 0;
  bool added = false;
  std::function<void()> letTimePass = [&] {
    if (!added) {
      passed += 0.5;
      services.clock.advanceSeconds(0.5);
      services.main.post(letTimePass, platform::MainThread::Lane::overlay);
    }
  };
  letTimePass();
  controller->addLocalTorrent("/no/such.torrent");
  added = true;
  EXPECT_GE(passed, 3);
  EXPECT_TRUE(table().isReloading());
  settle();
  EXPECT_EQ(message(), "Torrent is added!");
}

}  // namespace
}  // namespace seedmote
