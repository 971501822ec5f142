#include <gmock/gmock.h>

#include <QTemporaryDir>
#include <fstream>

#include "client/UnconnectedNotice.h"
#include "client/tests/ClientFixture.h"

namespace seedmote {
namespace {

using platform::HttpError;
using testing::ElementsAre;
using testing::IsEmpty;

std::string text(const char* method, const std::string& arguments) {
  return std::string("{\n \"method\" : \"") + method + "\" ,\n\"arguments\" : " + arguments + " \n}";
}

class CommandsTest : public ClientFixture {
 protected:
  CommandsTest() { client.sessionInfo()->sessionID.set("abc"); }

  _RVTrans client;
};

TEST_F(CommandsTest, EachCommandsTextIsSentAsItIsLaidDown) {
  services.scripted.setHandler(
      [](const auto&) { return page(200, R"({"arguments":{},"result":"success"})"); });
  client.setSelectedidx(7);
  client.startTorrent(true);
  client.startTorrent(9, false);
  client.startTorrent(-1, true);
  EXPECT_THAT(bodies(),
              ElementsAre(text("torrent-start", R"({"ids":7})"), text("torrent-stop", R"({"ids":9})"),
                          text("torrent-start", R"({"ids":-1})")));
  EXPECT_EQ(lines.count("startTorrent\n"), 3);
  EXPECT_TRUE(lines.contains("onoffchanged to on, index:7\n"));
  EXPECT_TRUE(lines.contains("onoffchanged to off, index:9\n"));

  services.scripted.forgetRequests();
  client.addTorrentURL("magnet:?xt=urn:btih:ab&dn=a b \"ü/\n");
  client.addTorrentData(std::string("Man\0\xff", 5));
  client.addTorrentData("");
  client.addTorrentData(std::nullopt);
  EXPECT_THAT(
      bodies(),
      ElementsAre(text("torrent-add", R"({"filename":"magnet:?xt=urn:btih:ab&dn=a b \"ü/\n"})"),
                  text("torrent-add", R"({"metainfo":"TWFuAP8="})"),
                  text("torrent-add", R"({"metainfo":""})"), text("torrent-add", R"({"metainfo":""})")));
  EXPECT_TRUE(lines.contains("addTorrentURL URL = magnet:?xt=urn:btih:ab&dn=a b \"ü/\n"));
  EXPECT_EQ(lines.count("addTorrentData\n"), 3);
}

TEST_F(CommandsTest, AFileIsSentWholeAndAnUnreadableOneAsEmpty) {
  services.scripted.setHandler([](const auto&) { return page(200, R"({"result":"success"})"); });
  const QTemporaryDir folder;
  const std::string path = folder.filePath(QStringLiteral("größe 100%.torrent")).toStdString();
  std::ofstream(path) << "Ma";
  const std::string escaped = folder.path().toStdString() + "/gr%C3%B6%C3%9Fe%20100%25.torrent";
  const std::string latin = folder.path().toStdString() + "/gr\xf6\xdf" + "e";
  std::ofstream(latin) << "Ma";
  for (const std::string& file : {path, latin, "file://" + escaped, "file://localhost" + escaped}) {
    EXPECT_EQ(client.addTorrentFile(file)["statuscode"].text(), "200");
    EXPECT_EQ(bodies().back(), text("torrent-add", R"({"metainfo":"TWE="})")) << file;
    EXPECT_TRUE(lines.contains("addTorrent URL = " + file));
  }
  const std::string folderPath = folder.path().toStdString();
  for (const std::string& file : {folderPath, folderPath + "/none", std::string("/dev/zero"), std::string(),
                                  std::string("http://127.0.0.1/a"), std::string("a.torrent")}) {
    client.addTorrentFile(file);
    EXPECT_EQ(bodies().back(), text("torrent-add", R"({"metainfo":""})")) << file;
  }
}

class CommandsFacadeTest : public ClientFixture {};

TEST_F(CommandsFacadeTest, WhileNotConnectedNoCommandIsSentAndNoMessageStays) {
  services.scripted.setHandler([](const auto&) { return failure(HttpError::refused); });
  RVTrans::selectTorrent(1);
  RVTrans::startTorrent(true);
  {
    const UnconnectedNotice notice;
    OvProgressHUD::showWithStatus("Deleting...");
    RVTrans::deleteTorrent();
  }
  EXPECT_THAT(bodies(), IsEmpty());
  EXPECT_EQ(RVTrans::getTorrentSelection(), 1);
  services.settle();
  EXPECT_EQ(OvProgressHUD::sharedView()->image(), QStringLiteral("error"));
  services.clock.advanceSeconds(2);
  services.settle();
  services.clock.advanceSeconds(0.15);
  EXPECT_FALSE(OvProgressHUD::sharedView()->panelShown());
  EXPECT_TRUE(RVTrans::addTorrentURL("magnet:?").isAbsent());
  EXPECT_TRUE(RVTrans::addTorrentData("x").isAbsent());
  EXPECT_TRUE(RVTrans::addTorrentFile("/none").isAbsent());
  services.finishThreads();
  EXPECT_THAT(bodies(), ElementsAre(kStats, kStats, kStats)) << "each add tries to connect";
}

TEST_F(CommandsFacadeTest, CommandsGoToTheSelectedTorrentAndARemovalClearsTheSelectionAtOnce) {
  answerLikeADaemon();
  connect();
  RVTrans::selectTorrent(2);
  RVTrans::startTorrent(false);
  EXPECT_EQ(bodies().back(), text("torrent-stop", R"({"ids":2})"));
  services.scripted.forgetRequests();
  services.scripted.hold();
  {
    const UnconnectedNotice notice;
    RVTrans::deleteTorrent();
  }
  EXPECT_EQ(RVTrans::getTorrentSelection(), -1);
  EXPECT_EQ(overlayText(), "Deleting torrent...");
  services.scripted.release();
  services.finishThreads();
  EXPECT_THAT(bodies(), ElementsAre(text("torrent-remove", R"({"ids":2,"delete-local-data":"true"})"),
                                    testing::HasSubstr("torrent-get")));
  EXPECT_TRUE(lines.contains("torrent is deleted"));
  EXPECT_EQ(overlayText(), "Deleted!!");
}

}  // namespace
}  // namespace seedmote
