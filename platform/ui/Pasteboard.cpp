#include "platform/ui/Pasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace seedmote::platform {

std::optional<std::string> SystemPasteboard::string() {
  const QString text = QGuiApplication::clipboard()->text();
  return text.isEmpty() ? std::nullopt : std::optional(text.toStdString());
}

}  // namespace seedmote::platform
