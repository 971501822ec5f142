#pragma once

#include <QtQml/qqmlregistration.h>
#include <QQuickPaintedItem>

namespace seedmote {

// The overlay's dimming: a radial gradient around its centre, from transparent to black at alpha 0.75.
class GradientMask : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT

 public:
  explicit GradientMask(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}
  void paint(QPainter* painter) override;
};

}  // namespace seedmote
