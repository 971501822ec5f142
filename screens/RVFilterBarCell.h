#pragma once

#include <QColor>
#include <QPointF>
#include <QString>
#include <QUrl>
#include <QtQmlIntegration>

#include "platform/ui/TableViewCell.h"

namespace seedmote {

// One row of the filter bar. It looks no different while it is touched. Main thread.
class RVFilterBarCell : public platform::TableViewCell {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Cells are made by the filter bar.")
  Q_PROPERTY(QString text MEMBER text NOTIFY filled)
  Q_PROPERTY(QColor textColor MEMBER textColor NOTIFY filled)
  Q_PROPERTY(QColor shadowColor MEMBER shadowColor NOTIFY filled)
  Q_PROPERTY(QPointF shadowOffset MEMBER shadowOffset NOTIFY filled)
  Q_PROPERTY(QUrl image MEMBER image NOTIFY filled)
  Q_PROPERTY(QColor backgroundColor MEMBER backgroundColor NOTIFY filled)
  Q_PROPERTY(QColor separatorColor MEMBER separatorColor NOTIFY filled)
  Q_PROPERTY(double separatorInset MEMBER separatorInset NOTIFY filled)
  Q_PROPERTY(bool covered MEMBER covered NOTIFY filled)

 public:
  static constexpr const char* kIdentifier = "Cell";

  RVFilterBarCell() : TableViewCell(kIdentifier) {}

  // Tells the delegate that filling is over.
  void finishFilling();

  QString accessibleName() const override { return text; }
  bool isSelected() const override { return selected; }

  int filterBarID = 0;  // the list state of its row
  bool selected = false;
  QString text;
  QColor textColor;
  QColor shadowColor;
  QPointF shadowOffset;
  QUrl image;
  QColor backgroundColor;
  QColor separatorColor;  // of the line at its bottom
  double separatorInset = 0;
  bool covered = false;  // not to be seen, so nothing for Tab
};

}  // namespace seedmote
