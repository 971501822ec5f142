#pragma once

#include <QAccessible>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPointingDevice>
#include <QQuickItem>
#include <QTimer>
#include <QtTest/QTest>
#include <functional>
#include <stdexcept>

#include "ShellFixture.h"
#include "app/RealUiServices.h"
#include "platform/core/CurlHttp.h"
#include "platform/core/LoginGuard.h"
#include "widgets/OvProgressHUD.h"
#include "widgets/TextMeasure.h"

namespace seedmote {

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
    const QDeadlineTimer patience(std::chrono::seconds(40));
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
      const QPoint before = std::exchange(place, placeOf(name));
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
    hand(QTest::MousePress, from);
    for (int step = 1; step <= 10 && from != to; ++step) {
      hand(QTest::MouseMove, from + (to - from) * step / 10);
      QTest::qWait(5);        // else the drag has no speed
      window().grabWindow();  // moves are delivered with the frames
    }
    hand(QTest::MouseRelease, to);
    settle();
  }
  void swipe(int way) { drag({350, 200}, {350 + way, 200}); }
  // Writes into a field in place of what is there.
  void type(const std::string& field, const std::string& text) {
    tap(field);
    QTest::keySequence(&window(), QKeySequence::SelectAll);
    for (const char letter : text) QTest::keyClick(&window(), letter);
  }

  QQuickView& window() { return delegate->window(); }
  static OvProgressHUD& overlay() { return *OvProgressHUD::sharedView(); }
  static std::string message() { return overlay().text().toStdString(); }
  platform::TableView& list() { return *delegate->torrentListController().table(); }
  bool isTablet() { return services->device.userInterfaceIdiom() == platform::Idiom::tablet; }

 private:
  // In the window; null when there is nothing of that name to be touched. A password's field has no name.
  QPoint placeOf(const std::string& name) {
    QPoint place;
    std::vector<QAccessibleInterface*> all{QAccessible::queryAccessibleInterface(&window())};
    for (std::size_t at = 0; at < all.size(); ++at) {
      const QAccessibleInterface& one = *all[at];
      for (int child = 0; child < one.childCount(); ++child) all.push_back(one.child(child));
      const auto role = one.role();
      const bool isField = role == QAccessible::EditableText;
      if (!isField && role != QAccessible::Button && role != QAccessible::ListItem) continue;
      const QString called = one.text(QAccessible::Name);
      const QString said = isField && called.isEmpty() ? one.text(QAccessible::Description) : called;
      if (said.toStdString() == name && !one.state().invisible) {
        place = window().mapFromGlobal(one.rect().center());
      }
    }
    return place;
  }
  bool areViewsStill() {
    for (const QQuickItem* item : window().contentItem()->findChildren<QQuickItem*>()) {
      const auto* geometry = item->property("geometry").value<platform::ViewGeometry*>();
      if (geometry && geometry->isInParent() && item->position() != geometry->shownFrame().topLeft()) {
        return false;
      }
    }
    return true;
  }
  void hand(QTest::MouseAction action, QPoint place) {
    if (isTablet()) return QTest::mouseEvent(action, &window(), Qt::LeftButton, {}, place);
    static QPointingDevice* const finger = QTest::createTouchDevice();
    auto touches = QTest::touchEvent(&window(), finger);
    action == QTest::MousePress  ? touches.press(0, place, &window())
    : action == QTest::MouseMove ? touches.move(0, place, &window())
                                 : touches.release(0, place, &window());
  }

  QTimer pulse_;  // wakes whoever waits for something
};

}  // namespace seedmote
