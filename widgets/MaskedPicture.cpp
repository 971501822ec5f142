#include "widgets/MaskedPicture.h"

#include <QPainter>
#include <cmath>

namespace seedmote {

namespace {

// The smallest that has a pixel for each of the screen's.
int suitableScale(double pixels) {
  return pixels > 2.01 ? 3 : pixels > 1.01 ? 2 : 1;
}

}  // namespace

MaskedPicture::MaskedPicture(QQuickItem* parent) : QQuickPaintedItem(parent) {
  connect(this, &MaskedPicture::changed, this, &MaskedPicture::redraw);
}

void MaskedPicture::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickPaintedItem::geometryChange(now, before);
  redraw();
}

// The items around may be scaled, of which the usual size of the texture knows nothing.
void MaskedPicture::redraw() {
  setTextureSize((size() * pixels_).toSize());
  update();
}

void MaskedPicture::paint(QPainter* painter) {
  QImage shown = layer(partDrawing_, part_.image, {{partX_, part_.frame.top()}, part_.frame.size()});
  if (mask_.image.exists()) {
    QPainter cutter(&shown);
    cutter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    cutter.drawImage(0, 0, layer(maskDrawing_, mask_.image, mask_.frame));
  }
  painter->drawImage(QRectF({0, 0}, size()), shown);
}

// The image alone on a sheet of the item's size. It stands on whole pixels, so that it is sharp.
QImage MaskedPicture::layer(Drawing& drawing, const SwitchImage& image, const QRectF& frame) const {
  QImage sheet(textureSize(), QImage::Format_ARGB32_Premultiplied);
  sheet.fill(Qt::transparent);
  if (!image.exists()) {
    return sheet;
  }
  const int scale = suitableScale(pixels_);
  if (drawing.of != image || drawing.scale != scale) {
    drawing = {.of = image, .scale = scale, .image = image.drawing(scale)};
  }
  QPainter painter(&sheet);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QPointF corner = frame.topLeft() * pixels_;
  painter.drawImage(QRect(corner.toPoint(), (frame.size() * pixels_).toSize()), drawing.image);
  return sheet;
}

}  // namespace seedmote
