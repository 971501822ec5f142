#pragma once

#include <QtQml/qqmlregistration.h>
#include <QQuickPaintedItem>

namespace seedmote {

// What the overlay draws between itself and the screen below, by its mask type: a gradient is painted here;
// plain black is left to the layout, which has it cheaper than a picture as large as the window.
class OverlayMask : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(int type READ type WRITE setType NOTIFY typeChanged)
  Q_PROPERTY(bool black READ isBlack NOTIFY typeChanged)
  Q_PROPERTY(bool gradient READ isGradient NOTIFY typeChanged)

 public:
  explicit OverlayMask(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}

  int type() const { return type_; }
  void setType(int type);
  bool isBlack() const;
  bool isGradient() const;
  void paint(QPainter* painter) override;

 Q_SIGNALS:
  void typeChanged();

 private:
  int type_ = 0;
};

}  // namespace seedmote
