#include "screens/RVTorrentDetailView.h"

#include <algorithm>

namespace seedmote {

namespace {

// The right and the lower edge are outside.
bool contains(const QRectF& frame, const QPointF& point) {
  return point.x() >= frame.left() && point.x() < frame.right() && point.y() >= frame.top() &&
         point.y() < frame.bottom();
}

}  // namespace

const platform::ViewGeometry* RVTorrentDetailView::hitTest(const QPointF& point) const {
  const auto& views = subviews_.subviews();
  const auto touched = std::find_if(views.begin(), views.end(), [&](const platform::ViewGeometry* view) {
    return contains(view->shownFrame(), point);
  });
  if (touched != views.end()) {
    return *touched;
  }
  return pointInside(point) ? this : nullptr;
}

bool RVTorrentDetailView::pointInside(const QPointF& point) const {
  return (btnMoveLeft_ != nullptr && contains(btnMoveLeft_->shownFrame(), point)) ||
         contains({{0, 0}, frame().size()}, point);
}

}  // namespace seedmote
