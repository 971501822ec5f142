#include "bench/Shell.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <chrono>
#include <cmath>
#include <stdexcept>

#include "app/RVRightBarController.h"
#include "client/RVTrans.h"
#include "widgets/OvProgressHUD.h"
#include "widgets/TextMeasure.h"

namespace seedmote::bench {

namespace {

using platform::Device;
using platform::Idiom;

constexpr platform::Size kUprightTablet{768, 1024};
constexpr double kPatience = 60;  // seconds
constexpr int kLookEvery = 5;     // milliseconds
constexpr double kMoment = 1;

bool runWhile(double seconds, const std::function<bool()>& going) {
  QTimer pulse;
  pulse.start(kLookEvery);
  const QDeadlineTimer over(std::lround(seconds * 1000));
  while (going() && !over.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
  return !going();
}

}  // namespace

void runUntil(const std::function<bool()>& done) {
  if (!runWhile(kPatience, [&] { return !done(); })) throw std::runtime_error("it takes too long");
}

void runFor(double seconds) {
  runWhile(seconds, [] { return true; });
}

Shell::Home::Home() {
  for (const char* name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME"}) {
    qputenv(name, folder.path().toUtf8());
  }
}

Shell::Shell(int torrents)
    : daemon_(torrents),
      services_(std::make_unique<RealServices>(Device(Idiom::tablet, "7.0", "bench"), kUprightTablet)),
      uiServices_(std::make_unique<RealUiServices>()),
      store_(RVSettingsStore::findBundle(QCoreApplication::applicationDirPath().toStdString())) {
  storeSettings();
  OvProgressHUD::sharedView()->setTextMeasure(overlayTextMeasure());
  delegate_ = std::make_unique<RVAppDelegate>(store_);
  delegate_->didFinishLaunchingWithOptions();
  runUntil([&] { return table().rowCount() == torrents && !OvProgressHUD::sharedView()->panelShown(); });
  runFor(kMoment);
}

Shell::~Shell() {
  delegate_.reset();
  uiServices_.reset();
  services_.reset();
  RVTrans::drop();
}

void Shell::storeSettings() {
  store_.loadUserSetting();
  store_.ipaddressChanged({"127.0.0.1"});
  store_.portChanged({std::to_string(daemon_.port())});
  platform::UserDefaults& defaults = platform::services().defaults;
  defaults.setObject("FirstRun", "3");
  defaults.setObject("SavedVersion", defaults.object("Version")["Value"]);
}

}  // namespace seedmote::bench
