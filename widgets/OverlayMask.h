#pragma once

#include <QtQml/qqmlregistration.h>
#include <QQuickPaintedItem>

namespace seedmote {

// What the overlay draws between itself and the screen below, by its mask type.
class OverlayMask : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(int type READ type WRITE setType NOTIFY typeChanged)
  Q_PROPERTY(bool drawn READ isDrawn NOTIFY typeChanged)

 public:
  explicit OverlayMask(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}

  int type() const { return type_; }
  void setType(int type);
  // Whether this type draws anything at all.
  bool isDrawn() const;
  void paint(QPainter* painter) override;

 Q_SIGNALS:
  void typeChanged();

 private:
  int type_ = 0;
};

}  // namespace seedmote
