#include "platform/core/ShownText.h"

namespace seedmote::platform {

QString shownText(const std::string& text) {
  constexpr qsizetype kStart = 2000;
  constexpr qsizetype kEnd = 500;
  const QString all = QString::fromUtf8(text.data(), qsizetype(text.size()));
  return all.size() > kStart + kEnd ? all.first(kStart) + QChar(0x2026) + all.last(kEnd) : all;
}

}  // namespace seedmote::platform
