#include "widgets/JtSwitch.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QDir>
#include <QQuickView>
#include <QTest>

#include "tests/support/SlowHand.h"
#include "tests/support/TestServices.h"
#include "widgets/SwitchTouches.h"

namespace seedmote {
namespace {

using State = SwitchPan::State;
using Values = std::vector<bool>;

class JtSwitchTest : public testing::Test {
 protected:
  JtSwitchTest() {
    control->setTrackImage(SwitchImage::named(QStringLiteral("square-switch-track")));
    control->setOverlayImage(SwitchImage::named(QStringLiteral("square-switch-overlay")));
    control->setThumbImage(SwitchImage::named(QStringLiteral("square-switch-thumb")));
    control->setThumbHighlightImage(SwitchImage::named(QStringLiteral("square-switch-thumb-highlight")));
    control->setTrackMaskImage(SwitchImage::named(QStringLiteral("square-switch-mask")));
    control->setThumbInsetX(-2.5F);  // floored
    control->setThumbOffsetY(-3);
    control->setChangeHandler([this](bool on) { handled.push_back(on); });
  }
  void pan(State state, double translation = 0) {
    SwitchPan pan{.state = state, .translation = translation};
    control->handleThumbPanGesture(pan);
  }
  double left() const { return control->thumbImageView().frame.left(); }
  void show(double zoom) {
    view = std::make_unique<QQuickView>();
    view->setInitialProperties(
        {{QStringLiteral("control"), QVariant::fromValue(control.get())}, {QStringLiteral("scale"), zoom}});
    view->setSource(QUrl::fromLocalFile(QStringLiteral(SCENE_DIR "/SwitchScene.qml")));
    view->show();
  }
  QImage save(const std::string& name) {
    QDir().mkpath(QStringLiteral(LOOK_DIR));
    QImage shown = view->grabWindow().convertToFormat(QImage::Format_RGB32);
    shown.save(QStringLiteral(LOOK_DIR "/switch-%1.png").arg(QString::fromStdString(name)));
    return shown;
  }

