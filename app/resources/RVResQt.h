#pragma once

#include <QColor>
#include <QString>
#include <QUrl>

#include "app/resources/RVRes.h"

namespace seedmote {

// The resources in Qt's types, as the screens show them.

inline QColor toQColor(const Color& color) {
  return QColor::fromRgbF(color.red, color.green, color.blue, color.alpha);
}

inline QColor colorOf(int id) {
  return toQColor(RVRes::getColor(id));
}

// Empty for an image that is filled with a colour.
inline QUrl imageUrl(int id) {
  return QUrl(QString::fromStdString(RVRes::getImage(id).url()));
}

}  // namespace seedmote
