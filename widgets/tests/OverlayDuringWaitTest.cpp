#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>
#include <atomic>
#include <functional>
#include <future>
#include <thread>

#include "platform/core/Clock.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/core/Timers.h"
#include "tests/support/Hand.h"
#include "tests/support/TestServices.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {
namespace {

using Lane = platform::MainThread::Lane;

// A real window with the overlay above something to touch, while the main thread waits.
class OverlayDuringWaitTest : public testing::Test {
 protected:
  void SetUp() override {
    hud = OvProgressHUD::sharedView();
    main.setSwallowsInput([] { return OvProgressHUD::sharedView()->takesTouches(); });
    hud->setBeforeTouchesPass([this] { main.deliverHeldInput(); });
    view.setInitialProperties({{QStringLiteral("hud"), QVariant::fromValue(hud)}});
    view.setSource(QUrl::fromLocalFile(QStringLiteral(SCENE_DIR "/OverlayLook.qml")));
    ASSERT_EQ(view.status(), QQuickView::Ready);
    QObject::connect(
        &view, &QQuickWindow::frameSwapped, &view, [this] { ++frames; }, Qt::DirectConnection);
    view.show();
    spinUntil([this] { return frames > 0; });
  }

  static void spinUntil(const std::function<bool()>& done) {
    while (!done()) {
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
    }
  }
  void waitForFrames(int more) {
    const int until = frames + more;
    main.wait([this, until] {
      while (frames < until) {
        std::this_thread::yield();
      }
    });
  }
  // Waits until the overlay has faded, time going on.
  void waitUntilGone() {
    main.wait([this] {
      for (bool gone = false; !gone;) {
        std::promise<bool> faded;
        main.post(
            [&] {
              services.clock.advanceSeconds(0.2);
              faded.set_value(!hud->panelShown());
            },
            Lane::overlay);
        gone = faded.get_future().get();
      }
    });
  }
  void spinForFrames(int more) {
    const int until = frames + more;
    spinUntil([this, until] {
      view.update();
      return frames >= until;
    });
  }
  void click() { hand.tap({200, 250}); }
  void pressKey() { hand.press(Qt::Key_Down); }
  int keys() const { return view.rootObject()->property("keys").toInt(); }
  int taps() const { return view.rootObject()->property("taps").toInt(); }

  support::TestServices services;
  platform::MainThread& main = services.main;
  OvProgressHUD* hud = nullptr;
  QQuickView view;
  support::Hand hand{[this]() -> QWindow& { return view; }, false};
  std::atomic<int> frames{0};
};

TEST_F(OverlayDuringWaitTest, AKeyWaitsAndThenHappensUnlessTheOverlayTakesIt) {
  view.requestActivate();
  spinUntil([this] { return view.isActive(); });
  OvProgressHUD::showWithStatus("Updating...");
  pressKey();
  services.settle();
  EXPECT_EQ(keys(), 0);
  OvProgressHUD::showWithStatus("Look", OvProgressHUDMaskTypeNone);
  main.post([this] { pressKey(); }, Lane::overlay);
  waitForFrames(5);
  EXPECT_EQ(keys(), 0);
  spinUntil([this] { return keys() == 1; });
}

TEST_F(OverlayDuringWaitTest, ATouchOnTheMaskIsSwallowedThoughTheOverlayGoesRightAfter) {
  OvProgressHUD::showWithStatus("Updating...");
  spinForFrames(3);
  main.post([this] { click(); }, Lane::overlay);
  waitForFrames(5);
  OvProgressHUD::showWithStatus("Look", OvProgressHUDMaskTypeNone);
  spinForFrames(5);
  EXPECT_EQ(taps(), 0);
}

TEST_F(OverlayDuringWaitTest, ATouchOnTheMaskIsSwallowedThoughTheOverlayGoesDuringTheWait) {
  OvProgressHUD::showWithStatus("Updating...");
  spinForFrames(3);
  main.post([this] { click(); }, Lane::overlay);
  main.post([] { OvProgressHUD::dismiss(); }, Lane::overlay);
  waitUntilGone();
  spinForFrames(5);
  EXPECT_EQ(taps(), 0);
}

}  // namespace
}  // namespace seedmote