  support::TestServices services;
  std::unique_ptr<JtSwitch> control = std::make_unique<JtSwitch>(QRectF(12, 11, 76, 27));
  Values handled;
  std::unique_ptr<QQuickView> view;
};

TEST_F(JtSwitchTest, ADragPastTheMiddleSwitches) {
  const struct {
    bool before;
    double began, changed, value;
    bool after;
  } cases[] = {{false, 0, 24.5, 0.5, false},    {false, 0, 25.5, 25.5 / 49, true},
               {false, 10.9, 14.5, 0.5, false}, {false, 500, -10, 38.5 / 49, true},
               {true, 0, -24, 0.5, false},      {true, -500, 0, 0, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    handled.clear();
    control->setOn(c.before);
    pan(State::began, c.began);
    pan(State::changed, c.changed);
    EXPECT_DOUBLE_EQ(control->valueAtThumbPosition(), c.value);
    pan(State::ended);
    EXPECT_EQ(handled, c.before == c.after ? Values{} : Values{c.after});
    EXPECT_EQ(left(), c.after ? 46 : -3);
    EXPECT_EQ(control->animationMilliseconds(), std::lround(250 * std::abs(c.value - (c.after ? 1 : 0))));
  }
}

TEST_F(JtSwitchTest, ATapTellsTheHandlerAndThenTheOthersAndCutsTheMaskInTheEnd) {
  Values told;
  QObject::connect(control.get(), &JtSwitch::valueChanged, [&] { told = handled; });
  control->setTrackMaskImage({.name = QStringLiteral("wide"), .scale = 2, .pixels = {0, 0, 160, 54}});
  EXPECT_EQ(control->trackMaskLayer().image.pixels, QRect(0, 0, 152, 54));
  control->handleTapGesture();
  EXPECT_EQ(told, Values{true});
  services.clock.advanceSeconds(0.26);
  services.settle();
  EXPECT_EQ(control->trackMaskLayer().image.pixels, QRect(8, 0, 152, 54));
  pan(State::began, -20);
  control->setOn(true, true, true);
  EXPECT_EQ(left(), 46) << "the thumb goes back though the value is the same";
  EXPECT_EQ(handled, Values{true});
  control->setChangeHandler([this](bool) { control.reset(); });
  control->handleTapGesture();
}

TEST_F(JtSwitchTest, AThumbWithoutAWayIsAtNought) {
  const platform::LogRecorder lines;
  control->setThumbInsetX(21);
  control->setThumbImage({.name = QStringLiteral("wide"), .scale = 2, .pixels = {0, 0, 68, 66}});
  EXPECT_EQ(control->valueAtThumbPosition(), 0);
  EXPECT_TRUE(
      lines.contains("JtSwitch can't get value at thumb position because you are going to have a "
                     "bad time dividing by zero."));
}

TEST_F(JtSwitchTest, ItShowsTheTrackUnderTheMaskAndTheThumbAtEveryScale) {
  for (int zoom = 1; zoom <= 3; ++zoom) {
    show(zoom);
    for (const std::string state : {"off", "on", "touched", "dragged"}) {
      SCOPED_TRACE(testing::Message() << state << " at " << zoom);
      const bool on = state == "on" || state == "dragged";
      control->setOn(on);
      state == "touched" ? control->touchesBegan() : state == "dragged" ? pan(State::began, -24) : void();
      const QImage shown = save(state + std::to_string(zoom));
      // Below the overlay's shade the track is seen pixel for pixel.
      const QRect part(QPoint(on ? 2 : 34, 8) * zoom, QSize(on ? 18 : 38, 16) * zoom);
      const QPoint track = (control->trackImageView().frame.topLeft() * zoom).toPoint();
      const QImage drawing = control->trackImage().drawing(zoom).convertToFormat(shown.format());
      EXPECT_EQ(shown.copy(part.translated(QPoint(12, 11) * zoom)), drawing.copy(part.translated(-track)));
      EXPECT_EQ(shown.pixelColor(12 * zoom, 11 * zoom), QColor(Qt::white)) << "cut by the mask";
      const QColor thumb = shown.pixelColor(int((20 + left()) * zoom), 27 * zoom);
      EXPECT_EQ(thumb.lightness() > 220 && thumb.saturation() > 20, state == "touched" || state == "dragged");
    }
  }
}

TEST_F(JtSwitchTest, FingersMiceKeysAndAssistiveTechnologiesReachIt) {
  show(2);
  support::SlowHand hand([this]() -> QWindow& { return *view; }, true);
  const auto expect = [&](const char* after, const Values& wanted, bool scrolled = false) {
    services.settle();
    EXPECT_EQ(handled, wanted) << after;
    EXPECT_EQ(control->thumbImageView().image, control->thumbImage()) << after;
    EXPECT_EQ(view->rootObject()->property("contentY").toDouble() > 0, scrolled) << after;
    handled.clear();
  };
  hand.drag({50, 50}, {52, 51}, 10);
  expect("a tap", {true});
  hand.drag({150, 50}, {101, 60}, 10);
  expect("a drag", {false});
  QTest::mouseDClick(view.get(), Qt::LeftButton, {}, {50, 50});
  expect("two clicks", {true, false});
  auto* item = view->rootObject()->findChild<SwitchTouches*>();
  item->forceActiveFocus();
  QTest::keyClick(view.get(), Qt::Key_Space);
  expect("the space key", {true});
  save("focused");
  const auto press = QAccessibleActionInterface::pressAction();
  QAccessible::queryAccessibleInterface(item)->actionInterface()->doAction(press);
  expect("the press action", {false});
  hand.drag({50, 70}, {55, 10}, 10);
  expect("an upright drag", {}, true);
}

}  // namespace
}  // namespace seedmote
