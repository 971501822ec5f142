#include "widgets/OvProgressHUD.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSignalSpy>
#include <thread>

#include "tests/support/TestServices.h"

namespace seedmote {
namespace {

class OvProgressHUDTest : public testing::Test {
 protected:
  // Runs what was posted to the main thread.
  static void settle() { QCoreApplication::processEvents(); }
  void measureAs(double width, double height) {
    hud->setTextMeasure([=](const QString&, QSizeF) { return QSizeF(width, height); });
  }

  support::TestServices services;
  platform::LogRecorder lines;
  OvProgressHUD* hud = OvProgressHUD::sharedView();
};

TEST_F(OvProgressHUDTest, ASuccessIsShownForItsTimeAndFades) {
  OvProgressHUD::showSuccessWithStatus("Done");
  EXPECT_TRUE(OvProgressHUD::isVisible());
  EXPECT_TRUE(hud->spinning());
  settle();
  EXPECT_EQ(hud->text(), QStringLiteral("Done"));
  EXPECT_EQ(hud->image(), QStringLiteral("success"));
  EXPECT_FALSE(hud->spinning());
  services.clock.advanceSeconds(0.99);
  settle();
  EXPECT_TRUE(OvProgressHUD::isVisible());
  services.clock.advanceSeconds(0.01);
  settle();
  EXPECT_FALSE(OvProgressHUD::isVisible());
  EXPECT_TRUE(hud->panelShown());
  services.clock.advanceSeconds(0.15);
  EXPECT_FALSE(hud->panelShown());
}

TEST_F(OvProgressHUDTest, ADismissalWhileHiddenShowsNothing) {
  OvProgressHUD::dismissWithError("late");
  settle();
  services.clock.advanceSeconds(10);
  settle();
  EXPECT_FALSE(hud->panelShown());
  EXPECT_EQ(hud->text(), QString());
}

TEST_F(OvProgressHUDTest, ASecondShowCancelsThePendingFadeOut) {
  QSignalSpy entering(hud, &OvProgressHUD::entering);
  OvProgressHUD::showWithStatus("one");
  OvProgressHUD::dismissWithSuccess("one done");
  settle();
  OvProgressHUD::showWithStatus("two");
  services.clock.advanceSeconds(10);
  settle();
  EXPECT_TRUE(OvProgressHUD::isVisible());
  EXPECT_EQ(hud->text(), QStringLiteral("two"));
  EXPECT_EQ(hud->image(), QString());
  EXPECT_TRUE(hud->spinning());
  EXPECT_EQ(entering.count(), 1) << "a show while shown comes in without the entry";
}

TEST_F(OvProgressHUDTest, ACountdownValueIsShownUntilAResultSwitchesItOff) {
  QSignalSpy counted(hud, &OvProgressHUD::counted);
  OvProgressHUD::showWithStatus("before");
  EXPECT_EQ(counted.count(), 1) << "each message takes the number of the one before away";
  OvProgressHUD::dismiss();
  settle();
  services.clock.advanceSeconds(1);
  counted.clear();
  OvProgressHUD::setTimeout("31");
  settle();
  EXPECT_EQ(counted.count(), 0) << "the panel is gone";
  OvProgressHUD::showWithStatus("waiting");
  std::thread([] { OvProgressHUD::setTimeout("30"); }).join();
  settle();
  EXPECT_EQ(hud->countdown(), QStringLiteral("30"));
  OvProgressHUD::dismissWithSuccess("done");
  OvProgressHUD::setTimeout("29");
  settle();
  EXPECT_EQ(hud->countdown(), QStringLiteral(" "));
  EXPECT_EQ(lines.count("Ov timeout value = 29\n"), 1);
}

TEST_F(OvProgressHUDTest, OffTheMainThreadAShowIsPosted) {
  std::thread([] { OvProgressHUD::showWithStatus("from elsewhere"); }).join();
  EXPECT_FALSE(OvProgressHUD::isVisible());
  settle();
  EXPECT_TRUE(OvProgressHUD::isVisible());
  EXPECT_EQ(hud->text(), QStringLiteral("from elsewhere"));
}

TEST_F(OvProgressHUDTest, OnlyAMaskTakesTouches) {
  OvProgressHUD::showWithStatus("progress");
  EXPECT_EQ(hud->maskType(), OvProgressHUDMaskTypeGradient);
  EXPECT_TRUE(hud->takesTouches());
  OvProgressHUD::show();
  EXPECT_EQ(hud->maskType(), OvProgressHUDMaskTypeNone);
  EXPECT_FALSE(hud->takesTouches());
}

TEST_F(OvProgressHUDTest, TheCancelButtonSurvivesIntoTheNextPlainMessage) {
  OvProgressHUD::showWithStatusAndButton("Sure?");
  EXPECT_EQ(hud->okTitle(), QStringLiteral("Yes"));
  EXPECT_EQ(hud->cancelTitle(), QStringLiteral("No"));
  OvProgressHUD::showWithStatus("on it");
  EXPECT_EQ(hud->okTitle(), QString());
  EXPECT_EQ(hud->cancelTitle(), QStringLiteral("No"));
  hud->onBtnOk();
  hud->onBtnCancel();
  EXPECT_EQ(lines.count("onBtnOK\n"), 2);
  EXPECT_TRUE(OvProgressHUD::isVisible());
}

TEST_F(OvProgressHUDTest, TheTextDecidesHowLargeThePanelIs) {
  struct Case {
    const char* what;
    double textWidth, textHeight;
    QSizeF panel;
    QRectF label;
    QPointF spinner;
  };
  const Case cases[] = {
      {"narrow", 60, 20, {124, 100}, {0, 66, 124, 20}, {62.5, 40.5}},
      {"wide, odd width", 150.2, 20, {176, 100}, {0, 66, 176, 20}, {88.5, 40.5}},
      {"two lines", 120, 40, {144, 120}, {12, 66, 120, 40}, {72.5, 40.5}},
      {"widest", 200, 300, {224, 380}, {12, 66, 200, 300}, {112.5, 40.5}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    measureAs(c.textWidth, c.textHeight);
    OvProgressHUD::showWithStatus("text");
    EXPECT_EQ(hud->panelSize(), c.panel);
    EXPECT_EQ(hud->labelFrame(), c.label);
    EXPECT_EQ(hud->spinnerCenter(), c.spinner);
    EXPECT_EQ(hud->imageCenter(), QPointF(c.panel.width() / 2, 36));
  }
  OvProgressHUD::show();
  EXPECT_EQ(hud->panelSize(), QSizeF(100, 100));
  EXPECT_EQ(hud->spinnerCenter(), QPointF(50.5, 50.5));
  measureAs(60, 20);
  OvProgressHUD::showWithStatusAndButton("Sure?");
  EXPECT_EQ(hud->panelSize(), QSizeF(124, 140));
  EXPECT_EQ(hud->okCenter(), QPointF(31, 110));
  EXPECT_EQ(hud->cancelCenter(), QPointF(93, 110));
}

}  // namespace
}  // namespace seedmote
