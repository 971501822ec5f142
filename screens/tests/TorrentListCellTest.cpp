#include <gtest/gtest.h>

#include <set>
#include <string>

#include "json/JSONValue.h"
#include "platform/core/Log.h"
#include "screens/EmptyState.h"
#include "screens/RVTorrentListCell.h"

namespace seedmote {
namespace {

void fill(RVTorrentListCell& cell, const std::string& torrent, int status) {
  const json::Value value = json::JSONValue(torrent);
  ASSERT_FALSE(value.isAbsent()) << torrent;
  cell.fill(value, status);
}

TEST(TorrentListCellTest, BytesLine) {
  struct Case {
    const char* torrent;
    const char* line;
  };
  for (const Case& wanted : {
           Case{R"({"percentDone":0.5,"totalSize":2048,"uploadedEver":1025})",
                "(50%)   Downloaded:1024B/2.0KB   Uploaded:1.0KB "},
           Case{R"({"percentDone":0.05,"totalSize":100})", "( 5%)   Downloaded:5B/100B   Uploaded:0B "},
           Case{R"({"percentDone":0})", "( 0%)   Downloaded:0B/0B   Uploaded:0B "},
           Case{R"({"percentDone":1,"totalSize":1099511627777,"uploadedEver":-5})",
                "(100%)   Downloaded:1024.0GB/1.0TB   Uploaded:-5B "},
           // Half a percent rounds to even; 16777217 is no single-precision number.
           Case{R"({"percentDone":0.125,"totalSize":16777217})",
                "(12%)   Downloaded:2.0MB/16.0MB   Uploaded:0B "},
           Case{R"({"percentDone":1,"totalSize":1027})", "(100%)   Downloaded:1.0KB/1.0KB   Uploaded:0B "},
           Case{R"({"percentDone":1e30,"totalSize":9e18})",
                "(100000003318135351409612647563264%)   Downloaded:8192.0PB/7993.6PB   Uploaded:0B "},
           Case{R"({"percentDone":"0.5","totalSize":"10","uploadedEver":null})",
                "(50%)   Downloaded:5B/10B   Uploaded:0B "},
           Case{"{}", "( 0%)   Downloaded:0B/0B   Uploaded:0B "},
       }) {
    RVTorrentListCell cell;
    fill(cell, wanted.torrent, 0);
    EXPECT_EQ(cell.labelBytesInformation().toStdString(), wanted.line) << wanted.torrent;
  }
}

TEST(TorrentListCellTest, SpeedLineAndId) {
  RVTorrentListCell cell;
  fill(cell,
       R"({"peersSendingToUs":3,"seeders":4,"rateDownload":2048,"rateUpload":10,"id":7,"name":"a <b>\n"})",
       4);
  EXPECT_EQ(cell.labelSpeedInformation().toStdString(),
            "peers:3   seeds:4     Download:2.0KB/sec, Upload:10B/sec");
  EXPECT_EQ(cell.torrentidx(), 7);
  EXPECT_EQ(cell.labelTorrnetName().toStdString(), "a <b>\n");
  EXPECT_EQ(cell.accessibleDescription(), cell.labelBytesInformation() + QLatin1Char('\n') +
                                              cell.labelSpeedInformation() + QLatin1Char('\n') +
                                              cell.labelETA());
  for (const char* id : {"2.5", "5.0", "1e400", "true", "\"5\"", "null", "18446744073709551615"}) {
    fill(cell, std::string(R"({"id":)") + id + "}", 4);
    EXPECT_EQ(cell.torrentidx(), -1) << id;
  }
  fill(cell, R"({"name":5})", 4);
  EXPECT_EQ(cell.torrentidx(), -1);
  EXPECT_EQ(cell.labelTorrnetName(), QString());
}

TEST(TorrentListCellTest, Eta) {
  struct Case {
    const char* torrent;
    int status;
    const char* text;
  };
  for (const Case& wanted : {
           Case{R"({"percentDone":0.5,"totalSize":1200,"rateDownload":10})", 4, "ETA:60s"},
           Case{R"({"percentDone":0.5,"totalSize":7200000,"rateDownload":1000})", 4, "ETA:60m"},
           Case{R"({"percentDone":0.5,"totalSize":1,"rateDownload":10})", 4, "ETA: s"},
           Case{R"({"percentDone":0.5,"totalSize":9000000000000000000,"rateDownload":1})", 4,
                "ETA:52083334504387d"},
           Case{R"({"percentDone":0.5,"totalSize":1200,"rateDownload":0})", 4, "ETA>1d"},
           Case{R"({"percentDone":0.5,"totalSize":1200,"rateDownload":-1})", 4, "ETA>1d"},
           Case{R"({"percentDone":1,"totalSize":1200,"rateDownload":10})", 4, ""},
           Case{R"({"percentDone":0.5,"totalSize":1200,"rateDownload":10})", 6, ""},
           Case{R"({"percentDone":0.5,"totalSize":1200,"rateDownload":10})", 0, ""},
       }) {
    RVTorrentListCell cell;
    fill(cell, wanted.torrent, wanted.status);
    EXPECT_EQ(cell.labelETA().toStdString(), wanted.text) << wanted.torrent;
  }
}

TEST(TorrentListCellTest, StatesAndTheirIcons) {
  struct Case {
    int status;
    const char* percentDone;
    int statusID;
    const char* icon;
  };
  RVTorrentListCell cell;
  EXPECT_TRUE(cell.imageStatus().isEmpty());
  EXPECT_EQ(cell.imageFill(), QColor(250, 250, 250));
  for (const Case& wanted :
       {Case{0, "1", 4, "finished"}, Case{0, "0.999", 2, "pause"}, Case{0, "7", 4, "finished"},
        Case{1, "1", 7, "waiting"}, Case{2, "1", 6, "verifying"}, Case{3, "0", 7, "waiting"},
        Case{4, "1", 3, "download"}, Case{5, "1", 7, "waiting"}, Case{6, "1", 5, "upload"},
        Case{7, "0", 5, "upload"}, Case{-1, "0", 5, "upload"}}) {
    fill(cell, std::string(R"({"percentDone":)") + wanted.percentDone + "}", wanted.status);
    EXPECT_EQ(cell.statusID(), wanted.statusID) << wanted.status;
    EXPECT_TRUE(cell.imageStatus().toString().endsWith(
        QStringLiteral("ios7_%1.png").arg(QLatin1String(wanted.icon))));
    EXPECT_EQ(cell.imageFill().alpha(), 0);
  }
  fill(cell, R"({"percentDone":-1})", 0);
  EXPECT_EQ(cell.processDownload(), 0.0F);
}

TEST(TorrentListCellTest, ReuseLeavesNoTextsBehind) {
  RVTorrentListCell cell;
  fill(cell, R"({"name":"first","percentDone":0.5,"totalSize":10})", 4);
  EXPECT_EQ(cell.labelETA(), QStringLiteral("ETA>1d"));
  EXPECT_EQ(cell.labelTorrnetName(), QStringLiteral("first"));
  fill(cell, "{}", 6);
  EXPECT_EQ(cell.labelETA(), QString());
  EXPECT_EQ(cell.labelTorrnetName(), QString());
}

TEST(EmptyStateTest, SaysWhatIsTheMatter) {
  const auto contains = [](const EmptyState& state, const char* words) {
    EXPECT_NE(state.sentence().find(words), std::string::npos) << state.sentence();
  };
  EmptyState state;
  contains(state, "not been asked");
  state.outcome = {DaemonCondition::loginRefused, ""};
  contains(state, "user name or the password");
  state.outcome = {DaemonCondition::unreadable, "Illegal number at 7"};
  contains(state, "(Illegal number at 7)");
  state.connected = true;
  state.outcome = {DaemonCondition::noAnswer, ""};
  contains(state, "in time");
  state.outcome = {DaemonCondition::answered, ""};
  contains(state, "no torrents");
  state.torrents = 3;
  state.filterID = 6;
  contains(state, "\"Verifying\"");
  state.setUp = false;
  contains(state, "settings have been confirmed");
}

TEST(EmptyStateTest, EachCauseHasWordsOfItsOwnAndSslIsNamedWhereItMayBeTheCause) {
  const std::set<DaemonCondition> aboutSsl = {DaemonCondition::noTls, DaemonCondition::needsTls,
                                              DaemonCondition::tlsTrouble, DaemonCondition::closedUnanswered};
  std::set<std::string> sentences;
  for (int i = 0; i <= static_cast<int>(DaemonCondition::cancelled); ++i) {
    const auto condition = static_cast<DaemonCondition>(i);
    const std::string sentence = EmptyState{.outcome = {condition, ""}}.sentence();
    EXPECT_TRUE(sentence.ends_with('.') && sentence.size() < 180) << sentence;
    EXPECT_TRUE(sentences.insert(sentence).second) << sentence;
    EXPECT_EQ(sentence.find("SSL") != std::string::npos, aboutSsl.contains(condition)) << sentence;
  }
}

}  // namespace
}  // namespace seedmote
