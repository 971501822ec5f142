#include "app/Program.h"

#include <QFont>
#include <QGuiApplication>
#include <QScreen>
#include <QSysInfo>
#include <algorithm>
#include <iostream>
#include <optional>
#include <stdexcept>

#include "app/RVAppDelegate.h"
#include "app/RVRightBarController.h"
#include "app/RealServices.h"
#include "app/RealUiServices.h"
#include "app/SignalWatcher.h"
#include "app/Snapshot.h"
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

RVSettingsStore storedSettings() {
  return RVSettingsStore(RVSettingsStore::findBundle(QCoreApplication::applicationDirPath().toStdString()));
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

int Program::showWindow(int argc, char** argv) {
  if (!hasWindowSystem()) {
    std::cerr << "seedmote: there is no window system: neither WAYLAND_DISPLAY nor DISPLAY is set.\n"
                 "Start it in a Wayland or X session, or with QT_QPA_PLATFORM=offscreen.\n";
    return 1;
  }
  qInstallMessageHandler(sayFatal);
  QGuiApplication::setDesktopFileName(QStringLiteral("org.seedmote.Seedmote"));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Seedmote"));
  QGuiApplication::setQuitOnLastWindowClosed(false);
  const QGuiApplication application(argc, argv);
  setFontHinting();

  const Idiom idiom = line_.idiom ? *line_.idiom : idiomOfScreen();
  RealServices services(Device(idiom, line_.systemVersion, thisDevice()),
                        idiom == Idiom::tablet ? kUprightTablet : kUprightPhone);
  services.beforeAbandoning([this](int code) { restart_->carryOut(code); });
  const RealUiServices uiServices;
  QObject::connect(&application, &QGuiApplication::lastWindowClosed, &application,
                   [] { platform::services().main.quit(); });
  const SignalWatcher signalWatcher([] { platform::services().main.quit(); });
  RVSettingsStore store = storedSettings();
  store.loadUserSetting();
  OvProgressHUD::sharedView()->setTextMeasure(overlayTextMeasure());

  RVAppDelegate delegate(store);
  delegate.didFinishLaunchingWithOptions();
  delegate.refreshEvery(std::nullopt);
  delegate.onRestart([this, &delegate] { restart_->ask(delegate.window()); });
  platform::MainThread& main = platform::services().main;
  main.onQuit([&delegate] { delegate.mainViewController().rightBarViewController()->endEditing(); });
  std::optional<Snapshot> snapshot;
  if (line_.snapshot) {
    snapshot.emplace(*line_.snapshot, delegate.window(), delegate.torrentListController());
  }
  const int code = QGuiApplication::exec();
  main.quit(code);  // whatever ended the loop, while all that hears of it is still there
  return code;
}

}  // namespace seedmote
