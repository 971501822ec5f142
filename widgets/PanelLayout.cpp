#include "widgets/PanelLayout.h"

#include <QPointF>
#include <algorithm>
#include <cmath>

namespace seedmote {

namespace {

constexpr double kPlainSide = 100;
constexpr double kMargin = 24;
constexpr double kAboveText = 66;
constexpr double kAroundText = 80;
constexpr double kButtonRow = 40;
constexpr double kButtonLine = 30;  // from the panel's bottom edge to the buttons' centres
constexpr double kImageLine = 36;
constexpr double kSpinnerLine = 40.5;
constexpr QSizeF kImage(28, 28);
constexpr QSizeF kSpinner(37, 37);
constexpr QSizeF kButton(80, 30);
constexpr double kButtonInset = 8;  // of a face in its half of the panel

QRectF centered(QSizeF size, QPointF at) {
  return {at.x() - size.width() / 2, at.y() - size.height() / 2, size.width(), size.height()};
}

void placeText(PanelLayout& panel, QSizeF text) {
  const double height = kAroundText + text.height();
  const double width = text.width() > kPlainSide ? std::ceil(text.width() / 2) * 2 : kPlainSide;
  panel.label = height > kPlainSide ? QRectF(kMargin / 2, kAboveText, width, text.height())
                                    : QRectF(0, kAboveText, width + kMargin, text.height());
  panel.size = QSizeF(width + kMargin, height);
}

void placeButtons(PanelLayout& panel) {
  const double width = panel.size.width();
  const double line = panel.size.height() - kButtonLine;
  panel.okButton = centered(kButton, {std::ceil(width / 4), line});
  panel.cancelButton = centered(kButton, {std::ceil(width * 3 / 4), line});
  panel.buttonFace = std::min(kButton.width(), width / 2 - kButtonInset);
}

}  // namespace

PanelLayout layOutPanel(const std::optional<QSizeF>& text, bool buttonRow) {
  PanelLayout panel;
  panel.size = QSizeF(kPlainSide, kPlainSide);
  if (text) {
    placeText(panel, *text);
  }
  if (buttonRow) {
    panel.size.rheight() += kButtonRow;
  }
  const QPointF middle(panel.size.width() / 2, panel.size.height() / 2);
  const QPointF spinner(std::ceil(middle.x()) + 0.5, text ? kSpinnerLine : std::ceil(middle.y()) + 0.5);
  panel.image = centered(kImage, {middle.x(), text ? kImageLine : middle.y()});
  panel.spinner = centered(kSpinner, spinner);
  panel.countdown = centered(panel.label.size(), spinner);
  placeButtons(panel);
  return panel;
}

}  // namespace seedmote
