#pragma once

#include <QtQml/qqmlregistration.h>
#include <QImage>
#include <QRect>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QUrl>

namespace seedmote {

// An image of a switch: a picture of the program's resources, or a rectangle of one. It holds no pixels, so
// that a switch which nobody sees costs next to nothing.
struct SwitchImage {
  Q_GADGET
  QML_VALUE_TYPE(switchImage)
  Q_PROPERTY(bool exists READ exists)
  Q_PROPERTY(QUrl picture READ picture)

 public:
  // The picture "NAME.png"; no image when there is none. Its size is read once. Main thread.
  static SwitchImage named(const QString& name);

  bool exists() const { return !pixels.isEmpty(); }
  QSizeF size() const { return QSizeF(pixels.size()) / scale; }  // in points
  // Of the whole picture; empty for no image.
  QUrl picture() const;
  // The drawing that has this many pixels for a point (1, 2 or 3), cut to the rectangle. Any thread.
  QImage drawing(int pixelsForPoint) const;

  QString name;
  double scale = 1;  // how many of `pixels` a point has
  QRect pixels;      // empty for no image
  bool operator==(const SwitchImage&) const = default;
};

// A view or a layer of a switch: where it stands, in points within the switch, and what it shows.
struct SwitchPart {
  Q_GADGET
  QML_VALUE_TYPE(switchPart)
  Q_PROPERTY(QRectF frame MEMBER frame)
  Q_PROPERTY(seedmote::SwitchImage image MEMBER image)

 public:
  QRectF frame;
  SwitchImage image;
  bool operator==(const SwitchPart&) const = default;
};

}  // namespace seedmote
