#include <QFile>
#include <QKeyEvent>

#include "ShellFixture.h"
#include "app/RealUiServices.h"
#include "settings/RVSettingsViewController.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {
namespace {

using platform::Idiom;

class ShortcutsTest : public ShellFixture {
 protected:
  void press(QKeyCombination key, const QString& text = {}, bool held = false) {
    QKeyEvent event(QEvent::KeyPress, key.key(), key.keyboardModifiers(), text, held);
    QCoreApplication::sendEvent(&delegate->window(), &event);
    settle();
  }
  std::size_t confirmed() const { return lines.count("rightbar doDeleteConfirm"); }
};

// Each would delete a torrent with its data that nobody meant.
TEST_F(ShortcutsTest, DeleteIsPressedTwiceForTheSameTorrent) {
  launch(Idiom::phone, "7.0");
  RVTrans::selectTorrent(1);
  press(Qt::Key_Delete);
  EXPECT_TRUE(bar().has(RVRightBarController::kConfirmDelete));
  press(Qt::Key_Delete, {}, true);
  EXPECT_EQ(confirmed(), 0U) << "a held key";
  for (const std::int64_t other : {2, -1, 2}) {
    RVTrans::selectTorrent(other);
    press(Qt::Key_Delete);
    EXPECT_EQ(confirmed(), 0U) << "another torrent, or what its id means by now";
  }
  press(Qt::Key_F1);
  press(Qt::Key_Delete);
  EXPECT_EQ(confirmed(), 0U) << "behind the list of the shortcuts";
  press(Qt::Key_Escape);
  press(Qt::Key_Delete);
  EXPECT_EQ(confirmed(), 1U);
  EXPECT_TRUE(bar().has(RVRightBarController::kDelete));
}

TEST_F(ShortcutsTest, NothingInFrontKeepsTheProgramFromBeingEnded) {
  launch(Idiom::phone, "7.0");
  connectWaits(services->main, ui.alerts);
  press(Qt::Key_F1);  // has all views that come up on occasion loaded
  press(Qt::Key_Escape);
  OvProgressHUD::showWithMaskType(OvProgressHUDMaskTypeClear);
  ui.alerts.show({.title = "Look", .message = "Here", .buttons = {"OK"}, .dismissed = nullptr});
  settle();
  press(Qt::Key_F1);
  EXPECT_FALSE(delegate->shortcuts().isShown());
  EXPECT_TRUE(delegate->window().isVisible());
  press(Qt::CTRL | Qt::Key_Q);
  EXPECT_FALSE(delegate->window().isVisible());
}

TEST_F(ShortcutsTest, OfTwoQuickPressesOneAsks) {
  launch(Idiom::phone, "7.0");
  connectWaits(services->main, ui.alerts);
  ui.pasteboard.text = "magnet:?xt=1";
  QKeyEvent first(QEvent::KeyPress, Qt::Key_V, Qt::ControlModifier);
  QCoreApplication::sendEvent(&delegate->window(), &first);
  press(Qt::CTRL | Qt::Key_V);
  EXPECT_TRUE(ui.alerts.isShown());
  ui.alerts.press(0);
  settle();
  EXPECT_FALSE(ui.alerts.isShown());
}

TEST_F(ShortcutsTest, TheSettingsKeepTheKeysFromTheTorrents) {
  store = RVSettingsStore(RVSettingsStore::findBundle(QCoreApplication::applicationDirPath().toStdString()));
  launch(Idiom::tablet, "7.0");
  press(Qt::CTRL | Qt::Key_Comma);
  ASSERT_TRUE(bar().isPanelShown());
  QQuickItem* field = nullptr;
  for (int tabs = 0; tabs < 20 && (field == nullptr || !field->inherits("QQuickTextInput")); ++tabs) {
    press(Qt::Key_Tab);
    field = delegate->window().activeFocusItem();
  }
  ASSERT_TRUE(field->inherits("QQuickTextInput"));
  const QString before = field->property("text").toString();
  press(Qt::SHIFT | Qt::Key_Question, QStringLiteral("?"));
  EXPECT_EQ(field->property("text").toString(), before + QLatin1Char('?'));
  EXPECT_FALSE(delegate->shortcuts().isShown());
  press(Qt::CTRL | Qt::Key_R);
  press(Qt::CTRL | Qt::Key_2);
  EXPECT_EQ(lines.count("rightbar doRefresh"), 0U);
  EXPECT_EQ(delegate->torrentListController().filterID(), 1);
  press(Qt::Key_Escape);
  EXPECT_FALSE(bar().settingsViewController()->isClosing()) << "it ended the edit";
  press(Qt::Key_Escape);
  EXPECT_TRUE(bar().settingsViewController()->isClosing());
  advance(0.6);
  press(Qt::CTRL | Qt::Key_2);
  EXPECT_EQ(delegate->torrentListController().filterID(), 3);
}

TEST_F(ShortcutsTest, TabFindsTheFiltersOfAPhoneOnlyBesideTheList) {
  launch(Idiom::phone, "7.0");
  const auto findsFilters = [this] {
    bool found = false;
    for (int tabs = 0; tabs < 20; ++tabs) {
      press(Qt::Key_Tab);
      const QQuickItem* const item = delegate->window().activeFocusItem();
      found = found || item->property("filter").value<RVFilterBarCell*>() != nullptr;
    }
    return found;
  };
  EXPECT_TRUE(findsFilters());
  delegate->torrentListController().handleSwipeFrom(platform::SwipeDirection::left);
  EXPECT_FALSE(findsFilters());
}

TEST_F(ShortcutsTest, TheReadmeNamesThem) {
  QFile readme(QStringLiteral(SEEDMOTE_README));
  ASSERT_TRUE(readme.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(readme.readAll());
  for (const QVariant& entry : Shortcuts::entries()) {
    const QVariantMap shown = entry.toMap();
    const QString keys = shown[QStringLiteral("keys")].toString();
    const QString title = shown[QStringLiteral("title")].toString();
    EXPECT_TRUE(text.contains(QStringLiteral("| `%1` | %2 |").arg(keys, title))) << keys.toStdString();
  }
}

}  // namespace
}  // namespace seedmote
