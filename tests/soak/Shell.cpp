#include "tests/soak/Shell.h"

#include <unistd.h>

#include <QGuiApplication>
#include <cstdio>

#include "app/RealUiServices.h"
#include "client/RVTrans.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "widgets/OvProgressHUD.h"
#include "widgets/TextMeasure.h"

namespace seedmote::soak {

namespace {

constexpr platform::Size kUprightTablet{768, 1024};
constexpr platform::Size kUprightPhone{375, 667};

RVSettingsStore storeOfProgram() {
  return RVSettingsStore(RVSettingsStore::findBundle(QCoreApplication::applicationDirPath().toStdString()));
}

}  // namespace

Shell::Shell(platform::Idiom idiom, bool restarts)
    : services_(platform::Device(idiom, "7.0", "soak"),
                idiom == platform::Idiom::tablet ? kUprightTablet : kUprightPhone),
      ui_(std::make_unique<support::TestUiServices>()),
      store_(storeOfProgram()) {
  services_.beforeAbandoning([](int) {
    std::puts("FAILED: threads did not end when the program was quit");
    std::fflush(stdout);
    _exit(1);
  });
  platform::MainThread& main = platform::services().main;
  connectWaits(main, ui_->alerts);
  closed_ = QObject::connect(qGuiApp, &QGuiApplication::lastWindowClosed, [&main] { main.quit(); });
  store_.loadUserSetting();
  OvProgressHUD::sharedView()->setTextMeasure(overlayTextMeasure());
  delegate_ = std::make_unique<RVAppDelegate>(store_);
  delegate_->didFinishLaunchingWithOptions();
  delegate_->refreshEvery(7);
  delegate_->onRestart([&main, restarts] {
    if (restarts) main.quit();
  });
  main.onQuit([this] { bar().endEditing(); });
  delegate_->window().requestActivate();
  intake_.deliverTo(*delegate_);
}

void Shell::run() {
  QGuiApplication::exec();
}

Shell::~Shell() {
  platform::MainThread& main = platform::services().main;
  main.quit();
  QObject::disconnect(closed_);
  intake_.stopDelivering();
  delegate_.reset();
  main.setSwallowsInput(nullptr);
  ui_.reset();
}

void Shell::install(const std::string& port, const std::string& user, const std::string& password) {
  const RealServices services(platform::Device(platform::Idiom::tablet, "7.0", "soak"), kUprightTablet);
  RVSettingsStore store = storeOfProgram();
  store.loadUserSetting();
  store.portChanged({port});
  store.usernameChanged({user});
  store.passwordChanged({password});
  store.timeoutChanged({"10"});
  platform::UserDefaults& defaults = platform::services().defaults;
  defaults.setObject("FirstRun", "3");
  defaults.setObject("SavedVersion", defaults.object("Version")["Value"]);
  defaults.synchronize();
}

}  // namespace seedmote::soak
