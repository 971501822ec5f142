#pragma once

#include <QtQml/qqmlregistration.h>
#include <QQuickPaintedItem>

#include "widgets/SwitchParts.h"

namespace seedmote {

// One image of a switch cut by another. Neither is drawn beyond the item. Works with every renderer.
class MaskedPicture : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(seedmote::SwitchPart part MEMBER part_ NOTIFY changed)
  // Where the part's left edge is to be seen now; its frame says where it is on the way to.
  Q_PROPERTY(double partX MEMBER partX_ NOTIFY changed)
  // Without an image it cuts nothing.
  Q_PROPERTY(seedmote::SwitchPart mask MEMBER mask_ NOTIFY changed)
  // Pixels of the screen for a point.
  Q_PROPERTY(double pixels MEMBER pixels_ NOTIFY changed)

 public:
  explicit MaskedPicture(QQuickItem* parent = nullptr);
  void paint(QPainter* painter) override;

 Q_SIGNALS:
  void changed();

 protected:
  void geometryChange(const QRectF& now, const QRectF& before) override;

 private:
  struct Drawing {
    SwitchImage of;
    int scale = 0;
    QImage image;
  };
  void redraw();
  QImage layer(Drawing& drawing, const SwitchImage& image, const QRectF& frame) const;

  SwitchPart part_;
  double partX_ = 0;
  SwitchPart mask_;
  double pixels_ = 1;
  Drawing partDrawing_;
  Drawing maskDrawing_;
};

}  // namespace seedmote
