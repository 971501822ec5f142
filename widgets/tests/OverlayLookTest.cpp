#include <gtest/gtest.h>

#include <QAnimationDriver>
#include <QDir>
#include <QImage>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <cstdlib>
#include <functional>
#include <vector>

#include "tests/support/TestServices.h"
#include "widgets/OvProgressHUD.h"
#include "widgets/TextMeasure.h"

namespace seedmote {
namespace {

using platform::Idiom;

// Animations of the layout that go on when the test says so.
class DrivenAnimations final : public QAnimationDriver {
 public:
  DrivenAnimations() { install(); }
  ~DrivenAnimations() override { uninstall(); }
  qint64 elapsed() const override { return now_; }
  void advanceSeconds(double seconds) {
    now_ += qint64(seconds * 1000);
    advanceAnimation();
  }

 private:
  qint64 now_ = 0;
};

// Something that a person can see in the overlay, in the window's coordinates.
struct Seen {
  std::string what;
  QRectF rect;
};

// Each message as it is drawn; the pictures are kept, to be looked at.
class OverlayLookTest : public testing::TestWithParam<Idiom> {
 protected:
  void SetUp() override {
    hud->setTextMeasure(overlayTextMeasure());
    const platform::Size size = services.screen.sizeAsRead();
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(int(size.width), int(size.height));
    view.setInitialProperties({{QStringLiteral("hud"), QVariant::fromValue(hud)}});
    view.setSource(QUrl::fromLocalFile(QStringLiteral(SCENE_DIR "/OverlayLook.qml")));
    view.show();
    background = picture();
  }

  QImage picture() { return view.grabWindow().convertToFormat(QImage::Format_RGB32); }
  QImage save(const std::string& name) {
    const QString folder =
        isTablet() ? QStringLiteral(LOOK_DIR "/tablet/") : QStringLiteral(LOOK_DIR "/phone/");
    QDir().mkpath(folder);
    QImage shown = picture();
    shown.save(folder + QString::fromStdString(name) + QStringLiteral(".png"));
    return shown;
  }
  bool isTablet() const { return GetParam() == Idiom::tablet; }
  QRectF window() const { return {QPointF(), view.size()}; }

  void show(const std::function<void()>& how) {
    hide();
    how();
    animate(0.2);
  }
  // Animations start with the turn of the event loop after the one that changes something.
  void animate(double seconds) {
    services.settle();
    QCoreApplication::processEvents();
    animations.advanceSeconds(seconds);
  }
  void hide() {
    OvProgressHUD::dismiss();
    services.settle();
    services.clock.advanceSeconds(1);
    animate(2);
    ASSERT_FALSE(hud->panelShown());
  }

  // Where the picture is not the background: the panel, when nothing dims the screen.
  QRectF changed(const QImage& shown) const {
    QRect found;
    for (int y = 0; y < shown.height(); ++y) {
      for (int x = 0; x < shown.width(); ++x) {
        if (std::abs(qGreen(shown.pixel(x, y)) - qGreen(background.pixel(x, y))) > 24) {
          found |= QRect(x, y, 1, 1);
        }
      }
    }
    return found;
  }

  void look(const QQuickItem& item, std::vector<Seen>& seen) const {
    const QString type = QString::fromLatin1(item.metaObject()->className())
                             .section(QLatin1Char('_'), 0, 0)
                             .section(QLatin1Char(':'), -1);
    if (!item.isVisible() || item.opacity() == 0 || item.property("text") == QStringLiteral(" ")) {
      return;
    }
    QRectF rect(QPointF(), item.size());
    if (type == QLatin1String("OverlayLabel")) {
      const QSizeF content(item.property("contentWidth").toDouble(),
                           item.property("contentHeight").toDouble());
      EXPECT_FALSE(item.clip()) << "a text is cut";
      rect = QRectF(rect.center() - QPointF(content.width(), content.height()) / 2, content);
    }
    if (type == QLatin1String("OverlayButton")) {
      const double face = item.property("button").value<OverlayButton>().face;
      rect.adjust((rect.width() - face) / 2, 0, (face - rect.width()) / 2, 0);
    }
    if (type == QLatin1String("SharpImage")) {
      EXPECT_GT(item.implicitWidth(), 0) << "there is no such picture";
    }
    static const QStringList drawn{QStringLiteral("OverlayButton"), QStringLiteral("OverlayLabel"),
                                   QStringLiteral("SharpImage"), QStringLiteral("Spinner")};
    if (drawn.contains(type)) {
      const QPointF center = item.mapToScene(rect.center());  // whichever way the spinner stands
      rect.moveCenter(center);
      seen.push_back({type.toStdString(), rect});
      return;
    }
    for (const QQuickItem* child : item.childItems()) {
      look(*child, seen);
    }
  }
  std::vector<Seen> look() const {
    std::vector<Seen> seen;
    look(*view.rootObject(), seen);
    return seen;
  }

