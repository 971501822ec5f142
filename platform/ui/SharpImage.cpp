#include "platform/ui/SharpImage.h"

#include <QFile>
#include <QHash>
#include <QQuickWindow>
#include <QSGImageNode>
#include <utility>

#include "platform/ui/PngPicture.h"

namespace seedmote::platform {

namespace {

// A little more than its scale is not enough to take a drawing that is twice as large.
int scaleOfDrawing(double pixels) {
  return pixels > 2.01 ? 3 : pixels > 1.01 ? 2 : 1;
}

QString drawingOf(const QUrl& picture, int scale) {
  QString file = QLatin1Char(':') + picture.path();
  if (scale > 1) {
    file.replace(QLatin1String(".png"), QStringLiteral("@%1x.png").arg(scale));
  }
  return file;
}

// The drawings are few and small; rows that are used again ask for them all the time.
QImage imageOf(const QString& drawing) {
  static QHash<QString, QImage> images;
  const auto known = images.constFind(drawing);
  if (known != images.constEnd()) {
    return *known;
  }
  QFile file(drawing);
  const bool open = file.open(QIODevice::ReadOnly);
  return *images.insert(drawing, open ? pngPicture(file.readAll()) : QImage());
}

}  // namespace

SharpImage::SharpImage(QQuickItem* parent) : QQuickItem(parent) {
  setFlag(ItemHasContents);
}

void SharpImage::setPicture(const QUrl& picture) {
  if (picture_ != picture) {
    picture_ = picture;
    chooseDrawing();
    Q_EMIT pictureChanged();
  }
}

void SharpImage::itemChange(ItemChange change, const ItemChangeData& data) {
  if (change == ItemSceneChange) {
    followWindow(data.window);
  }
  if (change == ItemSceneChange || change == ItemParentHasChanged ||
      change == ItemDevicePixelRatioHasChanged) {
    polish();
  }
  QQuickItem::itemChange(change, data);
}

// The items around are scaled along with the window, and tell nobody.
void SharpImage::followWindow(QQuickWindow* window) {
  disconnect(widthChanged_);
  disconnect(heightChanged_);
  if (window != nullptr) {
    widthChanged_ = connect(window, &QWindow::widthChanged, this, &QQuickItem::polish);
    heightChanged_ = connect(window, &QWindow::heightChanged, this, &QQuickItem::polish);
  }
}

void SharpImage::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickItem::geometryChange(now, before);
  update();
}

// When everything has its place, right before the next picture.
void SharpImage::updatePolish() {
  measurePixels();
  chooseDrawing();
}

void SharpImage::measurePixels() {
  if (window() == nullptr || parentItem() == nullptr) {
    return;
  }
  const double pixels =
      parentItem()->mapRectToScene(QRectF(0, 0, 1, 1)).width() * window()->effectiveDevicePixelRatio();
  if (pixels_ != pixels) {
    pixels_ = pixels;
    Q_EMIT pixelsChanged();
  }
}

void SharpImage::chooseDrawing() {
  const int scale = scaleOfDrawing(pixels_);
  const QString drawing = picture_.isEmpty() ? QString() : drawingOf(picture_, scale);
  if (drawing_ == drawing) {
    return;
  }
  drawing_ = drawing;
  image_ = drawing.isEmpty() ? QImage() : imageOf(drawing);
  imageChanged_ = true;
  setImplicitSize(image_.width() / double(scale), image_.height() / double(scale));
  update();
  Q_EMIT drawingChanged();
}

QRectF SharpImage::shownRect() const {
  const QSizeF size = QSizeF(image_.size()).scaled(QSizeF(width(), height()), Qt::KeepAspectRatio);
  return {QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

QSGNode* SharpImage::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
  auto* node = static_cast<QSGImageNode*>(old);
  if (image_.isNull() || width() <= 0 || height() <= 0) {
    delete node;
    imageChanged_ = true;
    return nullptr;
  }
  if (node == nullptr) {
    node = window()->createImageNode();
    node->setOwnsTexture(true);
    imageChanged_ = true;
  }
  if (std::exchange(imageChanged_, false)) {
    node->setTexture(window()->createTextureFromImage(image_));
    node->setFiltering(QSGTexture::Linear);
  }
  node->setRect(shownRect());
  return node;
}

}  // namespace seedmote::platform
