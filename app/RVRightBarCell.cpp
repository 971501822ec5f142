#include "app/RVRightBarCell.h"

#include "app/resources/RVResQt.h"

namespace seedmote {

void RVRightBarCell::setRightBarID(int kind) {
  rightBarID_ = kind;
  customImageView_ = isBlank() ? QUrl() : imageUrl(kind);
  Q_EMIT filled();
}

QString RVRightBarCell::accessibleName() const {
  switch (rightBarID_) {
    case 21:
      return QStringLiteral("Settings");
    case 22:
      return QStringLiteral("Refresh");
    case 23:
      return QStringLiteral("Start");
    case 24:
      return QStringLiteral("Stop");
    case 27:
      return QStringLiteral("Delete");
    case 28:
      return QStringLiteral("Confirm delete");
    default:
      return {};
  }
}

}  // namespace seedmote
