#include "app/RootView.h"

namespace seedmote {

RootView::RootView(platform::Idiom idiom, platform::Screen& screen, QQuickItem* frame)
    : QQuickItem(frame), idiom_(idiom), screen_(screen) {
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
  screen_.setSizeAsRead({width(), height()});
}

}  // namespace seedmote
