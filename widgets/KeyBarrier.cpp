#include "widgets/KeyBarrier.h"

#include <QEvent>
#include <QQuickWindow>

namespace seedmote {

KeyBarrier::KeyBarrier(QQuickItem* parent) : QQuickItem(parent) {
  connect(this, &QQuickItem::windowChanged, this, &KeyBarrier::watch);
}

void KeyBarrier::watch(QQuickWindow* window) {
  if (watched_) {
    watched_->removeEventFilter(this);
  }
  watched_ = window;
  if (watched_) {
    watched_->installEventFilter(this);
  }
}

bool KeyBarrier::eventFilter(QObject* /*watched*/, QEvent* event) {
  const QEvent::Type type = event->type();
  return closed_ && (type == QEvent::KeyPress || type == QEvent::KeyRelease);
}

}  // namespace seedmote
