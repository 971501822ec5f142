#include "widgets/TextMeasure.h"

#include <QFont>
#include <QFontMetricsF>
#include <QStringList>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace seedmote {

namespace {

constexpr int kSmallestFont = 8;

QFont labelFont(int size) {
  QFont font;
  font.setPixelSize(size);
  font.setBold(true);
  return font;
}

// One paragraph as the label breaks it: between words, and inside a word that is wider than a line.
QSizeF measureParagraph(const QString& text, const QFont& font, double width) {
  QTextLayout layout(text, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option.setUseDesignMetrics(true);  // as the layout's texts do
  layout.setTextOption(option);
  QSizeF needed(0, 0);
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    needed = QSizeF(std::max(needed.width(), line.naturalTextWidth()), needed.height() + line.height());
  }
  layout.endLayout();
  return needed;
}

// In whole points, so that the label never breaks a line that was measured to fit.
QSizeF measureText(const QString& text, int fontSize, double width) {
  const QFont font = labelFont(fontSize);
  QSizeF needed(0, 0);
  for (const QString& paragraph : text.split(QLatin1Char('\n'))) {
    const QSizeF size = measureParagraph(paragraph, font, width);
    needed = QSizeF(std::max(needed.width(), size.width()), needed.height() + size.height());
  }
  return {std::ceil(needed.width()), std::ceil(needed.height())};
}

}  // namespace

OvProgressHUD::TextMeasure overlayTextMeasure() {
  return [](const QString& text, QSizeF within) {
    OvProgressHUD::MeasuredText measured;
    QSizeF needed = measureText(text, measured.fontSize, within.width());
    measured.size = needed.boundedTo(within);
    while (needed.height() > within.height() && measured.fontSize > kSmallestFont) {
      needed = measureText(text, --measured.fontSize, measured.size.width());
    }
    return measured;
  };
}

}  // namespace seedmote
