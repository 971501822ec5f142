#include "app/RootView.h"

namespace seedmote {

RootView::RootView(platform::Idiom idiom, QQuickItem* frame) : QQuickItem(frame), idiom_(idiom) {
  setTransformOrigin(QQuickItem::TopLeft);
  connect(frame, &QQuickItem::widthChanged, this, &RootView::follow);
  connect(frame, &QQuickItem::heightChanged, this, &RootView::follow);
  follow();
}

void RootView::follow() {
  const QSizeF frame = parentItem()->size();
  if (frame.isEmpty()) {
    return;
  }
  const double pixels =
      idiom_ == platform::Idiom::tablet ? frame.width() / kTabletWidth : frame.height() / kPhoneHeight;
  setScale(pixels);
  setSize(frame / pixels);
}

}  // namespace seedmote
