#include "platform/ui/ViewStack.h"

#include <algorithm>

namespace seedmote::platform {

void ViewStack::addSubview(ViewGeometry& view) {
  std::erase(views_, &view);
  insert(view, views_.end());
}

void ViewStack::insertSubview(ViewGeometry& view, const ViewGeometry& belowSubview) {
  std::erase(views_, &view);
  insert(view, std::find(views_.begin(), views_.end(), &belowSubview));
}

void ViewStack::removeSubview(ViewGeometry& view) {
  std::erase(views_, &view);
  view.setInParent(false);
}

void ViewStack::insert(ViewGeometry& view, std::vector<ViewGeometry*>::const_iterator place) {
  views_.insert(place, &view);
  view.setInParent(true);
  number();
}

void ViewStack::number() {
  int order = 0;
  for (ViewGeometry* view : views_) {
    view->setOrder(order++);
  }
}

}  // namespace seedmote::platform
