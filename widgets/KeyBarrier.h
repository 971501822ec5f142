#pragma once

#include <QPointer>
#include <QQuickItem>

namespace seedmote {

// While it is closed, no key of its window reaches an item: what takes all touches takes the keys as well,
// and what lies below keeps its focus.
class KeyBarrier : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(bool closed MEMBER closed_ NOTIFY closedChanged)

 public:
  explicit KeyBarrier(QQuickItem* parent = nullptr);

 Q_SIGNALS:
  void closedChanged();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void watch(QQuickWindow* window);

  QPointer<QQuickWindow> watched_;
  bool closed_ = false;
};

}  // namespace seedmote
