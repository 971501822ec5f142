#include "widgets/TextMeasure.h"

#include <QFont>
#include <QFontMetricsF>
#include <algorithm>

namespace seedmote {

namespace {
constexpr int kFontSize = 16;
}

OvProgressHUD::TextMeasure overlayTextMeasure() {
  return [](const QString& text, QSizeF within) {
    QFont font;
    font.setPixelSize(kFontSize);
    font.setBold(true);
    const QRectF needed = QFontMetricsF(font).boundingRect(
        QRectF(QPointF(), within), Qt::AlignHCenter | Qt::TextWrapAnywhere | Qt::TextWordWrap, text);
    return QSizeF(std::min(needed.width(), within.width()), std::min(needed.height(), within.height()));
  };
}

}  // namespace seedmote
