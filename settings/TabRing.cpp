#include "settings/TabRing.h"

#include <QKeyEvent>
#include <algorithm>

#include "platform/core/MainThread.h"
#include "platform/core/Services.h"

namespace seedmote {

void TabRing::itemChange(ItemChange change, const ItemChangeData& data) {
  if (change == ItemSceneChange) {
    watch(data.window);
  }
  QQuickItem::itemChange(change, data);
}

void TabRing::watch(QQuickWindow* window) {
  if (watched_) {
    watched_->removeEventFilter(this);
  }
  watched_ = window;
  if (watched_) {
    watched_->installEventFilter(this);
  }
}

// It may come before the filter of what takes all keys.
bool TabRing::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !isVisible() || !isEnabled() ||
      platform::services().main.swallowsInput()) {
    return false;
  }
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool shift = key->modifiers() == Qt::ShiftModifier;
  if ((key->key() != Qt::Key_Tab && key->key() != Qt::Key_Backtab) ||
      (!shift && key->modifiers() != Qt::NoModifier)) {
    return false;
  }
  step(key->key() == Qt::Key_Tab && !shift);
  return true;
}

// A field whose edit was ended by a key still has the keys as a whole: it goes on from where that was.
void TabRing::step(bool forward) {
  const QList<QQuickItem*> all = stops();
  if (all.isEmpty()) {
    return;
  }
  const QQuickItem* active = watched_->activeFocusItem();
  const bool inside = active != nullptr && isAncestorOf(active);
  const auto current = std::find_if(all.begin(), all.end(), [&](const QQuickItem* stop) {
    return inside && (stop == active || active->isAncestorOf(stop));
  });
  const qsizetype at = current - all.begin();
  const qsizetype count = all.size();
  if (forward) {
    all[at < count ? (at + 1) % count : 0]->forceActiveFocus(Qt::TabFocusReason);
  } else {
    all[(at + count - 1) % count]->forceActiveFocus(Qt::BacktabFocusReason);
  }
}

QList<QQuickItem*> TabRing::stops() const {
  QList<QQuickItem*> found;
  QQuickItem* at = const_cast<TabRing*>(this)->nextItemInFocusChain();
  while (at != nullptr && isAncestorOf(at) && !found.contains(at)) {
    found.push_back(at);
    at = at->nextItemInFocusChain();
  }
  return found;
}

}  // namespace seedmote
