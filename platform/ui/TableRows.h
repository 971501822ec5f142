#pragma once

#include <QPointer>
#include <QQmlComponent>
#include <QQuickItem>
#include <cstdint>
#include <optional>
#include <unordered_map>

#include "platform/ui/TableView.h"

namespace seedmote::platform {

// Shows the live rows of a table: one delegate for each cell that was ever on screen and not blank, reused
// with it. The item covers the viewport and places the delegates itself, relative to `contentY`, so that rows
// stand sharp however long the table is. A delegate has a `required property TableViewCell cell`.
class TableRows : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(seedmote::platform::TableView* table READ table WRITE setTable NOTIFY tableChanged REQUIRED)
  Q_PROPERTY(QQmlComponent* delegate READ delegate WRITE setDelegate NOTIFY delegateChanged REQUIRED)
  Q_PROPERTY(QQmlComponent* headerDelegate READ headerDelegate WRITE setHeaderDelegate NOTIFY delegateChanged)
  Q_PROPERTY(qreal contentY READ contentY WRITE setContentY NOTIFY contentYChanged)

 public:
  explicit TableRows(QQuickItem* parent = nullptr);
  ~TableRows() override;

  TableView* table() const { return table_; }
  void setTable(TableView* table);
  QQmlComponent* delegate() const { return delegate_; }
  void setDelegate(QQmlComponent* delegate);
  // For the headers of a table of sections.
  QQmlComponent* headerDelegate() const { return headerDelegate_; }
  void setHeaderDelegate(QQmlComponent* delegate);
  qreal contentY() const { return contentY_; }
  void setContentY(qreal contentY);

 Q_SIGNALS:
  void tableChanged();
  void delegateChanged();
  void contentYChanged();

 protected:
  void geometryChange(const QRectF& now, const QRectF& before) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseUngrabEvent() override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  struct Shown {
    QQuickItem* item = nullptr;
    bool live = false;
  };

  void showLiveRows();
  void placeRows();
  void orderRows();
  void dropDelegates();
  void changeDelegate(QPointer<QQmlComponent>& delegate, QQmlComponent* wanted);
  QQmlComponent* delegateFor(const TableViewCell* cell) const;
  QQuickItem* makeDelegate(TableViewCell* cell);
  int rowAt(const QPointF& position) const;
  void endTouch(void (TableViewCell::*touch)());

  QPointer<TableView> table_;
  QPointer<QQmlComponent> delegate_;
  QPointer<QQmlComponent> headerDelegate_;
  qreal contentY_ = 0;
  std::unordered_map<TableViewCell*, Shown> delegates_;
  int pressedRow_ = -1;
  std::optional<std::int64_t> pressedToken_;
  QPointer<TableViewCell> pressedCell_;
};

}  // namespace seedmote::platform
