#pragma once

#include <QPointF>

#include "platform/ui/ViewGeometry.h"
#include "platform/ui/ViewStack.h"

namespace seedmote {

// A view with a button outside its own bounds that takes touches all the same. Points and frames of
// subviews count from the view's own corner. Main thread.
class RVTorrentDetailView : public platform::ViewGeometry {
 public:
  // In front of the others. It outlives this view.
  void addSubview(platform::ViewGeometry& view) { subviews_.addSubview(view); }

  // One of the subviews; null for none.
  const platform::ViewGeometry* btnMoveLeft() const { return btnMoveLeft_; }
  void setBtnMoveLeft(const platform::ViewGeometry* button) { btnMoveLeft_ = button; }

  // Whom a touch is for: the hindmost of the subviews there, else this view; null when it is not inside.
  const platform::ViewGeometry* hitTest(const QPointF& point) const;
  bool pointInside(const QPointF& point) const;

 private:
  platform::ViewStack subviews_;
  const platform::ViewGeometry* btnMoveLeft_ = nullptr;
};

}  // namespace seedmote
