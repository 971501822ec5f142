#include <gmock/gmock.h>

#include <QAccessible>
#include <QCoreApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest/QTest>
#include <set>
#include <stdexcept>
#include <vector>

#include "client/RVTrans.h"
#include "platform/ui/LayoutLoader.h"
#include "settings/RVSettingsViewController.h"
#include "tests/support/TestServices.h"
#include "tests/support/TestUiServices.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {
namespace {

using platform::Idiom;
using platform::LayoutLoader;
using Dictionary = platform::PropertyList::Dictionary;
using testing::HasSubstr;

// The panel in a root view, with the settings that come with the program.
class SettingsPanel : public testing::Test {
 protected:
  // Middles of rows, from the top of the window.
  static constexpr int kHost = 124, kPort = 168, kUser = 212, kPassword = 256, kSwitch = 300, kTimeout = 344;

  explicit SettingsPanel(Idiom idiom = Idiom::phone) : services_(nullptr, idiom), idiom_(idiom) {}
  ~SettingsPanel() override {
    delete layout_;
    RVTrans::drop();
  }

  void open() {
    const platform::Size size = services_.screen.sizeAsRead();
    window_.resize(int(size.width), int(size.height));
    layout_ = LayoutLoader(engine_).load(LayoutLoader::layoutName("RVSettingsViewController", idiom_), panel_,
                                         window_.contentItem());
    panel_.viewDidLoad();
    panel_.view()->setFrame({0, 22, size.height, size.width - 22});  // of the screen held upright
    panel_.setShown(true);
    window_.show();
    window_.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    settle();
  }
  void settle() {
    for (int turn = 0; turn < 4 || screen().table()->isReloading(); ++turn) services_.settle();
  }
  // The control of a row; a text's cursor goes to its end.
  void tap(int y) {
    QTest::mouseClick(&window_, Qt::LeftButton, {}, {int(panel_.view()->frame().width()) - 30, y});
    settle();
    QTest::keyClick(&window_, Qt::Key_End);
  }
  void type(const char* text) {
    for (; *text != 0; ++text) QTest::keyClick(&window_, *text);
    settle();
  }
  void press(Qt::Key key) {
    QTest::keyClick(&window_, key);
    settle();
  }
  std::optional<std::string> value(const char* key) {
    return services_.defaults.object(key)["Value"].asText();
  }
  QAccessibleInterface* accessible(QAccessible::Role role, const char* name) {
    std::vector<QAccessibleInterface*> all{QAccessible::queryAccessibleInterface(&window_)};
    for (std::size_t at = 0; at < all.size(); ++at) {
      if (all[at]->role() == role && all[at]->text(QAccessible::Name) == QLatin1String(name)) return all[at];
      for (int child = 0; child < all[at]->childCount(); ++child) all.push_back(all[at]->child(child));
    }
    throw std::out_of_range(name);
  }
  void pressAccessible(QAccessible::Role role, const char* name) {
    accessible(role, name)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    settle();
  }
  RVSettingsController& screen() { return *panel_.settingController(); }

