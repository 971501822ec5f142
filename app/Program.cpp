#include "app/Program.h"

#include <QFont>
#include <QGuiApplication>
#include <QScreen>
#include <QSysInfo>
#include <algorithm>
#include <iostream>
#include <iterator>
#include <optional>
#include <stdexcept>

#include "app/DesktopService.h"
#include "app/HandOver.h"
#include "app/Intake.h"
#include "app/RVAppDelegate.h"
#include "app/RVRightBarController.h"
#include "app/RealServices.h"
#include "app/RealUiServices.h"
#include "app/SessionBus.h"
#include "app/SignalWatcher.h"
#include "app/Snapshot.h"
#include "app/StorageNotice.h"
#include "app/WaylandSeat.h"
#include "app/WindowFront.h"
#include "json/Log.h"
#include "platform/core/Log.h"
#include "settings/RVSettingsStore.h"
#include "settings/SettingsCommand.h"
#include "widgets/TextMeasure.h"

namespace seedmote {

using platform::Device;
using platform::Idiom;
using platform::Size;

namespace {

constexpr Size kUprightTablet{768, 1024};
constexpr Size kUprightPhone{375, 667};

// As the desktop file names them.
constexpr const char* kRefreshAction = "refresh";
constexpr const char* kSettingsAction = "settings";

std::string thisDevice() {
  return QSysInfo::machineHostName().toStdString();
}

bool hasWindowSystem() {
  return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
         qEnvironmentVariableIsSet("DISPLAY");
}

// Qt ends the program with an abort when no window system can be had; say it in our words and end quietly.
void sayFatal(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type != QtFatalMsg) {
    platform::log("%@", text.toStdString());
    return;
  }
  const bool started = QCoreApplication::instance() != nullptr && !QCoreApplication::startingUp();
  std::cerr << "seedmote: " << (started ? "" : "the window system cannot be used: ") << text.toStdString()
            << '\n';
  if (!started) {
    std::cerr << "Start it in a Wayland or X session, or with QT_QPA_PLATFORM=offscreen.\n";
  }
  platform::flushLog();
  std::_Exit(1);
}

// The root view is scaled along with the window: letters that are fitted to the pixels of scale 1 lose rows
// of them at others.
void setFontHinting() {
  QFont font = QGuiApplication::font();
  font.setHintingPreference(QFont::PreferNoHinting);
  QGuiApplication::setFont(font);
}

Idiom idiomOfScreen() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) {
    return Idiom::tablet;
  }
  return Device::idiomForScreen(std::min(screen->size().width(), screen->size().height()));
}

void prepareApplication() {
  qInstallMessageHandler(sayFatal);
  prepareForMissingSeat();
  QGuiApplication::setDesktopFileName(QStringLiteral("org.seedmote.Seedmote"));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Seedmote"));
  QGuiApplication::setQuitOnLastWindowClosed(false);
}

RVSettingsStore storedSettings() {
  return RVSettingsStore(RVSettingsStore::findBundle(QCoreApplication::applicationDirPath().toStdString()));
}

DesktopService::Callbacks callbacksFor(RVAppDelegate& delegate, Intake& intake) {
  const auto activate = [&delegate](const std::string& token) { bringToFront(delegate.window(), token); };
  const auto act = [&delegate, activate](const std::string& name, const std::string& token) {
    activate(token);
    RVRightBarController& bar = *delegate.mainViewController().rightBarViewController();
    if (platform::services().main.swallowsInput()) {
      return;  // as a press on the button would
    }
    name == kSettingsAction ? bar.doSettings() : bar.doRefresh();
  };
  return {[&intake](const std::vector<std::string>& uris) { intake.take(uris); },
          activate,
          act,
          {kRefreshAction, kSettingsAction}};
}

}  // namespace

int Program::run(int argc, char** argv) {
  line_ = CommandLine::parse({argv + 1, argv + argc});
  if (!line_.problem.empty()) {
    std::cerr << "seedmote: " << line_.problem << "\nTry seedmote --help.\n";
    return kWrongUse;
  }
  if (line_.help) {
    std::cout << CommandLine::usage();
    return 0;
  }
  if (line_.version) {
    std::cout << "Seedmote " SEEDMOTE_VERSION "\n";
    return 0;
  }
  json::setLogFunction([](std::string_view text) { platform::log("%@", text); });
  platform::MainThread::prepareProcess();
  if (!line_.settings.empty()) {
    return storeSettings(argc, argv);
  }
  restart_.emplace(std::vector<std::string>{argv, argv + argc});
  const int code = showWindow(argc, argv);
  return restart_->carryOut(code);
}

