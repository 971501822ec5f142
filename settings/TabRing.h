#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

namespace seedmote {

// Lets Tab go round among the controls that lie in it while it is visible and enabled, wherever in the window
// the keys were before.
class TabRing : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT

 public:
  using QQuickItem::QQuickItem;

 protected:
  void itemChange(ItemChange change, const ItemChangeData& data) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void watch(QQuickWindow* window);
  void step(bool forward);
  QList<QQuickItem*> stops() const;

  QPointer<QQuickWindow> watched_;
};

}  // namespace seedmote