  support::TestServices services_;
  support::TestUiServices ui_;
  platform::LogRecorder lines_;
  Idiom idiom_;
  RVSettingsStore store_{RVSettingsStore::findBundle(QCoreApplication::applicationDirPath().toStdString())};
  RVSettingsViewController panel_{store_};
  QQmlEngine engine_;
  QQuickWindow window_;
  QQuickItem* layout_ = nullptr;
};

struct TabletPanel : SettingsPanel {
  TabletPanel() : SettingsPanel(Idiom::tablet) {}
};

TEST(SettingControl, IsWhatTheSpecifierAsksFor) {
  using Keyboard = SettingControl::Keyboard;
  const auto made = [](const char* type, const char* keyboard, const char* text) {
    return SettingControl::of(Dictionary{{"ValueType", type}, {"KeyboardType", keyboard}, {"Value", text}});
  };
  EXPECT_EQ(made("EditBox", "NumberPad", "9091").keyboard, Keyboard::numberPad);
  EXPECT_EQ(made("EditBox", "URL", "host").keyboard, Keyboard::url);
  EXPECT_EQ(made("PasswordBox", "URL", "").keyboard, Keyboard::standard);
  EXPECT_TRUE(made("CheckBox", "", "false").on) << "\"False\" alone is off";
  EXPECT_EQ(made("editbox", "", "x").kind, SettingControl::Kind::none);
}

TEST_F(SettingsPanel, ARowWithoutSpecifierShowsNothing) {
  services_.defaults.setObject("Port", "no specifier");
  open();
  EXPECT_EQ(lines_.count("Add component to setting dialog\n"), 8);
  EXPECT_TRUE(lines_.contains("txtlab = (null)"));
  auto* cell = static_cast<RVSettingsCell*>(screen().table()->visibleCell(2));
  EXPECT_EQ(cell->label(), QString());
  EXPECT_EQ(cell->control().kind, SettingControl::Kind::none);
}

TEST_F(SettingsPanel, ATextIsStoredWhenItsEditEndsAndNotBefore) {
  open();
  tap(kHost);
  type(" my");
  EXPECT_EQ(value("IP Address"), "127.0.0.1");
  EXPECT_TRUE(screen().isEditing());
  tap(kPort);  // another field
  EXPECT_EQ(value("IP Address"), "127.0.0.1 my");
  EXPECT_EQ(services_.defaults.string("ServerChanged"), "YES");
  type("7");
  press(Qt::Key_Return);
  EXPECT_EQ(value("Port"), "90917");
  EXPECT_FALSE(screen().isEditing());
  press(Qt::Key_Backtab);
  press(Qt::Key_Tab);
  press(Qt::Key_Escape);  // nothing was changed, but the edit has ended
  EXPECT_EQ(lines_.count("portChanged: 90917"), 2);
  accessible(QAccessible::EditableText, "Time-out (s)")->setText(QAccessible::Value, QStringLiteral("60"));
  settle();
  EXPECT_EQ(value("Timeout"), "60") << "set without the keys";
  tap(kPassword);
  type("geheim");
  press(Qt::Key_Return);
  EXPECT_EQ(value("Password"), "geheim");
  for (const std::string& record : lines_.records()) EXPECT_THAT(record, testing::Not(HasSubstr("geheim")));
  tap(kUser);
  type("anna");
  panel_.onCloseBtn();
  settle();
  EXPECT_EQ(value("Username"), "anna");
  type("x");  // into no field
  EXPECT_EQ(value("Username"), "anna");
}

TEST_F(SettingsPanel, AnEditGoesOnWhileItsRowIsOutOfViewOrTheTableReloads) {
  open();
  tap(kHost);
  type("x");
  screen().table()->reload();
  settle();
  type("y");
  services_.screen.setSizeAsRead({667, 80});
  settle();
  screen().table()->setContentOffset(400, false);
  settle();
  EXPECT_EQ(screen().table()->visibleCell(1), nullptr);
  EXPECT_EQ(value("IP Address"), "127.0.0.1");
  services_.screen.setSizeAsRead({667, 375});
  screen().table()->setContentOffset(0, false);
  settle();
  type("z");
  screen().endEditing();
  EXPECT_EQ(value("IP Address"), "127.0.0.1xyz");
}

TEST_F(SettingsPanel, TheKeyboardHidesNoFieldThatIsWrittenIn) {
  open();
  tap(kTimeout);
  services_.screen.keyboard().show({667, 200});
  QQuickItem* field = window_.activeFocusItem();
  const auto bottom = [&] { return field->mapToScene({0, field->height()}).y(); };
  EXPECT_TRUE(QTest::qWaitFor([&] { return bottom() <= 175.5; })) << bottom();
  EXPECT_GT(bottom(), 66 + 44);
  press(Qt::Key_Return);
  services_.screen.keyboard().hide();
  EXPECT_TRUE(QTest::qWaitFor([&] { return screen().table()->contentOffset() <= 424 - 309; }));
}

TEST_F(SettingsPanel, ALetterToTheAuthorNamesTheVersions) {
  open();
  services_.defaults.setObject("Version", Dictionary{{"Value", "1.2 b"}});
  ui_.urlOpener.opens = false;
  pressAccessible(QAccessible::Link, "Author");
  EXPECT_EQ(lines_.count("onAuthorBtn"), 1);
  EXPECT_THAT(
      ui_.urlOpener.opened,
      testing::ElementsAre("mailto:author@seedmote.example?cc=&subject=Mail%20for%20Seedmote%20Ver.1.2%20b"
                           "&body=%3Cbr%3E%3Cbr%3E%3Cbr%3E%3Cbr%3E%3Cbr%3Edmn%20version:%20(null)%3Cbr%3E"
                           "rpc%20version:%20-1%3Cbr%3Eios%20version:%207.0%20(test%20device)"));
  EXPECT_THAT(OvProgressHUD::sharedView()->text().toStdString(), HasSubstr("author@seedmote.example"));
}

TEST_F(TabletPanel, ClosingTwiceIsClosingOnce) {
  services_.screen.setSizeAsRead({1024, 461});
  open();
  int closed = 0;
  QObject::connect(&panel_, &RVSettingsViewController::closed, [&] { ++closed; });
  EXPECT_EQ(panel_.settingViewPos()->frame(), QRectF(0, 44, 461, 461 - 22 - 44));
  pressAccessible(QAccessible::Button, "Close");
  pressAccessible(QAccessible::Button, "Close");
  EXPECT_EQ(panel_.view()->frame(), QRectF(200, -500, 566, 430));
  services_.clock.advanceSeconds(0.59);
  settle();
  EXPECT_TRUE(panel_.view()->isInParent() && panel_.bShown());
  services_.clock.advanceSeconds(0.02);
  settle();
  EXPECT_FALSE(panel_.view()->isInParent() || panel_.bShown());
  EXPECT_EQ(closed, 1);
  EXPECT_EQ(services_.defaults.string("FirstRun"), "3");
  EXPECT_EQ(services_.defaults.string("SavedVersion"), value("Version"));
}

TEST_F(SettingsPanel, APanelThatClosesTakesNothingElse) {
  open();
  tap(kUser);
  type("anna");
  tap(44);  // Close
  EXPECT_EQ(value("Username"), "anna");
  tap(kSwitch);
  EXPECT_EQ(value("UseSSL"), "False");
  pressAccessible(QAccessible::CheckBox, "Use SSL");
  EXPECT_EQ(value("UseSSL"), "False");
  pressAccessible(QAccessible::EditableText, "Port");
  accessible(QAccessible::EditableText, "Time-out (s)")->setText(QAccessible::Value, QStringLiteral("60"));
  pressAccessible(QAccessible::Link, "Author");
  EXPECT_EQ(value("Timeout"), "30");
  EXPECT_FALSE(screen().isEditing());
  EXPECT_TRUE(ui_.urlOpener.opened.empty());
  EXPECT_TRUE(layout_->isAncestorOf(window_.activeFocusItem())) << "Close has the keys";
  services_.clock.advanceSeconds(0.61);
  settle();
  EXPECT_FALSE(layout_->isAncestorOf(window_.activeFocusItem()));
}

TEST_F(SettingsPanel, NothingComesPastAMessage) {
  open();
  tap(kUser);
  type("anna");
  const QQuickItem* field = window_.activeFocusItem();
  services_.main.setSwallowsInput([] { return true; });
  pressAccessible(QAccessible::Button, "Close");
  pressAccessible(QAccessible::EditableText, "Port");
  EXPECT_EQ(window_.activeFocusItem(), field);
  QAccessibleInterface* timeout = accessible(QAccessible::EditableText, "Time-out (s)");
  timeout->setText(QAccessible::Value, QStringLiteral("60"));
  settle();
  EXPECT_EQ(value("Timeout"), "30");
  EXPECT_EQ(timeout->text(QAccessible::Value), QLatin1String("30")) << "shown again";
  services_.main.setSwallowsInput(nullptr);
  pressAccessible(QAccessible::EditableText, "Port");
  EXPECT_EQ(value("Username"), "anna");
  EXPECT_TRUE(screen().isEditing());
}

TEST_F(SettingsPanel, TabGoesRoundInside) {
  open();
  QQuickItem behind(window_.contentItem());
  behind.setActiveFocusOnTab(true);
  behind.forceActiveFocus();
  std::vector<QQuickItem*> stops;
  for (int stop = 0; stop < 10; ++stop) {
    press(Qt::Key_Tab);
    stops.push_back(window_.activeFocusItem());
  }
  EXPECT_EQ(std::set(stops.begin(), stops.end()).size(), 9u) << "the table, seven rows, Close";
  EXPECT_EQ(stops.back(), stops.front());
  press(Qt::Key_Backtab);
  EXPECT_EQ(window_.activeFocusItem(), stops.at(8));
}

}  // namespace
}  // namespace seedmote