  // Nothing is cut, nothing lies on something else; a number alone stands in the middle of the spinner.
  void expectTidy(const QRectF& panel) const {
    const std::vector<Seen> seen = look();
    EXPECT_FALSE(seen.empty());
    for (std::size_t i = 0; i < seen.size(); ++i) {
      const Seen& one = seen[i];
      EXPECT_TRUE((panel & window()).adjusted(-0.6, -0.6, 0.6, 0.6).contains(one.rect)) << one.what;
      for (std::size_t j = i + 1; j < seen.size(); ++j) {
        const Seen& other = seen[j];
        if (one.what == "Spinner" && other.what == "OverlayLabel" && !hud->stringTimeout().text.isEmpty()) {
          EXPECT_NEAR(one.rect.center().x(), other.rect.center().x(), 0.6);
          EXPECT_NEAR(one.rect.center().y(), other.rect.center().y(), 0.6);
        } else {
          EXPECT_FALSE(one.rect.intersects(other.rect)) << one.what << " on " << other.what;
        }
      }
    }
  }

  support::TestServices services{nullptr, GetParam()};
  OvProgressHUD* hud = OvProgressHUD::sharedView();
  DrivenAnimations animations;
  QQuickView view;
  QImage background;
};

INSTANTIATE_TEST_SUITE_P(Idioms, OverlayLookTest, testing::Values(Idiom::tablet, Idiom::phone));

struct Message {
  const char* name;
  std::function<void()> show;
};

std::function<void()> plain(std::string text) {
  return [text = std::move(text)] { OvProgressHUD::showWithStatus(text, OvProgressHUDMaskTypeNone); };
}

const Message kMessages[] = {
    {"spinner", [] { OvProgressHUD::show(); }},
    {"short", plain("Updating...")},
    {"address", plain("Connecting to daemon\nhttp://nas.example:9091")},
    {"three-lines", plain("Failed to connecting daemon!\nhttp://nas.example:9091\nError: Timeout")},
    {"very-long",
     plain(QStringLiteral("The daemon's answer could not be read. ").repeated(14).toStdString())},
    {"long-word", plain(QStringLiteral("0123456789abcdef").repeated(4).toStdString())},
    {"cjk", plain("正在连接到守护进程，请稍候片刻")},
    {"right-to-left", plain("جارٍ الاتصال بالخادم، يرجى الانتظار")},
    {"success", [] { OvProgressHUD::showSuccessWithStatus("Updated!"); }},
    {"error", [] { OvProgressHUD::showErrorWithStatus("Failed to connecting daemon!\nError: Timeout"); }},
    {"yes-no", [] { OvProgressHUD::showWithStatusAndButton("Torrent is added!"); }},
    {"yes-no-narrow", [] { OvProgressHUD::showWithStatusAndButton("Sure?"); }},
    {"cancel-survives", [] { OvProgressHUD::show(); }},
    {"cancel-survives-text",
     [] {
       OvProgressHUD::show();
       OvProgressHUD::setStatus("Deleting...");
     }},
};

TEST_P(OverlayLookTest, EachMessageStandsTidilyInTheMiddle) {
  for (const Message& message : kMessages) {
    SCOPED_TRACE(message.name);
    show(message.show);
    const QRectF panel = changed(save(message.name));
    const QSizeF size = hud->hudView().size;
    const QPointF center(window().width() / 2, 0.45 * window().height());
    // The panel is moved to whole points, and the software renderer turns it beside them.
    constexpr double kWholePoints = 1.5;
    const QRectF expected =
        QRectF(center - QPointF(size.width(), size.height()) / 2, size).intersected(window());
    EXPECT_NEAR(panel.left(), expected.left(), kWholePoints);
    EXPECT_NEAR(panel.top(), expected.top(), kWholePoints);
    EXPECT_NEAR(panel.right(), expected.right(), kWholePoints);
    EXPECT_NEAR(panel.bottom(), expected.bottom(), kWholePoints);
    expectTidy(expected);
  }
}

TEST_P(OverlayLookTest, TheCountdownStandsInTheMiddleOfTheSpinnerAndFades) {
  for (const char* text : {"Updating...", "Connecting to daemon\nhttp://nas.example:9091"}) {
    show(plain(text));
    OvProgressHUD::setTimeout("29");
    services.settle();
    save("countdown");
    EXPECT_EQ(look().size(), 3U);
    expectTidy(window());
    animate(1.2);
    EXPECT_EQ(look().size(), 3U);
    animate(0.2);
    EXPECT_EQ(look().size(), 2U) << "the number is gone";
  }
}

TEST_P(OverlayLookTest, AMaskDimsWhatLiesBelow) {
  const struct {
    OvProgressHUDMaskType type;
    const char* name;
    double corner, center;  // how much of the light is left
  } cases[] = {{OvProgressHUDMaskTypeNone, "mask-none", 1, 1},
               {OvProgressHUDMaskTypeClear, "mask-clear", 1, 1},
               {OvProgressHUDMaskTypeBlack, "mask-black", 0.5, 0.5},
               {OvProgressHUDMaskTypeGradient, "mask-gradient", 0.25, 0.9}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    show([&] { OvProgressHUD::showWithMaskType(c.type); });
    const QImage shown = save(c.name);
    const auto light = [&](int x, int y) {
      return double(qGreen(shown.pixel(x, y))) / qGreen(background.pixel(x, y));
    };
    EXPECT_NEAR(light(1, 1), c.corner, 0.03);
    EXPECT_NEAR(light(shown.width() / 2 - 56, shown.height() / 2), c.center, 0.1);
  }
}

TEST_P(OverlayLookTest, ATouchMeetsAButtonOrTheMaskOrTheScreenBelow) {
  const struct {
    const char* what;
    OvProgressHUDMaskType type;
    int below;  // how many of the touches beside the buttons get there
  } cases[] = {{"none", OvProgressHUDMaskTypeNone, 2}, {"clear", OvProgressHUDMaskTypeClear, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    platform::LogRecorder lines;
    view.rootObject()->setProperty("taps", 0);
    OvProgressHUD::showWithStatusAndButton("Sure?");
    show([&] { OvProgressHUD::showWithStatus("Sure?", c.type); });
    const QPointF center(window().width() / 2, 0.45 * window().height());
    const QPointF corner = center - QPointF(hud->hudView().size.width(), hud->hudView().size.height()) / 2;
    for (const QPointF at :
         {corner + hud->okButton().frame.center(), corner + hud->cancelButton().frame.center(),
          center - QPointF(0, 10), QPointF(9, 9)}) {
      QTest::mouseClick(&view, Qt::LeftButton, {}, at.toPoint());
    }
    services.settle();
    EXPECT_EQ(lines.count("onBtnOK\n"), 2);
    EXPECT_EQ(view.rootObject()->property("taps").toInt(), c.below);
    EXPECT_TRUE(OvProgressHUD::isVisible());
  }
}

TEST_P(OverlayLookTest, ItComesInAndGoesGentlyAndComesBackFromWhereItIs) {
  show(plain("Torrent is added!"));
  const double width = changed(picture()).width();
  OvProgressHUD::dismiss();
  services.settle();
  animate(0.075);
  const double going = changed(save("going")).width();
  EXPECT_NEAR(going, 0.9 * width, 2);
  OvProgressHUD::showWithStatus("Torrent is added!", OvProgressHUDMaskTypeNone);
  EXPECT_NEAR(changed(picture()).width(), going, 2);
  animate(0.2);
  EXPECT_NEAR(changed(picture()).width(), width, 1);
  hide();
  EXPECT_TRUE(changed(picture()).isEmpty());
  OvProgressHUD::showSuccessWithStatus("Torrent is added!");
  animate(0.05);
  EXPECT_GT(changed(save("coming")).width(), 1.15 * width);
}

}  // namespace
}  // namespace seedmote
