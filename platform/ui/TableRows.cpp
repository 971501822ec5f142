#include "platform/ui/TableRows.h"

#include <QMouseEvent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QWheelEvent>
#include <utility>

#include "platform/ui/GroupedTable.h"

namespace seedmote::platform {

TableRows::TableRows(QQuickItem* parent) : QQuickItem(parent) {
  setAcceptedMouseButtons(Qt::LeftButton);
}

TableRows::~TableRows() {
  dropDelegates();
}

void TableRows::setTable(TableView* table) {
  if (table_ == table) {
    return;
  }
  if (table_) {
    disconnect(table_, nullptr, this, nullptr);
  }
  dropDelegates();
  table_ = table;
  if (table_) {
    connect(table_, &TableView::liveRowsChanged, this, &TableRows::showLiveRows);
    table_->setViewport(contentY_, height());
  }
  showLiveRows();
  Q_EMIT tableChanged();
}

void TableRows::setDelegate(QQmlComponent* delegate) {
  changeDelegate(delegate_, delegate);
}

void TableRows::setHeaderDelegate(QQmlComponent* delegate) {
  changeDelegate(headerDelegate_, delegate);
}

void TableRows::changeDelegate(QPointer<QQmlComponent>& delegate, QQmlComponent* wanted) {
  if (delegate != wanted) {
    dropDelegates();
    delegate = wanted;
    showLiveRows();
    Q_EMIT delegateChanged();
  }
}

void TableRows::setContentY(qreal contentY) {
  if (contentY_ == contentY) {
    return;
  }
  contentY_ = contentY;
  placeRows();
  if (table_) {
    table_->setViewport(contentY_, height());
  }
  Q_EMIT contentYChanged();
}

void TableRows::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickItem::geometryChange(now, before);
  if (table_ && now.height() != before.height()) {
    table_->setViewport(contentY_, now.height());
  }
  if (now.width() != before.width()) {
    placeRows();
  }
}

// Delegates.

void TableRows::dropDelegates() {
  for (auto& [cell, shown] : std::exchange(delegates_, {})) {
    disconnect(cell, nullptr, this, nullptr);
    delete shown.item;
  }
}

QQmlComponent* TableRows::delegateFor(const TableViewCell* cell) const {
  return qobject_cast<const TableHeaderCell*>(cell) != nullptr ? headerDelegate_ : delegate_;
}

QQuickItem* TableRows::makeDelegate(TableViewCell* cell) {
  QQmlComponent* delegate = delegateFor(cell);
  if (delegate == nullptr) {
    return nullptr;
  }
  QQmlContext* context = delegate->creationContext();
  QObject* made = delegate->createWithInitialProperties({{QStringLiteral("cell"), QVariant::fromValue(cell)}},
                                                        context != nullptr ? context : qmlContext(this));
  auto* item = qobject_cast<QQuickItem*>(made);
  if (item == nullptr) {
    delete made;
    qWarning("A row could not be shown: %s", qUtf8Printable(delegate->errorString()));
    return nullptr;
  }
  QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
  item->setParent(this);
  item->setParentItem(this);
  connect(cell, &QObject::destroyed, this, [this, cell] {
    const auto place = delegates_.find(cell);
    if (place != delegates_.end()) {
      delete place->second.item;
      delegates_.erase(place);
    }
  });
  return item;
}

void TableRows::showLiveRows() {
  for (auto& [cell, shown] : delegates_) {
    shown.live = false;
  }
  if (table_ && delegate_) {
    for (const TableView::LiveRow& live : table_->liveRows()) {
      if (live.cell == nullptr || live.cell->isBlank()) {
        continue;
      }
      Shown& shown = delegates_[live.cell];
      if (shown.item == nullptr) {
        shown.item = makeDelegate(live.cell);
      }
      shown.live = true;
    }
  }
  placeRows();
  orderRows();
  for (auto& [cell, shown] : delegates_) {
    if (shown.item != nullptr) {
      shown.item->setVisible(shown.live);
    }
  }
}

// Keys and assistive technologies go from one child to the next.
void TableRows::orderRows() {
  if (!table_) {
    return;
  }
  QQuickItem* before = nullptr;
  for (const TableView::LiveRow& live : table_->liveRows()) {
    const auto place = delegates_.find(live.cell);
    QQuickItem* item = place != delegates_.end() ? place->second.item : nullptr;
    if (item != nullptr && before != nullptr) {
      item->stackAfter(before);
    }
    before = item != nullptr ? item : before;
  }
}

void TableRows::placeRows() {
  if (!table_) {
    return;
  }
  for (const TableView::LiveRow& live : table_->liveRows()) {
    const auto place = delegates_.find(live.cell);
    if (place != delegates_.end() && place->second.item != nullptr) {
      place->second.item->setPosition({0, live.top - contentY_});
      place->second.item->setSize({width(), live.height});
    }
  }
}

// Touches. The surroundings take a touch over when it becomes a drag or a swipe; then it is cancelled here.
// A touch ends at the cell where it began, also when the row has left the screen meanwhile.

int TableRows::rowAt(const QPointF& position) const {
  return table_ && position.x() >= 0 && position.x() < width() ? table_->rowAt(contentY_ + position.y()) : -1;
}

void TableRows::mousePressEvent(QMouseEvent* event) {
  pressedRow_ = rowAt(event->position());
  if (pressedRow_ < 0) {
    event->ignore();
    return;
  }
  pressedToken_ = table_->tokenOf(pressedRow_);
  pressedCell_ = table_->visibleCell(pressedRow_);
  table_->touchCell(pressedCell_, &TableViewCell::touchesBegan);
}

// The second of two quick touches is a touch like the first: left to others, it would end here.
void TableRows::mouseDoubleClickEvent(QMouseEvent* event) {
  event->setAccepted(pressedRow_ >= 0);
}

void TableRows::mouseReleaseEvent(QMouseEvent* event) {
  const int row = pressedRow_;
  endTouch(&TableViewCell::touchesEnded);
  // A list that came meanwhile may have put something else under the finger.
  if (row >= 0 && table_ && rowAt(event->position()) == row && table_->tokenOf(row) == pressedToken_) {
    table_->tapRow(row);
  }
}

void TableRows::mouseUngrabEvent() {
  endTouch(&TableViewCell::touchesCancelled);
}

// Left to the surroundings, the scrolling of a touchpad would count as a drag, and could pull the table.
void TableRows::wheelEvent(QWheelEvent* event) {
  if (!table_ || event->phase() == Qt::NoScrollPhase) {
    event->ignore();
    return;
  }
  constexpr double kPixelsOfAngle = 0.5;  // a notch of a wheel, 120, moves a row or so
  const double pixels =
      event->pixelDelta().isNull() ? event->angleDelta().y() * kPixelsOfAngle : event->pixelDelta().y();
  if (pixels != 0) {
    table_->scrollBy((mapFromScene({0, 0}) - mapFromScene({0, pixels})).y());
  }
}

void TableRows::endTouch(void (TableViewCell::*touch)()) {
  TableViewCell* const cell = pressedCell_;
  pressedCell_.clear();
  pressedRow_ = -1;
  if (table_) {
    table_->touchCell(cell, touch);
  }
}

}  // namespace seedmote::platform
