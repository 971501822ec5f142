#pragma once

#include <QColor>
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QtQmlIntegration>
#include <functional>

namespace seedmote::platform {

// Where a view stands in its parent and how it looks there: what the shell and the controllers move. Values
// change at once; ViewItem shows them, and lets what is to be seen follow for as long as
// animationMilliseconds says at that moment. Lengths are points. Main thread.
class ViewGeometry : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Geometries belong to controllers.")
  Q_PROPERTY(QRectF shownFrame READ shownFrame NOTIFY changed)
  Q_PROPERTY(double alpha READ alpha NOTIFY changed)
  Q_PROPERTY(QColor backgroundColor READ backgroundColor NOTIFY changed)
  Q_PROPERTY(int order READ order NOTIFY changed)
  Q_PROPERTY(bool inParent READ isInParent NOTIFY changed)
  Q_PROPERTY(int animationMilliseconds READ animationMilliseconds NOTIFY animationChanged)

 public:
  explicit ViewGeometry(const QRectF& frame = {}) : frame_(frame) {}

  // Runs `changes`; views that they change are seen to go there for so many seconds.
  static void animate(double seconds, const std::function<void()>& changes);

  // Without the translation.
  QRectF frame() const { return frame_; }
  void setFrame(const QRectF& frame) { change(frame_, frame); }
  QPointF translation() const { return translation_; }
  void setTranslation(const QPointF& translation) { change(translation_, translation); }
  QRectF shownFrame() const { return frame_.translated(translation_); }
  // 0 to 1; a view of alpha 0 takes no touches.
  double alpha() const { return alpha_; }
  void setAlpha(double alpha) { change(alpha_, alpha); }
  QColor backgroundColor() const { return backgroundColor_; }
  void setBackgroundColor(const QColor& color) { change(backgroundColor_, color); }
  // Among its siblings: higher is nearer to the reader. See ViewStack.
  int order() const { return order_; }
  void setOrder(int order) { change(order_, order); }
  // False: it is not to be seen at all.
  bool isInParent() const { return inParent_; }
  void setInParent(bool inParent) { change(inParent_, inParent); }

  int animationMilliseconds() const { return animationMilliseconds_; }

 Q_SIGNALS:
  void changed();
  // Told before `changed`.
  void animationChanged();

 private:
  template <class Value>
  void change(Value& value, const Value& wanted) {
    if (value != wanted) {
      takeAnimation();
      value = wanted;
      Q_EMIT changed();
    }
  }
  void takeAnimation();

  QRectF frame_;
  QPointF translation_;
  double alpha_ = 1;
  QColor backgroundColor_ = Qt::transparent;
  int order_ = 0;
  bool inParent_ = true;
  int animationMilliseconds_ = 0;
};

}  // namespace seedmote::platform
