#include "screens/LabelPairCell.h"

#include "platform/core/ShownText.h"

namespace seedmote {

void LabelPairCell::fill(const std::string& label, const std::string& value) {
  labelleft_ = platform::shownText(label);
  labelright_ = platform::shownText(value);
  Q_EMIT filled();
}

QString LabelPairCell::accessibleName() const {
  return labelleft_.isEmpty() ? labelright_ : labelleft_ + QLatin1String(", ") + labelright_;
}

}  // namespace seedmote
