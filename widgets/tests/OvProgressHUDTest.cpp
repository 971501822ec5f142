#include "widgets/OvProgressHUD.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <algorithm>
#include <functional>
#include <thread>
#include <vector>

#include "tests/support/TestServices.h"

namespace seedmote {
namespace {

using platform::InterfaceOrientation;

class OvProgressHUDTest : public testing::Test {
 protected:
  // Lets time go on, and runs what was posted to the main thread before and after.
  void wait(double seconds) {
    services.settle();
    services.clock.advanceSeconds(seconds);
    services.settle();
  }
  void hide() {
    OvProgressHUD::dismiss();
    wait(0.15);
    ASSERT_FALSE(hud->panelShown());
  }

  support::TestServices services;
  platform::LogRecorder lines;
  OvProgressHUD* hud = OvProgressHUD::sharedView();
};

TEST_F(OvProgressHUDTest, EachShowSaysWhatItShows) {
  const struct {
    const char* what;
    std::function<void()> show;
    QString text, ok, cancel;
    int mask;
  } cases[] = {
      {"show", [] { OvProgressHUD::show(); }, QString(), QString(), QString(), 1},
      {"status", [] { OvProgressHUD::showWithStatus("a"); }, QStringLiteral("a"), QString(), QString(), 4},
      {"mask", [] { OvProgressHUD::showWithMaskType(OvProgressHUDMaskTypeClear); }, QString(), QString(),
       QString(), 2},
      {"buttons", [] { OvProgressHUD::showWithStatusAndButton("b"); }, QStringLiteral("b"),
       QStringLiteral("Yes"), QStringLiteral("No"), 1},
      {"both buttons stay", [] { OvProgressHUD::showWithStatus("c", OvProgressHUDMaskTypeBlack); },
       QStringLiteral("c"), QStringLiteral("Yes"), QStringLiteral("No"), 3},
      {"Cancel stays", [] { OvProgressHUD::showWithStatus("d"); }, QStringLiteral("d"), QString(),
       QStringLiteral("No"), 4},
      {"Cancel still stays", [] { OvProgressHUD::show(); }, QString(), QString(), QStringLiteral("No"), 1},
  };
  for (const bool hidesBetween : {false, true}) {
    OvProgressHUD::dropSharedView();
    hud = OvProgressHUD::sharedView();
    hud->setTextMeasure([](const QString&, QSizeF) { return OvProgressHUD::MeasuredText{{60, 20}}; });
    for (const auto& c : cases) {
      SCOPED_TRACE(c.what);
      if (hidesBetween) {
        hide();
      }
      c.show();
      EXPECT_TRUE(OvProgressHUD::isVisible());
      EXPECT_EQ(hud->stringLabel().text, c.text);
      EXPECT_EQ(hud->maskType(), c.mask);
      EXPECT_EQ(hud->takesTouches(), c.mask != 1);
      EXPECT_TRUE(hud->spinnerView().spinning);
      EXPECT_EQ(hud->okButton().title, c.ok);
      EXPECT_EQ(hud->okButton().exists, !c.ok.isEmpty());
      EXPECT_EQ(hud->cancelButton().title, c.cancel);
      EXPECT_EQ(hud->cancelButton().exists, !c.cancel.isEmpty());
      EXPECT_EQ(hud->hudView().size.height(), c.cancel.isEmpty() && c.ok.isEmpty() ? 100 : 140);
    }
  }
}

TEST_F(OvProgressHUDTest, AShowAndAButtonWriteTheirLines) {
  OvProgressHUD::showWithStatusAndButton("Sure?");
  hud->onBtnOk();
  hud->onBtnCancel();
  OvProgressHUD::setTimeout("31");
  EXPECT_EQ(lines.records(),
            (std::vector<std::string>{"Going to dispatch showWithStatus\n", "Start to show message\n",
                                      "Finished to dispatch showWithStatus\n", "onBtnOK\n", "onBtnOK\n",
                                      "Ov timeout value = 31\n"}));
  EXPECT_TRUE(OvProgressHUD::isVisible()) << "buttons dismiss nothing";
}

TEST_F(OvProgressHUDTest, AResultIsShownForItsTimeAndFades) {
  const struct {
    const char* what;
    std::function<void()> end;
    double delay;
    QString image;
  } cases[] = {
      {"success", [] { OvProgressHUD::showSuccessWithStatus("x"); }, 1, QStringLiteral("success")},
      {"error", [] { OvProgressHUD::showErrorWithStatus("x", 3); }, 3, QStringLiteral("error")},
      {"dismissal", [] { OvProgressHUD::dismissWithSuccess("x"); }, 2, QStringLiteral("success")},
      {"dismissal, delay", [] { OvProgressHUD::dismissWithError("x", 5); }, 5, QStringLiteral("error")},
      {"no delay", [] { OvProgressHUD::dismissWithStatus("x", true, 0); }, 0, QStringLiteral("error")},
      {"another replaces it",
       [] {
         OvProgressHUD::dismissWithError("w", 1);
         OvProgressHUD::dismissWithSuccess("x", 4);
       },
       4, QStringLiteral("success")},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    OvProgressHUD::showWithStatus("busy");
    c.end();
    services.settle();
    EXPECT_EQ(hud->imageView().name, QStringLiteral("OvProgressHUD.bundle/%1.png").arg(c.image));
    EXPECT_TRUE(hud->imageView().shown);
    EXPECT_FALSE(hud->spinnerView().spinning);
    EXPECT_EQ(hud->text(), QStringLiteral("x"));
    wait(std::max(c.delay - 0.001, 0.0));
    EXPECT_TRUE(OvProgressHUD::isVisible());
    wait(0.002);
    EXPECT_FALSE(OvProgressHUD::isVisible());
    EXPECT_TRUE(hud->panelShown());
    EXPECT_DOUBLE_EQ(hud->hudView().scale, 0.8);
    wait(0.15);
    EXPECT_FALSE(hud->panelShown());
    EXPECT_FALSE(hud->takesTouches());
  }
}

TEST_F(OvProgressHUDTest, WhileHiddenOnlyAShowShows) {
  OvProgressHUD::dismissWithError("late", 1);
  OvProgressHUD::setStatus("late");
  OvProgressHUD::setTimeout("29");
  OvProgressHUD::dismiss();
  services.settle();
  EXPECT_FALSE(hud->panelShown());
  EXPECT_FALSE(OvProgressHUD::isVisible());
  OvProgressHUD::show();
  wait(10);
  EXPECT_TRUE(OvProgressHUD::isVisible()) << "nothing was armed";
  EXPECT_EQ(hud->text(), QString());
  EXPECT_EQ(hud->stringTimeout().text, QString());
}

TEST_F(OvProgressHUDTest, AShowEndsAFadeOutThatIsPendingOrUnderWay) {
  const struct {
    const char* what;
    double after;  // seconds since the result was shown, for 2 of them
    bool enters;
  } cases[] = {{"pending", 1, false}, {"under way", 2.1, true}, {"over", 2.2, true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    OvProgressHUD::showWithStatus("one");
    OvProgressHUD::dismissWithSuccess("one done");
    wait(std::min(c.after, 2.0));
    wait(std::max(c.after - 2, 0.0));
    std::vector<int> durations;
    const auto connection = QObject::connect(hud, &OvProgressHUD::changed,
                                             [&] { durations.push_back(hud->animationMilliseconds()); });
    OvProgressHUD::showWithStatus("two");
    QObject::disconnect(connection);
    EXPECT_EQ(durations.back(), c.enters ? 150 : 0);
    wait(10);
    EXPECT_TRUE(OvProgressHUD::isVisible());
    EXPECT_EQ(hud->hudView().scale, 1);
    EXPECT_EQ(hud->text(), QStringLiteral("two"));
    EXPECT_FALSE(hud->imageView().shown);
    EXPECT_TRUE(hud->spinnerView().spinning);
  }
}

TEST_F(OvProgressHUDTest, ACountdownValueFadesUntilAResultSwitchesItOff) {
  std::thread([] { OvProgressHUD::showWithStatus("waiting"); }).join();
  EXPECT_FALSE(OvProgressHUD::isVisible()) << "off the main thread a show is posted";
  services.settle();
  EXPECT_EQ(hud->text(), QStringLiteral("waiting"));
  std::thread([] { OvProgressHUD::setTimeout("30"); }).join();
  services.settle();
  EXPECT_EQ(hud->stringTimeout().text, QStringLiteral("30"));
  EXPECT_EQ(hud->stringTimeout().alpha, 0);
  EXPECT_EQ(hud->animationMilliseconds(), 1300);
  OvProgressHUD::setStatus("still waiting");
  EXPECT_EQ(hud->stringTimeout().text, QStringLiteral("30"));
  EXPECT_EQ(hud->stringTimeout().alpha, 1);
  OvProgressHUD::dismissWithSuccess("done");
  OvProgressHUD::setTimeout("29");
  services.settle();
  EXPECT_EQ(hud->stringTimeout().text, QStringLiteral(" "));
  OvProgressHUD::showWithStatus("again");
  EXPECT_EQ(hud->stringTimeout().text, QString());
  OvProgressHUD::setTimeout("28");
  services.settle();
  EXPECT_EQ(hud->stringTimeout().text, QStringLiteral("28"));
}

TEST_F(OvProgressHUDTest, ThePanelFollowsTheScreenAndTheKeyboardWhileItIsShown) {
  platform::Screen& screen = services.screen;
  platform::Keyboard& keyboard = screen.keyboard();
  const auto expectAt = [&](QPointF center, double rotation, int milliseconds) {
    EXPECT_NEAR(hud->hudView().center.x(), center.x(), 1e-9);
    EXPECT_NEAR(hud->hudView().center.y(), center.y(), 1e-9);
    EXPECT_EQ(hud->hudView().rotation, rotation);
    EXPECT_EQ(hud->overlayWindow().rotation, -rotation) << "it reads upright";
    EXPECT_EQ(hud->animationMilliseconds(), milliseconds);
  };
  OvProgressHUD::show();
  OvProgressHUD::show();
  expectAt({345.6, 512}, -90, 0);
  keyboard.show({1024, 352}, 0.3);
  expectAt({205.2, 512}, -90, 300);
  OvProgressHUD::show();
  expectAt({205.2, 512}, -90, 0);
  screen.setSizeAsRead({1024, 868});
  EXPECT_EQ(hud->overlayWindow().size, QSizeF(868, 1024));
  expectAt({250.2, 512}, -90, 0);
  screen.setInterfaceOrientation(InterfaceOrientation::landscapeLeft);
  expectAt({477.4, 512}, 90, 0);
  OvProgressHUD::show();
  expectAt({617.8, 512}, 90, 0);
  keyboard.hide(0.2);
  expectAt({477.4, 512}, 90, 200);
  screen.setInterfaceOrientation(InterfaceOrientation::portraitUpsideDown);
  expectAt({434, 563.2}, 180, 0);
  hide();
  QSignalSpy changes(hud, &OvProgressHUD::changed);
  keyboard.show({1024, 352});
  screen.setInterfaceOrientation(InterfaceOrientation::portrait);
  EXPECT_EQ(changes.count(), 0);
  OvProgressHUD::show();
  expectAt({434, 0.45 * (1024 + 40 - 352)}, 0, 150);
}

}  // namespace
}  // namespace seedmote
