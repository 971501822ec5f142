#include "widgets/OverlayMask.h"

#include <QPainter>
#include <QRadialGradient>
#include <cmath>

#include "widgets/OvProgressHUD.h"

namespace seedmote {

namespace {

constexpr double kGradientAlpha = 0.75;  // reached in the corners

QColor black(double alpha) {
  return QColor::fromRgbF(0, 0, 0, static_cast<float>(alpha));
}

}  // namespace

void OverlayMask::setType(int type) {
  if (type != type_) {
    type_ = type;
    Q_EMIT typeChanged();
    update();
  }
}

bool OverlayMask::isBlack() const {
  return type_ == OvProgressHUDMaskTypeBlack;
}

bool OverlayMask::isGradient() const {
  return type_ == OvProgressHUDMaskTypeGradient;
}

void OverlayMask::paint(QPainter* painter) {
  const QRectF all = boundingRect();
  QRadialGradient gradient(all.center(), std::hypot(all.width(), all.height()) / 2);
  gradient.setColorAt(0, black(0));
  gradient.setColorAt(1, black(kGradientAlpha));
  painter->fillRect(all, gradient);
}

}  // namespace seedmote
