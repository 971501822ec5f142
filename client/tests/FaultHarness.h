#pragma once

#include <chrono>
#include <string>

#include "client/RVTrans.h"
#include "json/Log.h"
#include "platform/core/CurlHttp.h"
#include "platform/core/Log.h"
#include "platform/core/LoginGuard.h"
#include "tests/support/LoopbackDaemon.h"
#include "tests/support/TestServices.h"

namespace seedmote::faults {

using support::LoopbackDaemon;
using support::RecordedRequest;

constexpr const char* kTorrents =
    R"({"arguments":{"torrents":[{"id":7,"name":"seven","totalSize":70,"files":[{"name":"f","length":70}]}]},)"
    R"("result":"success"})";
constexpr const char* kStats = R"({"arguments":{"torrentCount":1},"result":"success"})";

// A client, with HTTP as the program has it, and a daemon; they begin with nothing known of each other.
class Harness {
 public:
  Harness() {
    json::setLogFunction([](std::string_view) {});
    daemon.model().setTorrents(kTorrents);
    daemon.model().setDetail(kTorrents);
    daemon.model().setStats(kStats);
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

  LoopbackDaemon daemon;
  platform::CurlHttp curl;
  platform::LoginGuard http{curl};
  support::TestServices services{&http};
  platform::LogRecorder lines;
};

}  // namespace seedmote::faults
