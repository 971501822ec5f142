#include "widgets/OverlayParts.h"

#include <cmath>

namespace seedmote {

QPointF OverlayPanel::drawnCenter() const {
  const bool turned = std::fmod(std::abs(rotation), 180) == 90;
  const QSizeF half = (turned ? size.transposed() : size) / 2;
  return {std::round(center.x() - half.width()) + half.width(),
          std::round(center.y() - half.height()) + half.height()};
}

}  // namespace seedmote
