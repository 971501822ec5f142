#pragma once

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQuickItem>
#include <QTimer>
#include <QtTest/QTest>
#include <functional>
#include <optional>
#include <stdexcept>

#include "ShellFixture.h"
#include "app/RealUiServices.h"
#include "platform/core/CurlHttp.h"
#include "platform/core/LoginGuard.h"
#include "tests/support/SlowHand.h"
#include "widgets/OvProgressHUD.h"
#include "widgets/TextMeasure.h"

namespace seedmote {

#ifdef __SANITIZE_THREAD__
inline constexpr std::chrono::seconds kPatience(200);  // millions of rows take a sanitizer as long as that
#else
inline constexpr std::chrono::seconds kPatience(40);
#endif

// Lies below the shell, whose threads use it to the end.
struct Wire {
  platform::CurlHttp curl;
  platform::LoginGuard guarded{curl};
};

// The whole program in one process before a daemon on the wire. Tests touch what the window shows: on a phone
// with a finger, on a tablet with the mouse. The clock is driven; animations take their real time.
class AppFixture : private Wire, public ShellFixture {
 protected:
  AppFixture() {
    http = &guarded;
    QGuiApplication::setQuitOnLastWindowClosed(false);
    pulse_.start(2);
  }

  // As on a new machine: nothing is stored but what comes with the program.
  void install(platform::Idiom idiom) {
    makeServices(idiom, "7.0");
    store =
        RVSettingsStore(RVSettingsStore::findBundle(QCoreApplication::applicationDirPath().toStdString()));
    store.loadUserSetting();
    connectWaits(services->main, ui.alerts);
    overlay().setTextMeasure(overlayTextMeasure());
  }
  // As by one who has used the settings panel.
  void confirmSettings(int port) {
    store.portChanged({std::to_string(port)});
    services->defaults.setObject("FirstRun", "3");
    services->defaults.setObject("SavedVersion", services->defaults.object("Version")["Value"]);
  }
  void open() {
    makeShell();
    window().requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  }
  // Up to where the torrents are listed and no message is shown, five seconds after the start.
  void openConnected() {
    open();
    for (const double seconds : {3, 2}) {
      advance(seconds);
      services->finishThreads();
    }
    letMessagesGo();
    until("torrents are listed", [this] { return !list().isReloading() && !list().isEmpty(); });
  }

  // Spins until `done`, which is looked at every few milliseconds; raises when that takes too long.
  void until(const std::string& what, const std::function<bool()>& done) {
    const QDeadlineTimer patience(kPatience);
    while (!done()) {
      if (patience.hasExpired()) throw std::runtime_error("it never came to be that " + what);
      const bool isWaiting = services && services->main.isWaiting();
      const auto input = isWaiting ? QEventLoop::ExcludeUserInputEvents : QEventLoop::AllEvents;
      QCoreApplication::processEvents(input | QEventLoop::WaitForMoreEvents);
    }
  }
  // Runs `step` once, in the middle of the first wait of the main thread for which `when` is true.
  void duringWait(std::function<bool()> when, std::function<void()> step) {
    auto* look = new QTimer(&pulse_);
    QObject::connect(look, &QTimer::timeout, look, [this, look, when, step] {
      if (services->main.isWaiting() && when()) {
        look->stop();
        look->deleteLater();
        services->main.guard("the test", step);
      }
    });
    look->start(1);
  }
  bool isAsleep() { return services->clock.sleeping() == 1 && services->threads.running() == 0; }
  void letMessagesGo() {
    until("no message is shown", [this] {
      if (overlay().panelShown()) services->clock.advanceSeconds(0.1);
      return !overlay().panelShown();
    });
  }

  // Touches what an assistive technology would call `name`, once nothing moves any more, or lies in front.
  void tap(const std::string& name) {
    letMessagesGo();
    QPoint place;
    QElapsedTimer still;
    int looks = 0;
    until("\"" + name + "\" stands still", [&] {
      const auto found = hand().targets(QString::fromStdString(name));
      const QPoint before = std::exchange(place, found.empty() ? QPoint() : found.back().place);
      if (place.isNull() || place != before || !areViewsStill()) {
        looks = 0;
        still.start();
      }
      return still.elapsed() > 60 && ++looks > 5;
    });
    drag(place, place);
  }
  // From a place to another, in steps as a hand makes them.
  void drag(QPoint from, QPoint to) {
    hand().drag(from, to, from == to ? 0 : 10);
    settle();
  }
  void swipe(int way) { drag({350, 200}, {350 + way, 200}); }
  // Writes into a field in place of what is there.
  void type(const std::string& field, const std::string& text) {
    tap(field);
    hand().type(QString::fromStdString(text));
    settle();
  }

  QQuickView& window() { return delegate->window(); }
  static OvProgressHUD& overlay() { return *OvProgressHUD::sharedView(); }
  static std::string message() { return overlay().text().toStdString(); }
  platform::TableView& list() { return *delegate->torrentListController().table(); }
  // With a finger on a phone, else with a mouse.
  support::SlowHand& hand() {
    if (!hand_) hand_.emplace([this]() -> QWindow& { return window(); }, !isTablet());
    return *hand_;
  }
  bool isTablet() { return services->device.userInterfaceIdiom() == platform::Idiom::tablet; }

 private:
  bool areViewsStill() {
    for (const QQuickItem* item : window().contentItem()->findChildren<QQuickItem*>()) {
      const auto* geometry = item->property("geometry").value<platform::ViewGeometry*>();
      if (geometry && geometry->isInParent() && item->position() != geometry->shownFrame().topLeft()) {
        return false;
      }
    }
    return true;
  }
  std::optional<support::SlowHand> hand_;
  QTimer pulse_;  // wakes whoever waits for something
};

}  // namespace seedmote
