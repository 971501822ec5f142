#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "client/RVTrans.h"
#include "platform/core/CurlHttp.h"
#include "platform/core/LoginGuard.h"
#include "tests/support/TestServices.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

// The client over real sockets, as the program runs it.
class WireFixture : public testing::Test {
 protected:
  ~WireFixture() override {
    services.main.quit();
    services.threads.join(std::chrono::minutes(1));
    RVTrans::drop();
  }

  void useDaemonAt(int port, const char* useSsl = "False") {
    services.setSetting("IP Address", "127.0.0.1");
    services.setSetting("Port", std::to_string(port).c_str());
    services.setSetting("Username", user.c_str());
    services.setSetting("Password", password.c_str());
    services.setSetting("UseSSL", useSsl);
    services.setSetting("Timeout", "20");
  }
  void attempt() {
    RVTrans::init();
    services.finishThreads();
  }
  std::string overlayText() const { return OvProgressHUD::sharedView()->text().toStdString(); }

  std::string user;
  std::string password;
  platform::CurlHttp curl;
  platform::LoginGuard http{curl};
  support::TestServices services{&http};
};

}  // namespace seedmote
