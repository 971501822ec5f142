#include "app/RootView.h"

#include <utility>

namespace seedmote {

namespace {
constexpr double kQuarterTurn = -90;  // the reader's top is the left edge, as of a screen read landscapeRight
}  // namespace

RootView::RootView(platform::Idiom idiom, platform::Screen& screen, Accepts accepts, QQuickItem* frame)
    : QQuickItem(frame), idiom_(idiom), screen_(screen), accepts_(std::move(accepts)) {
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
  const bool turned = frame.height() > frame.width() && !accepts_(platform::InterfaceOrientation::portrait);
  const QSizeF asRead = turned ? frame.transposed() : frame;
  const double pixels =
      idiom_ == platform::Idiom::tablet ? asRead.width() / kTabletWidth : asRead.height() / kPhoneHeight;
  setScale(pixels);
  setRotation(turned ? kQuarterTurn : 0);
  setY(turned ? frame.height() : 0);
  setSize(asRead / pixels);
  screen_.setSizeAsRead({width(), height()});
  Q_EMIT sizeChanged();
}

}  // namespace seedmote
