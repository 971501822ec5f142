#include "app/Shortcuts.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <algorithm>

#include "app/RVRightBarController.h"
#include "client/RVTrans.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/ui/LayoutEntry.h"
#include "screens/RVFilterBarController.h"
#include "screens/RVTorrentDetailController.h"
#include "screens/RVTorrentListController.h"
#include "settings/RVSettingsViewController.h"

namespace seedmote {

using platform::ViewGeometry;

namespace {

constexpr double kPanelSlide = 1;  // seconds

// Shift is needed for "?" on one keyboard and for "1" on another, and says nothing there.
QKeySequence sequenceOf(const QKeyEvent& key) {
  Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
  const bool isSign = key.key() < Qt::Key_Escape && !(key.key() >= Qt::Key_A && key.key() <= Qt::Key_Z);
  modifiers.setFlag(Qt::ShiftModifier, modifiers.testFlag(Qt::ShiftModifier) && !isSign);
  return {QKeyCombination(modifiers, static_cast<Qt::Key>(key.key()))};
}

}  // namespace

const QList<Shortcuts::Shortcut>& Shortcuts::table() {
  using enum Where;
  static const QList<Shortcut> shortcuts{
      {{Qt::Key_F5, Qt::CTRL | Qt::Key_R}, "Refresh", &Shortcuts::refresh},
      {{Qt::CTRL | Qt::Key_S}, "Start the selected torrent", &Shortcuts::start},
      {{Qt::CTRL | Qt::Key_P}, "Stop the selected torrent", &Shortcuts::stop},
      {{Qt::Key_Delete}, "Delete it with its data: press twice", &Shortcuts::remove},
      {{Qt::CTRL | Qt::Key_V}, "Add a torrent from a copied link", &Shortcuts::addCopied},
      {{Qt::CTRL | Qt::Key_1, Qt::CTRL | Qt::Key_2, Qt::CTRL | Qt::Key_3, Qt::CTRL | Qt::Key_4,
        Qt::CTRL | Qt::Key_5, Qt::CTRL | Qt::Key_6, Qt::CTRL | Qt::Key_7},
       "Filter: the states from top to bottom",
       &Shortcuts::filter},
      {{Qt::CTRL | Qt::Key_Comma}, "Settings", &Shortcuts::openSettings},
      {{Qt::Key_Escape}, "Close a panel, slide the list back", &Shortcuts::close, anywhere},
      {{Qt::Key_F1, Qt::Key_Question}, "These shortcuts", &Shortcuts::toggle, anywhere},
      {{Qt::CTRL | Qt::Key_Q}, "Quit", &Shortcuts::quit, anywhere},
      {{Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End},
       "Go from torrent to torrent, or scroll",
       nullptr},
      {{Qt::Key_Return, Qt::Key_Space}, "Select it or not; press a button", nullptr},
      {{Qt::Key_Tab, Qt::SHIFT | Qt::Key_Tab}, "To the next control, or back", nullptr},
  };
  return shortcuts;
}

QString Shortcuts::keysOf(const Shortcut& shortcut) {
  QStringList all;
  for (const QKeySequence& key : shortcut.keys) {
    all << key.toString(QKeySequence::NativeText);
  }
  constexpr qsizetype kMany = 6;
  return all.size() > kMany ? all.front() + QStringLiteral(" to ") + all.back()
                            : all.join(QStringLiteral(", "));
}

QVariantList Shortcuts::entries() {
  QVariantList all;
  for (const Shortcut& shortcut : table()) {
    all << QVariantMap{{QStringLiteral("keys"), keysOf(shortcut)},
                       {QStringLiteral("title"), QString::fromLatin1(shortcut.title)}};
  }
  return all;
}

void Shortcuts::listenTo(QQuickWindow& window) {
  window_ = &window;
  QCoreApplication::instance()->installEventFilter(this);
}

// The application's filters come before those of its windows, whichever of these was installed last.
bool Shortcuts::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || watched != window_) {
    return false;
  }
  const auto& key = *static_cast<QKeyEvent*>(event);
  // What takes all touches takes the keys as well, by itself; but the program can be ended at any time.
  if (platform::services().main.swallowsInput() && sequenceOf(key) != QKeySequence(Qt::CTRL | Qt::Key_Q)) {
    return false;
  }
  return shown_ ? takeWhileShown(key) : take(key);
}

