#include "tests/support/TestServices.h"

#include <QCoreApplication>

#include "widgets/OvProgressHUD.h"
#include "widgets/RaisedMessage.h"

namespace seedmote::support {

TestServices::TestServices(platform::Http* ownHttp, platform::Idiom idiom)
    : http(ownHttp != nullptr ? *ownHttp : scripted),
      device(idiom, "7.0", "test device"),
      screen(idiom == platform::Idiom::tablet ? platform::Size{768, 1024} : platform::Size{375, 667}) {
  main.onQuit([this] { http.cancelAll(); });
  main.onQuit([this] { threads.stop(); });
  showWhatIsRaised(main);
}

TestServices::~TestServices() {
  main.quit();
  threads.join(std::chrono::minutes(1));
  OvProgressHUD::dropSharedView();
}

void TestServices::setSetting(const char* key, const char* value) {
  defaults.setObject(key, platform::PropertyList::Dictionary{{"Title", key}, {"Value", value}});
}

void TestServices::spinUntil(const std::function<bool()>& done) {
  while (!done()) {
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
  }
}

void TestServices::settle() {
  bool last = false;
  main.post([&last] { last = true; });
  spinUntil([&] { return last || main.isQuitting(); });
}

void TestServices::finishThreads() {
  spinUntil([this] { return threads.join(std::chrono::milliseconds(5)); });
  settle();
}

}  // namespace seedmote::support
