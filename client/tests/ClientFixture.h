#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "client/RVTrans.h"
#include "json/Log.h"
#include "platform/core/Log.h"
#include "tests/support/TestServices.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

inline constexpr const char* kStats = R"({"method":"session-stats"})";
inline constexpr const char* kInfo = R"({"method":"session-get"})";
inline constexpr const char* kInfoAnswer =
    R"json({"arguments":{"rpc-version":16,"rpc-version-minimum":1,"version":"3.00 (bb6b5a062e)"},)json"
    R"json("result":"success"})json";
inline constexpr const char* kStatsAnswer =
    R"({"arguments":{"activeTorrentCount":3,"pausedTorrentCount":4,"torrentCount":7,"downloadSpeed":2000,)"
    R"("uploadSpeed":1000,"cumulative-stats":{"uploadedBytes":9007199254740993,"downloadedBytes":2,"filesAdded":3,)"
    R"("sessionCount":4,"secondsActive":5},"current-stats":{"uploadedBytes":6,"downloadedBytes":7,"filesAdded":8,)"
    R"("sessionCount":9,"secondsActive":10}},"result":"success"})";
inline constexpr const char* kListAnswer =
    R"({"arguments":{"torrents":[{"id":1,"name":"one","status":6},{"id":2,"name":"two","status":0}]},"result":"success"})";

inline std::string sessionPage(const std::string& id) {
  return "<h1>409: Conflict</h1><p><code>X-Transmission-Session-Id: " + id + "</code></p>";
}

// A client with stored settings, a scripted daemon and a driven clock.
class ClientFixture : public testing::Test {
 protected:
  explicit ClientFixture(platform::Idiom idiom = platform::Idiom::tablet) : services(nullptr, idiom) {
    json::setLogFunction([](std::string_view text) { platform::log("%@", text); });
    services.setSetting("IP Address", "10.0.0.7");
    services.setSetting("Port", "9091");
    services.setSetting("Username", "");
    services.setSetting("Password", "");
    services.setSetting("UseSSL", "False");
    services.setSetting("Timeout", "30");
  }
  ~ClientFixture() override {
    services.main.quit();
    services.threads.join(std::chrono::minutes(1));
    RVTrans::drop();
  }

  static platform::HttpAnswer page(int status, std::string body) {
    return platform::ScriptedHttp::answer(status, std::move(body));
  }
  static platform::HttpAnswer failure(platform::HttpError error) {
    return platform::ScriptedHttp::failure(error);
  }
  void enqueue(std::vector<platform::HttpAnswer> answers) {
    for (auto& answer : answers) {
      services.scripted.enqueue(std::move(answer));
    }
  }
  // As the daemon does: the requests of the hand-shake and of the list are answered by their method.
  void answerLikeADaemon() {
    services.scripted.setHandler([](const auto& request) { return answerOf(request, kListAnswer); });
  }
  static platform::HttpAnswer answerOf(const platform::HttpRequest& request, const std::string& list) {
    const std::string& session = request.headers.at(0).value;
    if (session != "abc") return page(409, sessionPage("abc"));
    if (request.body == kStats) return page(200, kStatsAnswer);
    if (request.body == kInfo) return page(200, kInfoAnswer);
    return page(200, list);
  }
  void connect() {
    RVTrans::init();
    services.finishThreads();
    ASSERT_TRUE(RVTrans::isConnected());
  }
  std::vector<std::string> bodies() const {
    std::vector<std::string> texts;
    for (const auto& request : services.scripted.requests()) {
      texts.push_back(request.body);
    }
    return texts;
  }
  std::string overlayText() const { return OvProgressHUD::sharedView()->text().toStdString(); }

  support::TestServices services;
  platform::LogRecorder lines;
};

}  // namespace seedmote
