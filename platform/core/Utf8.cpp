#include "platform/core/Utf8.h"

#include <QUtf8StringView>

namespace seedmote::platform {

bool isValidUtf8(std::string_view bytes) {
  return QUtf8StringView(bytes.data(), static_cast<qsizetype>(bytes.size())).isValidUtf8();
}

}  // namespace seedmote::platform
