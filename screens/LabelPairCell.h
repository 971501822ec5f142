#pragma once

#include <QString>
#include <QtQmlIntegration>
#include <string>

#include "platform/ui/TableViewCell.h"

namespace seedmote {

// A row of a label and its value. Main thread.
class LabelPairCell : public platform::TableViewCell {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Cells are made by the data source of a table.")
  Q_PROPERTY(QString labelleft READ labelleft NOTIFY filled)
  Q_PROPERTY(QString labelright READ labelright NOTIFY filled)

 public:
  static constexpr const char* kIdentifier = "Cell";

  LabelPairCell() : TableViewCell(kIdentifier) {}

  void fill(const std::string& label, const std::string& value);

  QString labelleft() const { return labelleft_; }    // the label
  QString labelright() const { return labelright_; }  // the value

  QString accessibleName() const override;

 private:
  QString labelleft_;
  QString labelright_;
};

}  // namespace seedmote
