#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "client/RVTrans.h"
#include "json/Log.h"
#include "platform/core/CurlHttp.h"
#include "platform/core/Log.h"
#include "platform/core/LoginGuard.h"
#include "tests/support/LoopbackDaemon.h"
#include "tests/support/Replies.h"
#include "tests/support/TestServices.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote::faults {

using support::LoopbackDaemon;
using support::RecordedRequest;
using support::Reply;
namespace replies = support::replies;

constexpr const char* kTorrents =
    R"({"arguments":{"torrents":[{"id":7,"name":"seven","totalSize":70,"files":[{"name":"f","length":70}]}]},)"
    R"("result":"success"})";
constexpr const char* kStats = R"({"arguments":{"torrentCount":1},"result":"success"})";

// As the program has it, but cuts the time-outs that the client asks for, so that a hanging daemon is given
// up soon.
class HurriedHttp final : public platform::Http {
 public:
  platform::HttpAnswer exchange(const platform::HttpRequest& request) override {
    platform::HttpRequest hurried = request;
    hurried.timeoutSeconds = hurried_ ? 0.2 : request.timeoutSeconds;
    return guard_.exchange(hurried);
  }
  void cancelAll() override { guard_.cancelAll(); }
  void hurry() { hurried_ = true; }

 private:
  platform::CurlHttp curl_;
  platform::LoginGuard guard_{curl_};
  std::atomic<bool> hurried_{false};
};

// A client and a daemon that misbehaves when it is told to; they begin with nothing known of each other.
class Harness {
 public:
  Harness() {
    json::setLogFunction([](std::string_view) {});
    daemon.model().setTorrents(kTorrents);
    daemon.model().setDetail(kTorrents);
    daemon.model().setStats(kStats);
    other.setReply(replies::html(200, "<h1>Something else</h1>"));
    services.setSetting("IP Address", "127.0.0.1");
    services.setSetting("Port", std::to_string(daemon.port()).c_str());
    services.setSetting("Username", "user");
    services.setSetting("Password", "secret");
    services.setSetting("UseSSL", "False");
    services.setSetting("Timeout", "20");
  }
  ~Harness() {
    services.main.quit();
    services.threads.join(std::chrono::minutes(1));
    RVTrans::drop();
  }
  Harness(const Harness&) = delete;
  Harness& operator=(const Harness&) = delete;

  // Connects, selects torrent 7, and lets the message go.
  void connect() {
    RVTrans::init();
    services.finishThreads();
    RVTrans::selectTorrent(7);
    RVTrans::isNewData();
    letMessageGo();
  }

  void letMessageGo() {
    services.clock.advanceSeconds(2);
    services.settle();
    services.clock.advanceSeconds(0.15);
    services.settle();
  }

  // From now on requests with `part` in their body are answered by `misbehave`; null: as a daemon does.
  void misbehaveOn(const std::string& part,
                   std::function<std::optional<Reply>(const RecordedRequest&)> misbehave) {
    daemon.forgetRequests();
    daemon.setHandler([this, part, misbehave](const RecordedRequest& request) {
      std::optional<Reply> reply;
      if (request.body.find(part) != std::string::npos) {
        reply = misbehave(request);
      }
      return reply ? *reply : daemon.model().reply(request);
    });
  }

  std::size_t sent(const std::string& part) const {
    std::size_t count = 0;
    for (const RecordedRequest& request : daemon.requests()) {
      count += request.body.find(part) != std::string::npos ? 1 : 0;
    }
    return count;
  }
  std::string message() const { return OvProgressHUD::sharedView()->text().toStdString(); }
  bool isMessageShown() const { return OvProgressHUD::sharedView()->panelShown(); }
  bool isError() const { return OvProgressHUD::sharedView()->image().contains(QStringLiteral("error")); }

  LoopbackDaemon daemon;
  LoopbackDaemon other;
  HurriedHttp http;
  support::TestServices services{&http};
  platform::LogRecorder lines;
};

}  // namespace seedmote::faults
