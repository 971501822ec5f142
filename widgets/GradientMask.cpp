#include "widgets/GradientMask.h"

#include <QPainter>
#include <QRadialGradient>
#include <algorithm>

namespace seedmote {

namespace {
constexpr double kEdgeAlpha = 0.75;
constexpr double kRadius = 0.7;  // of the longer side
}  // namespace

void GradientMask::paint(QPainter* painter) {
  QRadialGradient gradient(boundingRect().center(), kRadius * std::max(width(), height()));
  gradient.setColorAt(0, Qt::transparent);
  gradient.setColorAt(1, QColor::fromRgbF(0, 0, 0, kEdgeAlpha));
  painter->fillRect(boundingRect(), gradient);
}

}  // namespace seedmote
