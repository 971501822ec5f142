#include <gtest/gtest.h>

#include <string>

#include "json/JSONValue.h"
#include "platform/core/Log.h"
#include "screens/RVTorrentListCell.h"

namespace seedmote {
namespace {

class TorrentListCellTest : public testing::Test {
 protected:
  void fill(const std::string& torrent, int status) {
    const json::Value value = json::JSONValue(torrent);
    ASSERT_FALSE(value.isAbsent()) << torrent;
    cell.fill(value, status);
  }

  RVTorrentListCell cell;
};

TEST_F(TorrentListCellTest, BytesLine) {
  using Case = std::pair<const char*, const char*>;
  for (const auto& [torrent, line] : {
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
    fill(torrent, 0);
    EXPECT_EQ(cell.labelBytesInformation().toStdString(), line) << torrent;
  }
}

TEST_F(TorrentListCellTest, SpeedLineAndId) {
  fill(R"({"peersSendingToUs":3,"seeders":4,"rateDownload":2048,"rateUpload":10,"id":7,"name":"a <b>\n"})",
       4);
  EXPECT_EQ(cell.labelSpeedInformation().toStdString(),
            "peers:3   seeds:4     Download:2.0KB/sec, Upload:10B/sec");
  EXPECT_EQ(cell.torrentidx(), 7);
  EXPECT_EQ(cell.labelTorrnetName().toStdString(), "a <b>\n");
  EXPECT_EQ(cell.accessibleDescription(), cell.labelBytesInformation() + QLatin1Char('\n') +
                                              cell.labelSpeedInformation() + QLatin1Char('\n') +
                                              cell.labelETA());
  for (const char* id : {"2.5", "5.0", "1e400", "true", "\"5\"", "null", "18446744073709551615"}) {
    fill(std::string(R"({"id":)") + id + "}", 4);
    EXPECT_EQ(cell.torrentidx(), -1) << id;
  }
  fill(R"({"name":5})", 4);
  EXPECT_EQ(cell.torrentidx(), -1);
  EXPECT_EQ(cell.labelTorrnetName(), QString()) << "a cell is used again, its texts are not";
}

TEST_F(TorrentListCellTest, Eta) {
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
    fill(wanted.torrent, wanted.status);
    EXPECT_EQ(cell.labelETA().toStdString(), wanted.text) << wanted.torrent;
  }
}

TEST_F(TorrentListCellTest, StatesAndTheirIcons) {
  struct Case {
    int status;
    const char* percentDone;
    int statusID;
    const char* icon;
  };
  EXPECT_TRUE(cell.imageStatus().isEmpty());
  EXPECT_EQ(cell.imageFill(), QColor(250, 250, 250));
  for (const Case& wanted :
       {Case{0, "1", 4, "finished"}, Case{0, "0.999", 2, "pause"}, Case{0, "7", 4, "finished"},
        Case{1, "1", 7, "waiting"}, Case{2, "1", 6, "verifying"}, Case{3, "0", 7, "waiting"},
        Case{4, "1", 3, "download"}, Case{5, "1", 7, "waiting"}, Case{6, "1", 5, "upload"},
        Case{7, "0", 5, "upload"}, Case{-1, "0", 5, "upload"}}) {
    fill(std::string(R"({"percentDone":)") + wanted.percentDone + "}", wanted.status);
    EXPECT_EQ(cell.statusID(), wanted.statusID) << wanted.status;
    EXPECT_TRUE(cell.imageStatus().toString().endsWith(
        QStringLiteral("ios7_%1.png").arg(QLatin1String(wanted.icon))));
    EXPECT_EQ(cell.imageFill().alpha(), 0);
  }
  fill(R"({"percentDone":-1})", 0);
  EXPECT_EQ(cell.processDownload(), 0.0F);
}

}  // namespace
}  // namespace seedmote
