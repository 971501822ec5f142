#include "widgets/SwitchParts.h"

#include <QHash>
#include <QImageReader>

namespace seedmote {

namespace {

QString file(const QString& name, int pixelsForPoint = 1) {
  const QString drawing = pixelsForPoint > 1 ? QStringLiteral("@%1x").arg(pixelsForPoint) : QString();
  return QStringLiteral(":/seedmote/images/") + name + drawing + QStringLiteral(".png");
}

}  // namespace

SwitchImage SwitchImage::named(const QString& name) {
  static QHash<QString, QSize> sizes;
  auto size = sizes.constFind(name);
  if (size == sizes.cend()) {
    size = sizes.insert(name, QImageReader(file(name)).size());
  }
  return size->isValid() ? SwitchImage{.name = name, .scale = 1, .pixels = QRect({0, 0}, *size)}
                         : SwitchImage();
}

QUrl SwitchImage::picture() const {
  return exists() ? QUrl(QStringLiteral("qrc") + file(name)) : QUrl();
}

QImage SwitchImage::drawing(int pixelsForPoint) const {
  QImage whole(file(name, pixelsForPoint));
  whole.setDevicePixelRatio(1);  // its name would make it smaller
  const double ratio = pixelsForPoint / scale;
  const QRectF part(QPointF(pixels.topLeft()) * ratio, QSizeF(pixels.size()) * ratio);
  return whole.copy(part.toAlignedRect());
}

}  // namespace seedmote
