#include "client/RVDownload.h"

#include <gmock/gmock.h>

#include <atomic>

#include "client/tests/ClientFixture.h"

namespace seedmote {
namespace {

using platform::HttpAnswer;
using platform::HttpError;
using testing::ElementsAre;

constexpr const char* kUrl = "http://10.0.0.8/a.torrent";
constexpr const char* kWaiting = "waiting for downloading file\n";

class RVDownloadTest : public ClientFixture {
 protected:
  // Lets the clock go on until `count` seconds of waiting were logged.
  void passSeconds(int count) {
    for (int second = 1; second <= count; ++second) {
      services.spinUntil([this] { return services.clock.sleeping() == 1; });
      services.clock.advanceSeconds(1);
      services.spinUntil([&] { return lines.count(kWaiting) == second; });
    }
  }
};

TEST_F(RVDownloadTest, OnlyBytesEndTheBlocking) {
  struct Case {
    const char* what;
    HttpAnswer answer;
    const char* line;
    bool blocking;
  };
  const Case cases[] = {
      {"500 bytes, zeros among them", page(200, std::string(500, '\0')), "Download finished, lenght = 500\n",
       false},
      {"an error page", page(404, "not here"), "Download finished, lenght = 8\n", false},
      {"nothing", page(200, ""), "Nothing was downloaded.", true},
      {"an error", failure(HttpError::refused), "Error = scripted", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    lines.clear();
    enqueue({c.answer});
    RVDownload download;
    EXPECT_TRUE(download.blocking());
    EXPECT_EQ(download.resData(), std::nullopt);
    download.downloadFile(kUrl);
    services.finishThreads();
    EXPECT_THAT(lines.records(), ElementsAre("Download started", c.line));
    const platform::HttpRequest sent = services.scripted.requests().back();
    EXPECT_EQ(sent.method + " " + sent.url, std::string("GET ") + kUrl);
    EXPECT_TRUE(sent.headers.empty() && sent.body.empty()) << "what the daemon gets is not for others";
    EXPECT_EQ(download.blocking(), c.blocking);
    EXPECT_EQ(download.resData(), c.blocking ? std::nullopt : std::optional(c.answer.body));
    if (!c.blocking) {
      EXPECT_EQ(download.getDownloadFile(), c.answer.body);
    }
  }
}

TEST_F(RVDownloadTest, ANewDownloadBlocksAgainAndAFailedOneKeepsTheOldBytes) {
  enqueue({page(200, "first"), page(200, ""), page(200, "third")});
  RVDownload download;
  const auto fetch = [&] {
    download.downloadFile(kUrl);
    services.finishThreads();
  };
  fetch();
  fetch();
  EXPECT_TRUE(download.blocking());
  EXPECT_EQ(download.resData(), "first");
  fetch();
  EXPECT_EQ(download.getDownloadFile(), "third");
}

TEST_F(RVDownloadTest, WhatNeverSucceedsIsWaitedForUntilTheProgramEnds) {
  enqueue({page(200, "")});
  RVDownload download;
  download.downloadFile(kUrl);
  services.finishThreads();
  std::atomic<bool> returned{false};
  std::optional<std::string> got = "not yet";
  services.threads.start("caller", [&] {
    got = download.getDownloadFile();
    returned = true;
  });
  passSeconds(70);
  EXPECT_FALSE(returned);
  services.main.quit();
  ASSERT_TRUE(services.threads.join(std::chrono::minutes(1)));
  EXPECT_EQ(got, std::nullopt);
  EXPECT_EQ(lines.count(kWaiting), 70);
  EXPECT_EQ(RVDownload().getDownloadFile(), std::nullopt) << "on the main thread, after the end began";
}

TEST_F(RVDownloadTest, GoesWhileItsDownloadRuns) {
  services.scripted.hold();
  enqueue({page(200, "bytes")});
  std::optional<RVDownload> download(std::in_place);
  download->downloadFile(kUrl);
  ASSERT_TRUE(services.scripted.waitForRequests(1, std::chrono::minutes(1)));
  download.reset();
  services.scripted.release();
  services.finishThreads();
  EXPECT_TRUE(lines.contains("Download finished, lenght = 5\n"));
}

}  // namespace
}  // namespace seedmote
