#pragma once

#include <QString>
#include <QUrl>
#include <QtQmlIntegration>

#include "platform/ui/TableViewCell.h"

namespace seedmote {

// One row of the action bar: a button, or blank. Main thread.
class RVRightBarCell : public platform::TableViewCell {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Cells are made by the action bar.")
  Q_PROPERTY(QUrl customImageView READ customImageView NOTIFY filled)

 public:
  static constexpr const char* kIdentifier = "RightBarCell";

  RVRightBarCell() : TableViewCell(kIdentifier) {}

  int rightBarRow() const { return rightBarRow_; }
  void setRightBarRow(int row) { rightBarRow_ = row; }
  // The kind of the button, by the number of its picture (see RVRes); 0 for a blank row.
  int rightBarID() const { return rightBarID_; }
  void setRightBarID(int kind);

  bool isBlank() const override { return rightBarID_ == 0; }
  // Empty for a blank row.
  QUrl customImageView() const { return customImageView_; }
  QString accessibleName() const override;

 private:
  int rightBarRow_ = 0;
  int rightBarID_ = 0;
  QUrl customImageView_;
};

}  // namespace seedmote
