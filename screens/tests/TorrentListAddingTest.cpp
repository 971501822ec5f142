#include "ListFixture.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {
namespace {

class TorrentListAddingTest : public ListFixture {
 protected:
  explicit TorrentListAddingTest(platform::Idiom idiom = platform::Idiom::tablet) : ListFixture(idiom) {}

  void pullTo(double offset) {
    controller->scrollViewWillBeginDragging(0);
    controller->scrollViewDidScroll(offset);
    controller->scrollViewDidEndDragging(offset, true);
  }
  // The threshold itself still says "pull", and is enough.
  void expectThreshold(double threshold) {
    controller->viewDidLoad();
    for (const char* copied : {"a link", ""}) {
      ui.pasteboard.text = *copied != '\0' ? std::optional<std::string>(copied) : std::nullopt;
      for (const double further : {-0.1, 0.0, 0.1}) {
        lines.clear();
        pullTo(threshold - further);
        EXPECT_TRUE(lines.contains(further > 0 ? "release to add\n" : "pull to add\n")) << further;
        EXPECT_EQ(controller->toolbar()->message().startsWith(QLatin1String("Release to")), further > 0);
        EXPECT_EQ(ui.alerts.isShown(), further >= 0 && *copied != '\0') << further;
        ui.alerts.press(0);
        settle();
      }
    }
  }
  void answerAdd(int code, const std::string& body) {
    services.scripted.setHandler([=, this](const platform::HttpRequest& request) {
      const bool isAdd = request.body.find("torrent-add") != std::string::npos;
      return isAdd ? platform::ScriptedHttp::answer(code, body) : answer(request);
    });
  }
  std::string message() { return OvProgressHUD::sharedView()->text().toStdString(); }
};

class PhoneAddingTest : public TorrentListAddingTest {
 protected:
  PhoneAddingTest() : TorrentListAddingTest(platform::Idiom::phone) {}
};

TEST_F(TorrentListAddingTest, PullsFurtherOnATablet) {
  expectThreshold(-80);
}

TEST_F(PhoneAddingTest, PullsLessOnAPhone) {
  expectThreshold(-60);
}

TEST_F(TorrentListAddingTest, AddsWhatThePasteboardHoldsWhenOkIsPressed) {
  show(100);
  answerAdd(200, R"({"result":"success"})");
  ui.pasteboard.text = "seen";
  pullTo(-90);
  EXPECT_EQ(ui.alerts.message(), QStringLiteral("Do you want to add a torrent?\nseen"));
  ui.pasteboard.text = "magnet:?dn=a b&tr=http%3A%2F%2Fx";
  ui.alerts.press(1);
  settle();
  const std::string body = services.scripted.requests().back().body;
  EXPECT_NE(body.find("magnet:?dn=a%20b&tr=http%3A%2F%2Fx\""), std::string::npos) << body;
  EXPECT_EQ(table().selectedRow(), 3) << "the last row as it was";
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1);
}

TEST_F(TorrentListAddingTest, SaysHowAddingALinkEnded) {
  std::vector<std::string> messages;
  QObject::connect(OvProgressHUD::sharedView(), &OvProgressHUD::changed, controller.get(),
                   [&] { messages.push_back(message()); });
  controller->addRemoteTorrent("x");
  services.finishThreads();
  EXPECT_THAT(messages, testing::Contains("ERROR\n(null)\nerror code:(null)")) << "not connected";
  torrents.clear();  // and no row to select
  show();
  for (const auto& [body, wanted] : std::vector<std::pair<const char*, const char*>>{
           {R"({"result":"success"})", "Success!"}, {R"({"result":"no"})", "ERROR\nno\nerror code:500"}}) {
    answerAdd(500, body);
    controller->addRemoteTorrent("x");
    settle();
    EXPECT_EQ(message(), wanted);
  }
}

}  // namespace
}  // namespace seedmote