bool Shortcuts::take(const QKeyEvent& key) {
  const QKeySequence pressed = sequenceOf(key);
  for (const Shortcut& shortcut : table()) {
    const auto place = static_cast<int>(shortcut.keys.indexOf(pressed));
    if (place < 0 || shortcut.operation == nullptr) {
      continue;
    }
    if (isFieldsOwn(key)) {
      return false;
    }
    if (!key.isAutoRepeat()) {
      platform::enterFromLayout(this, "shortcut",
                                [&shortcut, place](Shortcuts& keys) { keys.carryOut(shortcut, place); });
    }
    return true;
  }
  return goToList(key.key());
}

bool Shortcuts::takeWhileShown(const QKeyEvent& key) {
  const QKeySequence pressed = sequenceOf(key);
  const auto found = std::find_if(table().begin(), table().end(), [&](const Shortcut& shortcut) {
    return shortcut.where == Where::anywhere && shortcut.keys.contains(pressed);
  });
  if (found != table().end() && !key.isAutoRepeat()) {
    hide();
    if (found->operation == &Shortcuts::quit) {
      return take(key);
    }
  }
  return true;
}

// What was pressed before it may have opened the settings.
void Shortcuts::carryOut(const Shortcut& shortcut, int place) {
  if (shortcut.where == Where::anywhere || !screens_.bar.isPanelShown()) {
    (this->*shortcut.operation)(place);
  }
}

// Asked in the way in which the window system's own shortcuts are.
bool Shortcuts::isFieldsOwn(const QKeyEvent& key) const {
  if (window_->activeFocusItem() == nullptr) {
    return false;
  }
  QKeyEvent asked(QEvent::ShortcutOverride, key.key(), key.modifiers(), key.text());
  asked.ignore();
  QCoreApplication::sendEvent(window_->activeFocusItem(), &asked);
  return asked.isAccepted();
}

// Nobody who wants to go from torrent to torrent need find the list by Tab first. The first key shows where
// the mark stands, where that was not known before.
bool Shortcuts::goToList(int key) {
  const QQuickItem* const focused = window_->activeFocusItem();
  const bool goes = key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
                    key == Qt::Key_PageDown || key == Qt::Key_Home || key == Qt::Key_End;
  if (!goes || (focused != nullptr && focused != window_->contentItem()) || screens_.bar.isPanelShown()) {
    return false;
  }
  const bool isNew = screens_.list.table()->markedRow() < 0;
  screens_.list.table()->wantKeys();
  return isNew;
}

void Shortcuts::show(bool shown) {
  if (shown_ != shown) {
    shown_ = shown;
    Q_EMIT shownChanged();
  }
}

// The operations.

void Shortcuts::refresh(int /*place*/) {
  screens_.bar.press(RVRightBarController::kRefresh);
}

void Shortcuts::start(int /*place*/) {
  screens_.bar.press(RVRightBarController::kStart);
}

void Shortcuts::stop(int /*place*/) {
  screens_.bar.press(RVRightBarController::kStop);
}

// Who presses a key does not look at the bin: a question about what was selected before is asked again.
void Shortcuts::remove(int /*place*/) {
  const std::uint64_t selection = RVTrans::torrentSelectionNumber();
  if (screens_.bar.has(RVRightBarController::kConfirmDelete) && toBeRemoved_ == selection) {
    toBeRemoved_.reset();
    return screens_.bar.press(RVRightBarController::kConfirmDelete);
  }
  toBeRemoved_ = selection;
  screens_.bar.press(RVRightBarController::kDelete);
}

void Shortcuts::addCopied(int /*place*/) {
  screens_.list.toolbar()->press();
}

void Shortcuts::filter(int place) {
  screens_.filters.table()->tapRow(place);
}

void Shortcuts::openSettings(int /*place*/) {
  screens_.bar.press(RVRightBarController::kSettings);
}

// What lies in front goes first.
void Shortcuts::close(int /*place*/) {
  if (screens_.bar.isPanelShown()) {
    if (!screens_.bar.settingsViewController()->isClosing()) {
      screens_.bar.settingsViewController()->pressClose();
    }
  } else if (screens_.details != nullptr && screens_.details->isShown()) {
    ViewGeometry::animate(kPanelSlide, [this] { screens_.details->resetPosition(); });
  } else if (screens_.list.gestures()->hasTap()) {
    screens_.list.handleSingleTap();
  }
}

void Shortcuts::toggle(int /*place*/) {
  show(!shown_);
}

void Shortcuts::quit(int /*place*/) {
  screens_.quit();
}

}  // namespace seedmote
