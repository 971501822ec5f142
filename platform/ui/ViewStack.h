#pragma once

#include <vector>

#include "platform/ui/ViewGeometry.h"

namespace seedmote::platform {

// The views of one parent, from the back to the front; each is told its order. They outlive the stack, or are
// removed from it. Main thread.
class ViewStack final {
 public:
  // In front of all others; a view that is in the stack already is moved.
  void addSubview(ViewGeometry& view);
  // Just behind `belowSubview`, which is in the stack.
  void insertSubview(ViewGeometry& view, const ViewGeometry& belowSubview);
  void removeSubview(ViewGeometry& view);
  void bringSubviewToFront(ViewGeometry& view) { addSubview(view); }

  const std::vector<ViewGeometry*>& subviews() const { return views_; }

 private:
  void insert(ViewGeometry& view, std::vector<ViewGeometry*>::const_iterator place);
  void number();

  std::vector<ViewGeometry*> views_;
};

}  // namespace seedmote::platform
