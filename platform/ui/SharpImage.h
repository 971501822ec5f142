#pragma once

#include <QtQml/qqmlregistration.h>
#include <QImage>
#include <QQuickItem>
#include <QUrl>

namespace seedmote::platform {

// A picture of the resources, sharp however large its window is: of the drawings for scales 1, 2 and 3 it
// shows the smallest that has a pixel for each of the screen's. It keeps its proportions within the item.
// (Quick's own image goes by the screen's scale and not by that of the items around it, and its first one
// loads the plugins of all image formats.) Main thread.
class SharpImage : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  // Of the drawing for scale 1, a PNG file ("qrc:/.../name.png"); empty for none.
  Q_PROPERTY(QUrl picture READ picture WRITE setPicture NOTIFY pictureChanged REQUIRED)
  // The file that is shown; empty for none.
  Q_PROPERTY(QString drawing READ drawing NOTIFY drawingChanged)
  // Pixels of the screen for a point.
  Q_PROPERTY(double pixels READ pixels NOTIFY pixelsChanged)

 public:
  explicit SharpImage(QQuickItem* parent = nullptr);

  QUrl picture() const { return picture_; }
  void setPicture(const QUrl& picture);
  double pixels() const { return pixels_; }
  QString drawing() const { return drawing_; }

 Q_SIGNALS:
  void pictureChanged();
  void drawingChanged();
  void pixelsChanged();

 protected:
  void itemChange(ItemChange change, const ItemChangeData& data) override;
  void geometryChange(const QRectF& now, const QRectF& before) override;
  void updatePolish() override;
  QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData*) override;

 private:
  void followWindow(QQuickWindow* window);
  void measurePixels();
  void chooseDrawing();
  QRectF shownRect() const;

  QUrl picture_;
  double pixels_ = 1;
  QString drawing_;
  QImage image_;
  bool imageChanged_ = false;
  QMetaObject::Connection widthChanged_;
  QMetaObject::Connection heightChanged_;
};

}  // namespace seedmote::platform
