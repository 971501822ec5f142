// The keys of a table, and the mark that they move.
#include <Qt>
#include <algorithm>

#include "platform/ui/TableView.h"

namespace seedmote::platform {

bool TableView::pressKey(int key, bool held) {
  return marksRows_ && !isEmpty() ? moveMark(key, held) : scrollByKey(key);
}

bool TableView::scrollByKey(int key) {
  switch (key) {
    case Qt::Key_Up:
      scrollByRows(-1);
      return true;
    case Qt::Key_Down:
      scrollByRows(1);
      return true;
    case Qt::Key_PageUp:
      scrollByPages(-1);
      return true;
    case Qt::Key_PageDown:
    case Qt::Key_Space:
      scrollByPages(1);
      return true;
    case Qt::Key_Home:
      scrollToEnd(false);
      return true;
    case Qt::Key_End:
      scrollToEnd(true);
      return true;
    default:
      return false;
  }
}

// There are rows. None is walked over: a list may have a hundred thousand.
bool TableView::moveMark(int key, bool held) {
  keepMark();
  const std::size_t last = layout_.shownCount() - 1;
  const std::size_t at = std::min(layout_.atOrAfter(std::max(markedRow_, 0)), last);
  const double page = viewportHeight_ - insetTop_ - insetBottom_;
  switch (key) {
    case Qt::Key_Up:
      markShown(at - std::min<std::size_t>(at, 1));
      return true;
    case Qt::Key_Down:
      markShown(std::min(at + 1, last));
      return true;
    case Qt::Key_PageUp:
      markShown(shownAt(layout_.top(at) - page));
      return true;
    case Qt::Key_PageDown:
      markShown(shownAt(layout_.top(at) + page));
      return true;
    case Qt::Key_Home:
      markShown(0);
      return true;
    case Qt::Key_End:
      markShown(last);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      if (!held) {
        tapRow(layout_.row(at));
      }
      return true;
    default:
      return false;
  }
}

// The shown row at a height of the content, the first above it and the last below.
std::size_t TableView::shownAt(double y) const {
  const int row = rowAt(std::max(y, 0.0));
  return row >= 0 ? layout_.find(row) : layout_.shownCount() - 1;
}

void TableView::markShown(std::size_t shown) {
  markedRow_ = layout_.row(shown);
  showMark();
  scrollToShown(markedRow_, false, ScrollPosition::none);
}

void TableView::setHasKeys(bool hasKeys) {
  hasKeys_ = hasKeys;
  keepMark();
  showMark();
}

// Within the rows that are shown. Keys that have just come begin at the first that is in view.
void TableView::keepMark() {
  if (!marksRows_ || isEmpty()) {
    markedRow_ = -1;
  } else if (markedRow_ >= 0) {
    markedRow_ = layout_.row(std::min(layout_.atOrAfter(markedRow_), layout_.shownCount() - 1));
  } else if (hasKeys_) {
    markedRow_ = layout_.row(shownAt(clampedOffset(offset_) + insetTop_));
  }
}

void TableView::showMark() {
  for (const LiveRow& live : live_) {
    if (live.cell != nullptr) {
      live.cell->setMarked(hasKeys_ && live.row == markedRow_);
    }
  }
  Q_EMIT markShownChanged();
}

}  // namespace seedmote::platform