int Program::storeSettings(int argc, char** argv) {
  platform::silenceLog();
  const QCoreApplication application(argc, argv);
  const RealServices services(Device(Idiom::tablet, line_.systemVersion, thisDevice()), kUprightTablet);
  RVSettingsStore store = storedSettings();
  return SettingsCommand(store, std::cin, std::cerr).run(line_.settings);
}

// Before anything else can go wrong: the Seedmote that runs, or the next one that can, delivers it.
std::vector<platform::Refusal> Program::keep(const std::vector<std::string>& uris) {
  std::vector<platform::Refusal> refusals =
      platform::Inbox(platform::standardInboxFolder(), [] {}).take(uris);
  for (const platform::Refusal& refusal : refusals) {
    std::cerr << "seedmote: " << refusal.name << " is not added: " << refusal.why << '\n';
  }
  return refusals;
}

// The exit code when another Seedmote is there, and was asked to do what this one was to.
std::optional<int> Program::handOver(const std::vector<std::string>& uris) const {
  const HandOver::Result result = HandOver::give(uris);
  switch (result.outcome) {
    case HandOver::Outcome::nobodyRuns:
      return std::nullopt;
    case HandOver::Outcome::refused:
      std::cerr << "seedmote: the Seedmote that is open already refused: " << result.trouble << '\n';
      return 1;
    case HandOver::Outcome::noAnswer:
      std::cerr << "seedmote: the Seedmote that is open already does not answer. If that lasts, end it.\n";
      keep(uris);
      return 1;
    case HandOver::Outcome::taken:
      break;
  }
  if (line_.shapesWindow) {
    std::cerr
        << "seedmote: Seedmote is open already; its window keeps the options that it was started with.\n";
  }
  return 0;
}

int Program::showWindow(int argc, char** argv) {
  if (SessionBus::leaveWhenDeaf()) {
    std::cerr << "seedmote: the session bus does not answer; Seedmote does without it.\n";
  }
  std::vector<std::string> uris;
  std::ranges::transform(line_.handedOver, std::back_inserter(uris), HandOver::uriOf);
  if (const std::optional<int> code = isAlone() ? std::nullopt : handOver(uris)) {
    return *code;
  }
  const std::vector<platform::Refusal> refusals = keep(uris);
  if (!hasWindowSystem()) {
    std::cerr << "seedmote: there is no window system: neither WAYLAND_DISPLAY nor DISPLAY is set.\n"
                 "Start it in a Wayland or X session, or with QT_QPA_PLATFORM=offscreen.\n";
    return 1;
  }
  prepareApplication();
  Intake intake;
  const QGuiApplication application(argc, argv);
  setFontHinting();

  const Idiom idiom = line_.idiom ? *line_.idiom : idiomOfScreen();
  RealServices services(Device(idiom, line_.systemVersion, thisDevice()),
                        idiom == Idiom::tablet ? kUprightTablet : kUprightPhone);
  services.beforeAbandoning([this](int code) { restart_->carryOut(code); });
  QObject::connect(&application, &QGuiApplication::lastWindowClosed, &application,
                   [] { platform::services().main.quit(); });
  return runWindow(intake, refusals);
}

int Program::runWindow(Intake& intake, const std::vector<platform::Refusal>& refusals) {
  const bool alone = isAlone();
  const RealUiServices uiServices;
  const StorageNotice storageNotice;
  const SignalWatcher signalWatcher([] { platform::services().main.quit(); });
  RVSettingsStore store = storedSettings();
  RVAppDelegate delegate(store);
  DesktopService desktop(callbacksFor(delegate, intake));
  while (!alone && desktop.claim() == DesktopService::Claim::elsewhere) {  // somebody was quicker
    if (const std::optional<int> code = handOver({})) {  // it finds in the inbox what this one was given
      return *code;
    }
  }

  store.loadUserSetting();
  OvProgressHUD::sharedView()->setTextMeasure(overlayTextMeasure());
  delegate.didFinishLaunchingWithOptions();
  delegate.refreshEvery(line_.refresh);
  delegate.onRestart([this, &delegate] { restart_->ask(delegate.window()); });
  platform::MainThread& main = platform::services().main;
  main.onQuit([&desktop] { desktop.release(); });
  main.onQuit([&delegate] { delegate.mainViewController().rightBarViewController()->endEditing(); });
  std::optional<Snapshot> snapshot;
  if (line_.snapshot) {
    snapshot.emplace(*line_.snapshot, delegate.window(), delegate.torrentListController());
  } else {
    intake.deliverTo(delegate);
    Intake::tell(refusals);
  }
  const int code = QGuiApplication::exec();
  main.quit(code);  // whatever ended the loop, while all that hears of it is still there
  intake.stopDelivering();
  return code;
}

}  // namespace seedmote
