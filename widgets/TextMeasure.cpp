#include "widgets/TextMeasure.h"

#include <QFont>
#include <QFontMetricsF>
#include <QStringList>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace seedmote {

namespace {

constexpr int kFontSize = 16;

// One paragraph as the label breaks it: between words, and inside a word that is wider than a line.
QSizeF measureParagraph(const QString& text, const QFont& font, double width) {
  QTextLayout layout(text, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  QSizeF needed;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    needed = QSizeF(std::max(needed.width(), line.naturalTextWidth()), needed.height() + line.height());
  }
  layout.endLayout();
  return needed;
}

}  // namespace

OvProgressHUD::TextMeasure overlayTextMeasure() {
  return [](const QString& text, QSizeF within) {
    QFont font;
    font.setPixelSize(kFontSize);
    font.setBold(true);
    QSizeF needed;
    for (const QString& paragraph : text.split(QLatin1Char('\n'))) {
      const QSizeF size = measureParagraph(paragraph, font, within.width());
      needed = QSizeF(std::max(needed.width(), size.width()), needed.height() + size.height());
    }
    // Whole points, so that the label never breaks a line that was measured to fit.
    return QSizeF(std::ceil(needed.width()) + 1, std::ceil(needed.height())).boundedTo(within);
  };
}

}  // namespace seedmote
