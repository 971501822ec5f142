#include "screens/LabelPairCell.h"

namespace seedmote {

void LabelPairCell::fill(const std::string& label, const std::string& value) {
  labelleft_ = QString::fromStdString(label);
  labelright_ = QString::fromStdString(value);
  Q_EMIT filled();
}

QString LabelPairCell::accessibleName() const {
  return labelleft_.isEmpty() ? labelright_ : labelleft_ + QLatin1String(", ") + labelright_;
}

}  // namespace seedmote
